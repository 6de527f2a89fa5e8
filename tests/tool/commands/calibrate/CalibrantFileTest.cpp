#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>

#include <tool/TempFile.h>
#include <tool/commands/calibrate/CalibrantFile.h>
#include <tool/frame/InputError.h>
#include <tslbl/records/RecordForms.h>

namespace tests {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using TslBL::Calibrant;
using TslBL::CalibrateParams;

CalibrateParams Read(const std::string& text) {
  const TempFile file("a.txt", text);
  return TslTool::ReadCalibrants(file.Path());
}

// "PLACE: REASON"; empty if it can be read.
std::string ErrorOf(const std::string& text) {
  try {
    Read(text);
  } catch (const TslTool::InputError& error) {
    return error.Place() + ": " + error.Reason();
  }
  return "";
}

TEST(CalibrantFile, HasANameAndAnMzALine) {
  const CalibrateParams params = Read("A 100.5\nB\t200\nC,300\nD;400.25\nleucine enkephalin , 556.28\n");
  EXPECT_THAT(params.calibrants,
              ElementsAre(Calibrant{L"A", 100.5}, Calibrant{L"B", 200}, Calibrant{L"C", 300},
                          Calibrant{L"D", 400.25}, Calibrant{L"leucine enkephalin", 556.28}));
  EXPECT_EQ(params.tolerance, 1.0);
}

TEST(CalibrantFile, ANameMayEndInANumberBeforeAComma) {
  EXPECT_THAT(Read("PEG 400,413.26\nC3,300\n").calibrants,
              ElementsAre(Calibrant{L"PEG 400", 413.26}, Calibrant{L"C3", 300}));
}

TEST(CalibrantFile, AnMzAloneIsItsName) {
  EXPECT_THAT(Read("100.50\n 200\n").calibrants,
              ElementsAre(Calibrant{L"100.50", 100.5}, Calibrant{L"200", 200}));
}

TEST(CalibrantFile, PassesOverCommentsBlankLinesAndNamesOfColumns) {
  EXPECT_THAT(Read("\xef\xbb\xbf# ions\r\n\r\nname\tmz\r\nB 200\r\n#\r\nA 100\r\n").calibrants,
              ElementsAre(Calibrant{L"B", 200}, Calibrant{L"A", 100}));
}

TEST(CalibrantFile, SaysWhatIsWrongAndWhere) {
  const std::pair<const char*, const char*> table[] = {
      {"", "holds 0 calibrants, and an axis is laid through two at least"},
      {"A 100\n", "holds 1 calibrant, and"},
      {"A 1O0.5\nB 200\nC 300\n", "line 1: \"A 1O0.5\" does not end in an m/z"},
      {"PFK 68,995\nC 99.99\n", "line 1: \"PFK 68,995\" ends in a decimal comma or in a number behind"},
      {"68,995\nC 99.99\n", "line 1: \"68,995\" ends in a decimal comma"},
      {"A 100\nB x\n", "line 2: \"B x\" does not end in an m/z"},
      {"name mz\nA 100\nmore mz\n", "line 3: \"more mz\" does not end in an m/z"},
      {"A 100\nB -5\n", "line 2: the m/z -5 is not above 0"},
      {"A 100\nB 0\n", "line 2: the m/z 0 is not above 0"},
      {"A 100\nA 200\n", "line 2: the calibrant \"A\" stands in line 1 already"},
      {"A 100\n\nB 100.0\n", "line 3: m/z 100 stands in line 1 already"},
      {"A 100\nB nan\n", "line 2: \"B nan\" does not end in an m/z"},
  };
  for (const auto& [text, error] : table) EXPECT_THAT(ErrorOf(text), HasSubstr(error)) << text;
}

TEST(CalibrantFile, MayBeTheLibrarysRecord) {
  CalibrateParams params;
  params.calibrants = {{L"A", 100}, {L"B", 200}};
  params.tolerance = 0.25;
  EXPECT_EQ(Read(TslBL::ToBytes(params)), params);
}

TEST(CalibrantFile, ARecordThatIsDamagedIsAnError) {
  CalibrateParams params;
  params.calibrants = {{L"A", 100}, {L"B", 200}};
  const std::string bytes = TslBL::ToBytes(params);
  for (std::size_t n = 4; n < bytes.size(); ++n)
    EXPECT_THAT(ErrorOf(bytes.substr(0, n)), HasSubstr("cannot be read as calibrants")) << n;
  std::string other = bytes;
  other[0] = 3;
  EXPECT_THAT(ErrorOf(other), HasSubstr("Unknown CalibrateParams version."));
  params.calibrants[1].MZ = -1;
  EXPECT_THAT(ErrorOf(TslBL::ToBytes(params)), HasSubstr("calibrant 2: the m/z -1 is not above 0"));
}

TEST(CalibrantFile, AFileThatIsNotThereIsAnError) {
  EXPECT_THROW(TslTool::ReadCalibrants("/nowhere/a.txt"), TslTool::InputError);
}

}  // namespace
}  // namespace tests
