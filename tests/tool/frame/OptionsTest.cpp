#include <gtest/gtest.h>

#include <optional>
#include <string>
#include <vector>

#include <tool/frame/Options.h>

namespace tests {
namespace {

using TslTool::Option;
using TslTool::Options;
using TslTool::UsageError;
using Texts = std::vector<std::string>;

TEST(Options, KeepNamesAndWhatStandsForTheValueApart) {
  Options options;
  std::string text;
  options.Value("-o,--output FILE", text, "Where it goes");
  const Option& option = options.List().front();
  EXPECT_EQ(option.names, (Texts{"-o", "--output"}));
  EXPECT_EQ(option.valueName, "FILE");
  EXPECT_EQ(option.help, "Where it goes");
  EXPECT_EQ(option.takes, Option::Takes::OneValue);
  EXPECT_FALSE(option.IsPositional());
}

TEST(Options, ANameWithoutDashesIsPositional) {
  Options options;
  std::vector<std::string> words;
  options.Values("FILE FIELD=VALUE", words, "");
  EXPECT_TRUE(options.List().front().IsPositional());
  EXPECT_EQ(options.List().front().names, (Texts{"FILE"}));
  EXPECT_EQ(options.List().front().valueName, "FIELD=VALUE");
  EXPECT_EQ(options.List().front().takes, Option::Takes::Values);
}

TEST(Options, AChoiceListsWhatItMayBe) {
  Options options;
  std::string colour = "red", none;
  options.Choice("--colour C", colour, {"red", "green"}, "A colour");
  options.Choice("--other C", none, {"red", "green"}, "A colour");
  EXPECT_EQ(options.List()[0].choices, (Texts{"red", "green"}));
  EXPECT_EQ(options.List()[0].help, "A colour: red, green [red]");
  EXPECT_EQ(options.List()[1].help, "A colour: red, green");
}

TEST(Options, AChoiceIsTakenInAnyCase) {
  Options options;
  std::string probe;
  options.Choice("--probe P", probe, {"esi", "apci"}, "");
  options.List().front().take({"APCI"});
  EXPECT_EQ(probe, "apci");
  EXPECT_THROW(options.List().front().take({"apc"}), UsageError);
}

TEST(Options, TakeSetsTheValueOrNamesTheOption) {
  Options options;
  std::optional<double> real;
  bool flag = false;
  options.Value("-r,--real X", real, "");
  options.Flag("--flag", flag, "");
  options.List()[0].take({"2.5"});
  options.List()[1].take({});
  EXPECT_EQ(real, 2.5);
  EXPECT_TRUE(flag);
  try {
    options.List()[0].take({""});
    ADD_FAILURE() << "an empty value was taken";
  } catch (const UsageError& e) {
    EXPECT_STREQ(e.what(), "--real: the value is empty");
  }
}

TEST(Options, GivenKnowsEachNameOfAnOption) {
  Options options;
  std::string text;
  options.Value("-o,--output FILE", text, "");
  EXPECT_FALSE(options.Given("--output"));
  options.List().front().given = true;
  EXPECT_TRUE(options.Given("--output"));
  EXPECT_TRUE(options.Given("-o"));
  EXPECT_FALSE(options.Given("--other"));
}

}  // namespace
}  // namespace tests
