#include <gtest/gtest.h>

#include <string>
#include <vector>

#include <tool/frame/Suggestion.h>

namespace tests {
namespace {

const std::vector<std::string> kKnown = {"-o",      "--output", "--output-dir", "--smooth", "--scan",  "--sn",
                                         "--noise", "peaks",    "info",         "simulate", "--quiet", "-q"};

TEST(Suggestion, IsTheNearestOfWhatIsKnown) {
  const std::pair<const char*, const char*> cases[] = {
      {"--smoth", "--smooth"},     {"--smooht", "--smooth"}, {"--smmooth", "--smooth"},
      {"--Smooth", "--smooth"},    {"-smooth", "--smooth"},  {"smooth", "--smooth"},
      {"--smoth=off", "--smooth"}, {"--out", "--output"},    {"--ouptut-dir", "--output-dir"},
      {"--scna", "--scan"},        {"peak", "peaks"},        {"paeks", "peaks"},
      {"simualte", "simulate"},    {"inof", "info"}};
  for (const auto& [word, meant] : cases) EXPECT_EQ(TslTool::Suggestion(word, kKnown), meant) << word;
}

TEST(Suggestion, IsNoneWhereNothingIsNear) {
  for (const char* word : {"", "-", "--", "-x", "--colour", "--=3", "sample.mzML", "xy"})
    EXPECT_EQ(TslTool::Suggestion(word, kKnown), "") << word;
  EXPECT_EQ(TslTool::Suggestion("--smooth", {}), "");
}

}  // namespace
}  // namespace tests
