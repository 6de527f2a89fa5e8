#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include <tool/io/Fields.h>

namespace tests {
namespace {

struct Cut {
  std::string line;
  char separator;
  std::vector<std::string> fields;
};

TEST(Fields, AreCutAtTheSeparator) {
  const std::vector<Cut> table = {
      {"100,5;7", ';', {"100,5", "7"}},
      {" a , b c ,d", ',', {"a", "b c", "d"}},
      {"\ta\t\tb", '\t', {"", "a", "", "b"}},
      {"  a \t b\v\fc ", ' ', {"a", "b", "c"}},
      {"a;b;;  ;", ';', {"a", "b"}},
      {"", ',', {}},
      {" \t ", ' ', {}},
      {"\"a,b\",\"c\"", ',', {"a,b", "c"}},
      {" \" a \" \t\"b c\" ", ' ', {"a", "b c"}},
      {"\"a,b", ',', {"\"a", "b"}},
      {"\"a\"x,b", ',', {"\"a\"x", "b"}},
      {"\"\",b,\"\"", ',', {"", "b"}},
  };
  std::vector<std::string_view> fields;
  for (const Cut& cut : table) {
    TslTool::SplitFields(cut.line, cut.separator, fields);
    EXPECT_EQ(std::vector<std::string>(fields.begin(), fields.end()), cut.fields) << cut.line;
  }
}

}  // namespace
}  // namespace tests
