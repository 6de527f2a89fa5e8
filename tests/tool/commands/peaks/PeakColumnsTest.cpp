#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <map>
#include <set>
#include <sstream>
#include <stdexcept>
#include <string>
#include <vector>

#include <tool/commands/peaks/PeakColumns.h>
#include <tslbl/closed/common/Text.h>

namespace tests {
namespace {

using testing::Contains;
using testing::ElementsAre;
using TslTool::PeakColumns;

std::vector<std::string> Names() {
  std::vector<std::string> names;
  for (const auto& column : PeakColumns()) names.emplace_back(column.name);
  return names;
}

TslTool::ColumnValue ValueOf(const TslTool::ReportedPeak& peak, const std::string& name) {
  for (const auto& column : PeakColumns())
    if (column.name == name) return column.value(peak);
  throw std::out_of_range(name);
}

TEST(PeakColumns, BeginWithWhatEverybodyWants) {
  const auto names = Names();
  EXPECT_THAT(std::vector<std::string>(names.begin(), names.begin() + 6),
              ElementsAre("mz", "amplitude", "area", "width", "resolution", "sn"));
}

TEST(PeakColumns, HaveNamesOfTheirOwn) {
  const auto names = Names();
  EXPECT_EQ(std::set<std::string>(names.begin(), names.end()).size(), names.size());
}

TEST(PeakColumns, GiveTheWidthBeforeTheSmoothingBesideTheRecords) {
  TslTool::ReportedPeak reported;
  reported.row.Width = 0.6;
  reported.row.Resolution = 1000.0;
  reported.errors.narrowing = 0.8;
  EXPECT_DOUBLE_EQ(std::get<double>(ValueOf(reported, "width")), 0.48);
  EXPECT_DOUBLE_EQ(std::get<double>(ValueOf(reported, "resolution")), 1250.0);
  EXPECT_EQ(std::get<double>(ValueOf(reported, "Width")), 0.6);
  EXPECT_EQ(std::get<double>(ValueOf(reported, "Resolution")), 1000.0);
}

TEST(PeakColumns, GiveTheFieldTheyAreNamedAfter) {
  TslTool::ReportedPeak reported;
  reported.area = 9.5;
  TslBL::MZPeak& peak = reported.row;
  peak.Mass = 1.5;
  peak.Ampl = 2.5;
  peak.Area = 3.5;
  peak.Width = 4.5;
  peak.Resolution = 5.5;
  peak.Signal2Noise = 6.5;
  peak.PkEndAmpl = 7.5;
  peak.CSCharge = -3;
  peak.CSSeriesRef.Id = 8;
  peak.IsOverlapped = true;
  peak.PeakId = 4294967295U;
  const std::pair<const char*, TslTool::ColumnValue> expected[] = {{"mz", 1.5},
                                                                   {"amplitude", 2.5},
                                                                   {"area", 9.5},
                                                                   {"Area", 3.5},
                                                                   {"width", 4.5},
                                                                   {"resolution", 5.5},
                                                                   {"sn", 6.5},
                                                                   {"PkEndAmpl", 7.5},
                                                                   {"CSCharge", std::int64_t{-3}},
                                                                   {"CSSeriesId", std::int64_t{8}},
                                                                   {"IsOverlapped", true},
                                                                   {"PeakId", std::int64_t{4294967295}}};
  for (const auto& [name, value] : expected) EXPECT_EQ(ValueOf(reported, name), value) << name;
}

// The row's own dump names its fields; short names stand for five of them, and one more for no field.
TEST(PeakColumns, LeaveNoFieldOfTheRowOut) {
  const std::map<std::string, std::string> shortNames = {
      {"Mass", "mz"}, {"Ampl", "amplitude"}, {"Signal2Noise", "sn"}};
  std::wstring dump;
  TslBL::MZPeak().Serialize(dump);
  std::istringstream lines(TslCommon::ToUtf8(dump));
  std::size_t fields = 0;
  for (std::string line; std::getline(lines, line);) {
    std::string field = line.substr(2, line.find(':') - 2);
    if (field == "Type" || field == "Id") field = "CSSeries" + field;
    const auto other = shortNames.find(field);
    EXPECT_THAT(Names(), Contains(other == shortNames.end() ? field : other->second));
    ++fields;
  }
  EXPECT_EQ(Names().size(), fields + 8);
}

}  // namespace
}  // namespace tests
