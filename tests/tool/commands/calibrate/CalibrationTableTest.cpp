#include <gtest/gtest.h>

#include <vector>

#include <tool/commands/calibrate/CalibrationTable.h>

namespace tests {
namespace {

using TslTool::CalibratedPoint;

const std::vector<CalibratedPoint> kPoints = {{"A", 100, 100.001, 100, 2},
                                              {"long name", 200, std::nullopt, std::nullopt, 1},
                                              {"B", 400, 399.9, std::nullopt, 0}};

TEST(CalibrationTable, HasDeviationsBeforeAndAfter) {
  EXPECT_EQ(TslTool::CalibrationTable(kPoints),
            "calibrant    expected  m/z before    off by       ppm   m/z after    off by       ppm  status\n"
            "A            100.0000    100.0010   +0.0010    +10.00    100.0000   +0.0000     +0.00  used\n"
            "long name    200.0000           -         -         -           -         -         -  no peak\n"
            "B            400.0000    399.9000   -0.1000   -250.00           -         -         -  off\n");
}

TEST(CalibrationTable, ForProgramsHasFullPrecisionAndEmptyCells) {
  const std::string text = TslTool::CalibrationTsv({{"A", 100, 100.5, 100, 2}, kPoints[1]});
  EXPECT_EQ(text,
            "calibrant\tmz_expected\tmz_before\tppm_before\tmz_after\tppm_after\tstatus\n"
            "A\t100\t100.5\t5000\t100\t0\tused\n"
            "long name\t200\t\t\t\t\tno peak\n");
}

TEST(CalibrationTable, PpmAreOfWhatIsExpected) {
  EXPECT_NEAR(TslTool::PpmOf(500.005, 500.0), 10.0, 1e-6);
  EXPECT_EQ(TslTool::PpmOf(500.0, 500.0), 0.0);
}

}  // namespace
}  // namespace tests
