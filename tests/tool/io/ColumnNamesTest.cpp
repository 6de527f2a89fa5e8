#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include <tool/frame/UsageError.h>
#include <tool/io/ColumnNames.h>

namespace tests {
namespace {

using TslTool::ColumnChoice;
using TslTool::ParseColumnChoice;
using Names = std::vector<std::string_view>;

// "2,3" for the places found, counted from 1; "" for none.
std::string Found(const Names& names, const std::string& choice = "") {
  const auto pair = TslTool::FindColumns(names, ParseColumnChoice("--columns", choice));
  return pair ? std::to_string(pair->mz + 1) + "," + std::to_string(pair->amplitude + 1) : "";
}

TEST(ColumnNames, AreFoundInAnyCaseAndWithUnits) {
  for (const Names& names :
       {Names{"n", "m/z", "Intensity"}, Names{"#", "MASS (Da)", "Counts [1/s]"}, Names{"", "mz", "int"},
        Names{"#Point", "X(Thomsons)", "Y(Counts)"}, Names{"rt", "Mass/Charge", "Relative Abundance"},
        Names{"a", "m / z", "Intens."}, Names{"a", "mass-to-charge", "AMPLITUDE"}, Names{"a", "x", "signal"}})
    EXPECT_EQ(Found(names), "2,3") << names[1];
  EXPECT_EQ(Found({"Intensity", "m/z"}), "2,1");
}

TEST(ColumnNames, ABetterNameHidesOthers) {
  EXPECT_EQ(Found({"mass", "m/z", "intensity"}), "2,3");
  EXPECT_EQ(Found({"m/z", "Relative Abundance", "Abundance"}), "1,3");
  EXPECT_EQ(Found({"x", "y", "mass", "counts"}), "3,4");
}

TEST(ColumnNames, AreNotGuessed) {
  for (const Names& names :
       {Names{}, Names{"time", "signal"}, Names{"m/z", "area"}, Names{"mz", "mz", "intensity"},
        Names{"mz", "intensity", "counts"}, Names{"mzmin", "into"}, Names{"", ""}})
    EXPECT_EQ(Found(names), "");
}

TEST(ColumnNames, XIsNoMzInAnotherUnit) {
  EXPECT_EQ(Found({"#Point", "X(Minutes)", "Y(Counts)"}), "");
  EXPECT_EQ(Found({"x [min]", "y"}), "");
  EXPECT_EQ(Found({"Mass (calibrated 12 min)", "y"}), "1,2");
}

TEST(ColumnNames, AreKnownOrNot) {
  EXPECT_TRUE(TslTool::IsMzName("m/z (Th)"));
  EXPECT_FALSE(TslTool::IsMzName("DAC"));
  EXPECT_TRUE(TslTool::IsAmplitudeName("Intensit\u00e4t"));
  EXPECT_FALSE(TslTool::IsAmplitudeName("Area"));
  EXPECT_TRUE(TslTool::IsNoMz("R.Time (min)"));
  EXPECT_FALSE(TslTool::IsNoMz("m/z (drift corrected)"));
}

TEST(ColumnNames, OneKnownNameOfTwoTellsBoth) {
  EXPECT_EQ(TslTool::FindColumnsOfTwo({"m/z", "height"})->amplitude, 1u);
  EXPECT_EQ(TslTool::FindColumnsOfTwo({"channel", "counts"})->mz, 0u);
  EXPECT_EQ(TslTool::FindColumnsOfTwo({"counts", "channel"})->mz, 1u);
  EXPECT_FALSE(TslTool::FindColumnsOfTwo({"a", "b"}));
  EXPECT_FALSE(TslTool::FindColumnsOfTwo({"mz", "mz"}));
}

TEST(ColumnNames, TellWhichColumnNumbersSpectra) {
  EXPECT_EQ(TslTool::FindScanColumn({"mz", "Scan No.", "int"}), 1u);
  EXPECT_EQ(TslTool::FindScanColumn({"#", "mz", "int"}), std::nullopt);
}

TEST(ColumnNames, AreChosenByNameOrNumber) {
  const Names names = {"a", "Height (counts)", "height", "b"};
  EXPECT_EQ(Found(names, "B,a"), "4,1");
  EXPECT_EQ(Found(names, "b,Height"), "4,3");
  EXPECT_EQ(Found(names, "b,height (counts)"), "4,2");
  EXPECT_EQ(Found(names, "1,b"), "1,4");
  EXPECT_EQ(Found({}, "7,2"), "7,2");
  EXPECT_EQ(Found(names, "b,c"), "");
  EXPECT_EQ(Found({"a", "a", "b"}, "a,b"), "");
  EXPECT_EQ(Found(names, "b,4"), "");
}

TEST(ColumnNames, AChoiceIsTwoDifferentColumns) {
  EXPECT_FALSE(ParseColumnChoice("--columns", "").IsGiven());
  EXPECT_EQ(ParseColumnChoice("--columns", "m/z,2"), (ColumnChoice{"m/z", "2"}));
  EXPECT_FALSE(ParseColumnChoice("--columns", "m/z,2").IsByNumber());
  EXPECT_TRUE(ParseColumnChoice("--columns", "3,2").IsByNumber());
  for (const char* wrong : {"mz", ",", "mz,", ",int", "1,2,3", "mz,mz", "0,1", "1,00", "1,99999999999"})
    EXPECT_THROW(ParseColumnChoice("--columns", wrong), TslTool::UsageError) << wrong;
}

TEST(ColumnNames, AreListedForMessages) {
  EXPECT_EQ(TslTool::ListColumns({"a", "b\n"}), "\"a\" (1), \"b\\n\" (2)");
  EXPECT_THAT(TslTool::ListColumns(Names(13, "a")), testing::EndsWith(", \"a\" (12), ..."));
}

}  // namespace
}  // namespace tests
