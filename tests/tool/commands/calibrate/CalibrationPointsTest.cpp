#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <limits>
#include <string>
#include <vector>

#include <tool/ToolRun.h>
#include <tool/commands/calibrate/CalibrationPoints.h>
#include <tool/frame/InputError.h>
#include <tslbl/calibrate/CalFile.h>
#include <tslbl/closed/common/Text.h>

namespace tests {
namespace {

using testing::HasSubstr;
using TslBL::MZCalPt;

const std::vector<MZCalPt> kPoints = {{L"A", 100, 2000}, {L"B", 200, 4010}, {L"C", 300, 6000}};

std::string BytesOf(const std::vector<MZCalPt>& points) {
  const TempFile folder("x", "");
  const std::string file = folder.Folder() + "/a.cal";
  EXPECT_TRUE(TslBL::SaveCalFile(TslCommon::FromUtf8(file), points));
  return ReadFile(file);
}

std::string ErrorOf(const std::string& bytes) {
  const TempFile file("a.cal", bytes);
  try {
    TslTool::ReadCalibration(file.Path());
  } catch (const TslTool::InputError& error) {
    return (error.Place().empty() ? "" : error.Place() + ": ") + error.Reason();
  }
  return "";
}

TEST(CalibrationPoints, AreReadAsTheyWereWritten) {
  const TempFile folder("x", "");
  const std::string file = folder.Folder() + "/\xc3\xa4.cal";
  TslTool::WriteCalibration(file, kPoints);
  EXPECT_EQ(TslTool::ReadCalibration(file), kPoints);
}

TEST(CalibrationPoints, AreSortedByMz) {
  const TempFile file("a.cal", BytesOf({kPoints[2], kPoints[0], kPoints[1]}));
  EXPECT_EQ(TslTool::ReadCalibration(file.Path()), kPoints);
}

TEST(CalibrationPoints, EveryBeginningOfAFileIsRefused) {
  const std::string bytes = BytesOf(kPoints);
  for (std::size_t n = 0; n < bytes.size(); ++n)
    EXPECT_THAT(ErrorOf(bytes.substr(0, n)),
                testing::AnyOf(HasSubstr("ends within its version"), HasSubstr("is damaged or cut short")))
        << n;
}

TEST(CalibrationPoints, SaysOfAFileWhatItIs) {
  std::string other = BytesOf(kPoints);
  other[0] = 2;
  EXPECT_EQ(ErrorOf(other), "is a calibration file of version 2; this program reads 1");
  EXPECT_EQ(ErrorOf("mz\tamplitude\n100\t1\n"), "is no calibration file");
  EXPECT_EQ(ErrorOf(std::string(100, '\0')), "is no calibration file");
  EXPECT_EQ(ErrorOf(""), "is no calibration file: it ends within its version");
  EXPECT_THROW(TslTool::ReadCalibration("/tmp"), TslTool::InputError);
  EXPECT_THROW(TslTool::ReadCalibration("/nowhere/a.cal"), TslTool::InputError);
}

TEST(CalibrationPoints, AnAxisNeedsTwoThatRise) {
  constexpr double kInfinity = std::numeric_limits<double>::infinity();
  EXPECT_EQ(ErrorOf(BytesOf({})), "holds 0 points, and an axis needs two");
  EXPECT_EQ(ErrorOf(BytesOf({kPoints[0]})), "holds 1 point, and an axis needs two");
  EXPECT_EQ(ErrorOf(BytesOf({kPoints[0], {L"X", 100, 3000}})),
            "point \"X\": m/z 100 at mass DAC 3000 does not lie above m/z 100 at mass DAC 2000");
  EXPECT_THAT(ErrorOf(BytesOf({kPoints[0], {L"X", 200, 1000}})),
              HasSubstr("point \"X\": m/z 200 at mass DAC 1000"));
  EXPECT_EQ(ErrorOf(BytesOf({kPoints[0], {L"X", kInfinity, 3000}})),
            "point \"X\": m/z inf at mass DAC 3000 is not finite");
}

TEST(CalibrationPoints, AnAxisNeedsStepsThatADoubleCanTellApart) {
  EXPECT_EQ(
      ErrorOf(BytesOf({{L"A", 1e-320, 2000}, {L"B", 2e-320, 3000}})),
      "point \"B\": m/z 2e-320 at mass DAC 3000 is too close to m/z 1e-320 at mass DAC 2000 for an axis");
}

TEST(CalibrationPoints, AreNotWrittenWhereTheyCannotBeRead) {
  const TempFile folder("x", "");
  EXPECT_THROW(TslTool::WriteCalibration(folder.Folder() + "/a.cal", {kPoints[0]}), TslTool::InputError);
  EXPECT_THROW(TslTool::WriteCalibration(folder.Folder() + "/none/a.cal", kPoints), TslTool::InputError);
  EXPECT_THAT(NamesIn(folder.Folder()), testing::ElementsAre("x"));
}

}  // namespace
}  // namespace tests
