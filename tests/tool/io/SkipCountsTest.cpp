#include <gtest/gtest.h>

#include <tool/io/SkipCounts.h>

namespace tests {
namespace {

using TslTool::SkipCounts;

TEST(SkipCounts, TellHowManyOfHowManyByReason) {
  SkipCounts counts("a.mzML", false);
  counts.CountTaken();
  counts.Skip("marked as centroid", "scan 2");
  counts.Skip("empty", "scan 3");
  counts.Skip("marked as centroid", "scan 4");
  EXPECT_EQ(counts.Text(),
            "3 of 4 spectra skipped: 1 empty (first at scan 3), 2 marked as centroid (first at scan 2)");
}

TEST(SkipCounts, TellNothingWhereNothingWasSkipped) {
  SkipCounts counts("a.mzML", false);
  counts.CountTaken();
  EXPECT_EQ(counts.Text(), "");
}

TEST(SkipCounts, StrictTheyRefuseTheFirst) {
  SkipCounts counts("a.mzML", true);
  EXPECT_THROW(counts.Skip("empty", "scan 3"), TslTool::InputError);
}

}  // namespace
}  // namespace tests
