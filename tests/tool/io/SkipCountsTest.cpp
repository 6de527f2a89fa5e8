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

TEST(SkipCounts, ADefectIsCountedOrStrictlyToldInFull) {
  const TslTool::Defect defect = {"with a hole", "line 3", "has a hole at point 7"};
  SkipCounts counts("a.mzML", false);
  counts.Skip(defect);
  EXPECT_EQ(counts.Text(), "1 of 1 spectra skipped: 1 with a hole (first at line 3)");
  try {
    SkipCounts("a.mzML", true).Skip(defect);
    FAIL();
  } catch (const TslTool::InputError& error) {
    EXPECT_STREQ(error.what(), "a.mzML: line 3: has a hole at point 7");
  }
}

}  // namespace
}  // namespace tests
