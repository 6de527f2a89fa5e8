#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <string>
#include <vector>

#include <tool/io/TextReading.h>

namespace tests {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

using Rows = std::vector<std::string>;

// A spectrum of 200 points from m/z 50 in steps of 0.25, whose amplitudes go up and down.
Rows SpectrumRows(double from = 50) {
  Rows rows;
  for (int i = 0; i < 200; ++i)
    rows.push_back(std::to_string(from + 0.25 * i) + " " + std::to_string(i * 37 % 50) + "\n");
  return rows;
}

Rows Turned(Rows rows) {
  std::ranges::reverse(rows);
  return rows;
}

Rows Shuffled(Rows rows) {
  std::mt19937 random(7);
  std::ranges::shuffle(rows, random);
  return rows;
}

std::string TextOf(const Rows& rows, const Rows& more = {}) {
  std::string text;
  for (const std::string& row : rows) text += row;
  for (const std::string& row : more) text += row;
  return text;
}

TEST(TextAxis, DescendingPointsAreTurnedRound) {
  const ReadText straight = Read(TextOf(SpectrumRows()));
  const ReadText turned = Read(TextOf(Turned(SpectrumRows())));
  EXPECT_THAT(straight.warnings, IsEmpty());
  EXPECT_THAT(turned.warnings, ElementsAre("m/z descends, turned round"));
  EXPECT_EQ(turned.scan.mz, straight.scan.mz);
  EXPECT_EQ(turned.scan.amplitude, straight.scan.amplitude);
}

TEST(TextAxis, PointsOutOfOrderAreSorted) {
  const ReadText straight = Read(TextOf(SpectrumRows()));
  const ReadText shuffled = Read(TextOf(Shuffled(SpectrumRows())));
  EXPECT_THAT(shuffled.warnings, ElementsAre(HasSubstr("m/z out of order, sorted (first at line ")));
  EXPECT_EQ(shuffled.scan.mz, straight.scan.mz);
  EXPECT_EQ(shuffled.scan.amplitude, straight.scan.amplitude);
}

TEST(TextAxis, PartsInTheWrongOrderAreSorted) {
  const ReadText parts = Read(TextOf(SpectrumRows(100), SpectrumRows(50)));
  EXPECT_THAT(parts.warnings, ElementsAre("m/z out of order, sorted (first at line 201)"));
  EXPECT_EQ(parts.scan.mz, Read(TextOf(SpectrumRows(50), SpectrumRows(100))).scan.mz);
}

TEST(TextAxis, FewRepeatedPointsOfASortedTextAreAveraged) {
  Rows rows = SpectrumRows();
  rows.push_back("50.25 11\n");
  const ReadText shuffled = Read(TextOf(Shuffled(rows)));
  EXPECT_THAT(shuffled.warnings, ElementsAre(HasSubstr("sorted"), "1 point with a repeated m/z averaged"));
  EXPECT_EQ(shuffled.scan.amplitude[1], 24);
}

TEST(TextAxis, SeveralSpectraAreRefused) {
  const std::string several = "; of several spectra, write each to a file of its own";
  EXPECT_EQ(ErrorOf(TextOf(SpectrumRows(), SpectrumRows())),
            "line 201: m/z begins anew, 50 behind 99.75" + several);
  EXPECT_EQ(ErrorOf(TextOf(SpectrumRows(), SpectrumRows(60.1))),
            "line 201: m/z begins anew, 60.1 behind 99.75" + several);
  EXPECT_EQ(ErrorOf(TextOf(Turned(SpectrumRows()), Turned(SpectrumRows()))),
            "line 201: m/z begins anew, 99.75 behind 50" + several);
  Rows both = SpectrumRows();
  for (const std::string& row : SpectrumRows()) both.push_back(row);
  EXPECT_THAT(ErrorOf(TextOf(Shuffled(both))), HasSubstr(several));
  EXPECT_EQ(ErrorOf("n,mz,int\n1,100,5\n2,101,6\n3,102,7\n4,103,5\n5,100,5\n6,101,6\n7,102,7\n8,103,7\n"),
            "line 6: m/z begins anew, 100 behind 103" + several);
}

TEST(TextAxis, ExchangedColumnsAreToldFromDisorder) {
  EXPECT_EQ(ErrorOf("17 100\n12 100.1\n25 100.2\n21 100.3\n"),
            "line 2: m/z does not ascend and the amplitudes do; if they are exchanged, --columns 2,1");
  EXPECT_EQ(ErrorOf("17 100 0\n12 100.1 0\n25 100.2 0\n", "a.txt", "1,2"),
            "line 2: m/z does not ascend and the amplitudes do; if they are exchanged, --columns 2,1");
}

TEST(TextAxis, AFirstLineThatIsNoPointIsNamed) {
  const std::string heading = "; if it is a heading, remove it or begin it with #";
  const std::string text = TextOf(SpectrumRows());
  EXPECT_EQ(ErrorOf("2024 1200\n" + text),
            "line 1: m/z 2024 stands before 50, from where on they ascend" + heading);
  EXPECT_THAT(Read("# a\n12 200\n" + text).warnings,
              ElementsAre("m/z 12 of line 2 is far off those that follow from 50 on" + heading));
  EXPECT_THAT(Read("50.0 99.75\n" + text).warnings,
              ElementsAre("m/z 50 of line 1 is that of the line behind it, and no other is repeated: both "
                          "averaged" +
                          heading));
}

TEST(TextAxis, ALastLineThatIsNoPointIsNamed) {
  const std::string text = TextOf(SpectrumRows());
  EXPECT_THAT(
      Read(text + "\n9000 625548\n").warnings,
      ElementsAre("m/z 9000 of line 202 is far off those before it, which end at 99.75; if it is a total, "
                  "remove it or begin it with #"));
  EXPECT_THAT(Read(text + "9000 0\n").warnings, testing::IsEmpty());
  EXPECT_THAT(Read(text + "100.75 5\n").warnings, testing::IsEmpty());
}

TEST(TextAxis, AFirstPointSomeStepsAheadIsNoHeading) {
  EXPECT_THAT(Read("48.75 1\n" + TextOf(SpectrumRows())).warnings, IsEmpty());
}

}  // namespace
}  // namespace tests
