// Tables as spreadsheets and instruments write them, given to the tool.
//
// Tests: tool/io/TextFile.cpp.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>
#include <string>

#include <tool/ToolRun.h>
#include <tool/commands/DemoRun.h>

namespace tests {
namespace {

using testing::HasSubstr;

// One peak at 300.2 in `columns` as printf writes them from m/z and amplitude.
std::string Profile(const char* columns) {
  std::string text;
  for (int i = 0; i < 600; ++i) {
    const double mz = 285.0 + 0.05 * i;
    char row[80];
    std::snprintf(row, sizeof row, columns, mz,
                  10.0 + i % 3 + 5000 * std::exp(-std::pow((mz - 300.2) / 0.3, 2)));
    text += row;
  }
  return text;
}

std::string PeaksOf(const std::string& text, const Arguments& more = {}) {
  const TempFile file("a.txt", text);
  Arguments arguments = {"peaks", file.Path(), "--format", "tsv"};
  arguments.insert(arguments.end(), more.begin(), more.end());
  const Outcome outcome = RunTool(arguments);
  EXPECT_EQ(outcome.status, 0) << outcome.err;
  return outcome.out;
}

TEST(TextInput, OnePeakIsFoundInEveryDialect) {
  const std::string plain = PeaksOf(Profile("%.2f\t%.3f\n"));
  ASSERT_EQ(RowsOf(plain).size(), 1u);
  EXPECT_NEAR(ColumnOf(RowsOf(plain), "mz").front(), 300.2, 0.01);
  std::string comma = Profile("%.2f;%.3f\n");
  std::ranges::replace(comma, '.', ',');
  EXPECT_EQ(PeaksOf("Spectrum 1\nMasse;Intensität\n" + comma), plain);
  EXPECT_EQ(PeaksOf(Profile("1 %.2f %.3f\n"), {"--columns", "2,3"}), plain);
  EXPECT_EQ(PeaksOf("id,Mass,Height\n" + Profile("x,%.2f,%.3f\n"), {"--columns", "mass,height"}), plain);
}

TEST(TextInput, WhatWasTakenForWhatIsToldOnce) {
  const TempFile file("a.csv", "Run 5\nScan,Mass,Intensity\n" + Profile("1,%.2f,%.3f\n"));
  const std::string note = "tslbl: " + file.Path() +
                           ": columns \"Mass\" (2) and \"Intensity\" (3), comma separated, 2 lines of head\n";
  for (const char* command : {"peaks", "info"})
    EXPECT_EQ(LinesOf(RunTool({command, file.Path()}).err).front() + "\n", note) << command;
  EXPECT_EQ(RunTool({"peaks", file.Path(), "--quiet"}).err, "");
}

TEST(TextInput, PlainTextIsReadWithoutAWord) {
  const TempFile file("a.csv", Profile("%.2f,%.3f\n"));
  EXPECT_EQ(RunTool({"info", file.Path()}).err, "");
}

TEST(TextInput, ColumnsAreForText) {
  const Outcome outcome = RunTool({"info", DemoRun::Get().Run(), "--columns", "1,2"});
  EXPECT_EQ(outcome.status, 2);
  EXPECT_THAT(outcome.err, HasSubstr("--columns: is for text, and this is a run"));
  EXPECT_EQ(RunTool({"peaks", DemoRun::Get().Run(), "--columns", "1,2"}).err, outcome.err);
  EXPECT_EQ(RunTool({"peaks", "--columns", "1,2"}).err, outcome.err);
  EXPECT_THAT(RunTool({"peaks", "x.txt", "--columns", "1"}).err,
              HasSubstr("--columns: \"1\" is not two columns"));
}

TEST(TextInput, UncertainColumnsAreListed) {
  const TempFile file("a.txt", "1 100 5\n2 101 6\n");
  EXPECT_EQ(
      RunTool({"peaks", file.Path()}).err,
      "tslbl: " + file.Path() +
          ": line 1: 3 columns, \"1\" (1), \"100\" (2), \"5\" (3): tell which hold m/z and amplitude, as in "
          "--columns 2,3\n");
}

}  // namespace
}  // namespace tests
