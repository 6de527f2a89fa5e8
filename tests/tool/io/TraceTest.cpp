#include <gtest/gtest.h>

#include <optional>
#include <string>

#include <tool/io/Trace.h>

namespace tests {
namespace {

using TslTool::SecondsInName;
using TslTool::SecondsInWord;

struct Named {
  const char* name;
  std::optional<double> seconds;
};

TEST(SecondsInName, ReadsTheUnitOfTime) {
  const Named cases[] = {{"Time (min)", 60.0}, {"rt_s", 1.0},     {"time/min", 60.0},
                         {"Time [ms]", 1e-3},  {"Minutes", 60.0}, {"RT (Sec)", 1.0},
                         {"h", 3600.0},        {"time", {}},      {"", {}},
                         {"signal", {}},       {"minimum", {}},   {"Zeit (Sekunden)", 1.0}};
  for (const Named& each : cases) EXPECT_EQ(SecondsInName(each.name), each.seconds) << each.name;
}

TEST(SecondsInWord, IsTheWholeWord) {
  EXPECT_EQ(SecondsInWord("min"), 60.0);
  EXPECT_EQ(SecondsInWord("mi"), std::nullopt);
  EXPECT_EQ(SecondsInWord(""), std::nullopt);
}

TEST(UnitOfSeconds, IsAShortWord) {
  for (const char* word : {"s", "min", "ms", "h"})
    EXPECT_EQ(TslTool::UnitOfSeconds(SecondsInWord(word).value()), word);
}

}  // namespace
}  // namespace tests
