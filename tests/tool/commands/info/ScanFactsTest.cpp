// Tests: ScanFacts.cpp, FileFacts.cpp.

#include <gtest/gtest.h>
#include <tool/commands/info/FileFacts.h>
#include <tool/commands/info/ScanFacts.h>

#include <cmath>

namespace tests {
namespace {

using TslTool::FactsOf;
using TslTool::FileFacts;
using TslTool::Scan;
using TslTool::ScanFacts;

Scan Sample(std::uint32_t number) {
  Scan scan;
  scan.number = number;
  scan.mz = {100, 101, 103};
  scan.amplitude = {0, 4, 4};
  return scan;
}

TEST(ScanFacts, TellThePoints) {
  const ScanFacts facts = FactsOf(Sample(3));
  EXPECT_EQ(facts.number, 3U);
  EXPECT_EQ(facts.points, 3U);
  EXPECT_EQ(facts.mzFrom, 100);
  EXPECT_EQ(facts.mzTo, 103);
  EXPECT_EQ(facts.tic, 8);
  EXPECT_EQ(facts.basePeakMz, 101);
  EXPECT_EQ(facts.basePeak, 4);
  EXPECT_EQ(facts.zeros, 1U);
}

TEST(ScanFacts, ASpectrumWithoutPointsHasNoBasePeak) {
  const ScanFacts facts = FactsOf(Scan());
  EXPECT_EQ(facts.tic, 0);
  for (const double value : {facts.mzFrom, facts.mzTo, facts.basePeakMz, facts.basePeak, facts.rtSeconds})
    EXPECT_TRUE(std::isnan(value));
}

TEST(ScanFacts, FewPointsAreNotJudged) {
  Scan scan = Sample(1);
  EXPECT_TRUE(FactsOf(scan).judged);
  scan.mz.pop_back();
  scan.amplitude.pop_back();
  EXPECT_FALSE(FactsOf(scan).judged);
}

TEST(ScanFacts, DifferOnlyFromAMark) {
  ScanFacts facts;
  EXPECT_FALSE(facts.Differs());
  facts.judged = Scan::Profile;
  EXPECT_FALSE(facts.Differs());
  facts.marked = Scan::Centroid;
  EXPECT_TRUE(facts.Differs());
  facts.marked = Scan::Profile;
  EXPECT_FALSE(facts.Differs());
}

TEST(FileFacts, TellWhetherTheNumbersAscend) {
  const struct {
    std::vector<std::uint32_t> numbers;
    bool ascends;
  } table[] = {{{}, true}, {{7}, true}, {{0, 1, 9}, true}, {{1, 1}, false}, {{1, 3, 2, 4}, false}};
  for (const auto& [numbers, ascends] : table) {
    FileFacts facts;
    for (const std::uint32_t number : numbers) facts.Add(FactsOf(Sample(number)));
    EXPECT_EQ(facts.ascends, ascends) << numbers.size();
  }
}

TEST(FileFacts, ASpectrumWithoutPointsHasNoPartInTheRanges) {
  FileFacts facts;
  facts.Add(FactsOf(Scan()));
  EXPECT_FALSE(facts.tic.IsKnown());
  EXPECT_FALSE(facts.mz.IsKnown());
  facts.Add(FactsOf(Sample(2)));
  EXPECT_EQ(facts.tic.from, 8);
  EXPECT_EQ(facts.fewest, 0U);
  EXPECT_EQ(facts.empty, 1U);
  EXPECT_EQ(facts.firstNumber, 0U);
  EXPECT_EQ(facts.lastNumber, 2U);
}

}  // namespace
}  // namespace tests
