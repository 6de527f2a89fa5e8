#include <gtest/gtest.h>

#include <tool/io/TimeNames.h>

namespace tests {
namespace {

TEST(TimeNames, AreThoseOfTimesWithOrWithoutAUnit) {
  for (const char* name : {"t", "RT", "Time (min)", "R.Time (min)", "Retention Time", "Zeit/s", "rt_s",
                           "time_min", "SEC", "minutes"})
    EXPECT_TRUE(TslTool::IsTimeName(name)) << name;
}

TEST(TimeNames, AreNoOthers) {
  for (const char* name : {"", "m/z", "Intensity", "2theta", "timeless", "start", "(min)"})
    EXPECT_FALSE(TslTool::IsTimeName(name)) << name;
}

TEST(TimeNames, ArePlainWithoutTheirUnit) {
  EXPECT_EQ(TslTool::PlainName("Retention Time (min)"), "retentiontime");
  EXPECT_EQ(TslTool::PlainName("Zeit/s"), "zeit");
}

}  // namespace
}  // namespace tests
