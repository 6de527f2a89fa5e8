// Tests: ByteSource.cpp, LineReader.cpp.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>
#include <random>
#include <string>
#include <vector>

#include <tool/io/TextReading.h>

namespace tests {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using TslTool::Scan;

TEST(TextFile, ReadsEveryUsualSeparator) {
  for (const char* text : {"100.5 7\n101 8e2\n", "100.5\t7\r\n101\t8e2\r\n", "100.5,7\n101,8e2\n",
                           "100.5;7\n101;8e2\n", "  100.5 ,\t7 \n\n101 ; +8.0E+2", "100.5,7,\n101,8e2,\n",
                           "\xef\xbb\xbf"
                           "100.5 7\n101 800"}) {
    const Scan scan = Read(text).scan;
    EXPECT_THAT(scan.mz, ElementsAre(100.5, 101)) << text;
    EXPECT_THAT(scan.amplitude, ElementsAre(7, 800)) << text;
  }
}

TEST(TextFile, SkipsHeaderCommentsAndEmptyLines) {
  for (const char* text : {"m/z\tIntensity\n1 2\n", "# made by hand\n\n\"mz\",\"counts\"\n1,2 # first\n",
                           "mz (Th) ; I\n#\n1;2"}) {
    EXPECT_THAT(Read(text).scan.amplitude, ElementsAre(2)) << text;
  }
}

TEST(TextFile, MultipliesBySaidMultiplier) {
  const ReadText read = Read("Intensity Multiplier\t0.5\nm/z\tIntensity\n100\t5\n101\t6\n");
  EXPECT_THAT(read.scan.amplitude, ElementsAre(2.5, 3));
  EXPECT_THAT(read.notes, testing::Contains("amplitudes times 0.5, the multiplier that the file tells"));
}

TEST(TextFile, OfSeveralRetentionTimesIsRefused) {
  EXPECT_EQ(ErrorOf("mz\tintensity\trt\n100\t5\t1.5\n101\t6\t1.5\n102\t7\t1.6\n"),
            "line 4: time \"1.6\" behind \"1.5\": a text holds one spectrum");
}

TEST(TextFile, TimesOfFlightAreThoseOfPoints) {
  const Scan scan = Read("m/z\ttime\tIntens.\n100\t1.5\t5\n101\t1.6\t6\n102\t1.7\t7\n").scan;
  EXPECT_THAT(scan.amplitude, ElementsAre(5, 6, 7));
}

TEST(TextFile, IsOneScanOfWhichNothingElseIsKnown) {
  const Scan scan = Read("1 2\n").scan;
  EXPECT_EQ(scan.number, 1u);
  EXPECT_EQ(scan.id, "");
  EXPECT_TRUE(std::isnan(scan.rtSeconds));
  EXPECT_EQ(scan.msLevel, 0);
  EXPECT_EQ(scan.representation, Scan::Unknown);
}

TEST(TextFile, EndsAtTheCtrlZThatDosPutsBehindATextOnly) {
  for (const char* text : {"1 2\r\n3 4\r\n\x1a", "1 2\n3 4\x1a", "1 2\n3 4\n\x1a\x1a\x1a"})
    EXPECT_THAT(Read(text).scan.mz, ElementsAre(1, 3)) << text;
  EXPECT_EQ(ErrorOf("1 2\n\x1a\n3 4\n"),
            "line 2: one column, \"\\x1a\", where two are expected (m/z, amplitude)");
}

TEST(TextFile, KeepsNegativeAmplitudes) { EXPECT_THAT(Read("1 -2.5\n").scan.amplitude, ElementsAre(-2.5)); }

TEST(TextFile, ReadsGzip) {
  EXPECT_THAT(Read(Gzip("1 2\n3 4\n"), "profile.txt.gz").scan.mz, ElementsAre(1, 3));
}

TEST(TextFile, LeavesOutThePrecursorLineOfDta) {
  const ReadText result = Read("850.4 2\n100 5\n101 6\n", "spectrum.dta");
  EXPECT_THAT(result.scan.mz, ElementsAre(100, 101));
  EXPECT_THAT(result.warnings, ElementsAre(HasSubstr("line 1 is the precursor line")));
}

TEST(TextFile, CountsThePrecursorLineOfDtaAmongTheLines) {
  EXPECT_THAT(Read("850.4 2\n1.0 5\n1.2 6\n1.1 0\n1.3 7\n", "a.dta").warnings,
              ElementsAre(HasSubstr("line 1 is"), HasSubstr("first at line 4")));
  EXPECT_EQ(ErrorOf("850.4 2\n1 2\n2 x\n", "a.dta"), "line 3: \"x\" is not a number");
}

TEST(TextFile, PutsTheOverlapOfTwoSegmentsInOrderAndWarns) {
  const ReadText result = Read("# segments\n1.0 5\n1.2 6\n1.1 2\n1.3 7\n");
  EXPECT_THAT(result.scan.mz, ElementsAre(1.0, 1.1, 1.2, 1.3));
  EXPECT_THAT(result.scan.amplitude, ElementsAre(5, 2, 6, 7));
  EXPECT_THAT(result.warnings,
              ElementsAre("m/z does not ascend everywhere (first at line 4): 1 pair of neighbouring "
                          "points put in order"));
}

TEST(TextFile, AveragesPointsOfTheSameMzAndWarns) {
  const ReadText result = Read("1 5\n2 6\n2 8\n3 7\n");
  EXPECT_THAT(result.scan.mz, ElementsAre(1, 2, 3));
  EXPECT_THAT(result.scan.amplitude, ElementsAre(5, 7, 7));
  EXPECT_THAT(result.warnings, ElementsAre(HasSubstr("1 point with a repeated m/z averaged")));
}

TEST(TextFile, GivesNoWarningForAnAscendingAxis) { EXPECT_THAT(Read("1 5\n2 6\n").warnings, IsEmpty()); }

struct BadText {
  std::string text, error;
};

TEST(TextFile, NamesLineAndTextOfWhatIsWrong) {
  const std::string two = "where two are expected (m/z, amplitude";
  const std::vector<BadText> table = {
      {"1 2\n\n3 x4\n", "line 3: \"x4\" is not a number"},
      {"1 2\n3 4x\n", "line 2: \"4x\" is not a number"},
      {"1x 2\n", "line 1: \"1x\" is not a number"},
      {"mz int\n1 2\nint\n", "line 3: one column, \"int\", " + two + ")"},
      {"1 2\n3\n", "line 2: one column, \"3\", " + two + ")"},
      {"1 2\n1 2 3\n", "line 2: 3 columns, \"1 2 3\", " + two + "; decimal point, no decimal comma)"},
      {"nan 1\n", "line 1: \"nan\" is not a finite number"},
      {"1 2\n2 -Inf\n", "line 2: \"-Inf\" is not a finite number"},
      {"1 1e999\n", "line 1: \"1e999\" is beyond the range of numbers"},
      {"-1 2\n", "line 1: the m/z \"-1\" is negative"},
      {"# nothing\n\n", ": holds no line with m/z and amplitude"},
      {"m/z intensity\n", ": holds no line with m/z and amplitude; line 1 is \"m/z intensity\""},
      {"", ": the file is empty"},
      {std::string("1 2\n\0\x01\x02 5\n", 10), "line 2: \"\\x00\\x01\\x02\" is not a number"},
      {std::string(100000, '1'), "line 1: longer than 64 KiB; not a text file"},
  };
  for (const auto& [text, error] : table) EXPECT_EQ(ErrorOf(text), error) << text.substr(0, 50);
}

TEST(TextFile, WordsAsThoseBeforeTheNumbersBeginAnotherSpectrum) {
  const std::string again =
      "begins as a line before the numbers does; if it begins another spectrum, write each to a file of its "
      "own";
  EXPECT_EQ(ErrorOf("FUNCTION 1\n\nScan\t\t1\nTime\t0.2\n\n1 2\n3 4\n\nScan\t\t2\nTime\t0.3\n\n1 2\n"),
            "line 9: \"Scan  2\" " + again);
  EXPECT_EQ(ErrorOf("mz int\n1 2\nmz int\n1 3\n"), "line 3: \"mz int\" " + again);
  EXPECT_EQ(ErrorOf("\"m/z\",\"int\"\n1,2\n\"m/z\",\"int\"\n"), "line 3: \"\"m/z\",\"int\"\" " + again);
}

TEST(TextFile, ReadsLinesAcrossItsChunks) {
  std::string text;
  for (int i = 0; i < 30000; ++i) text += std::to_string(i) + " " + std::to_string(2 * i) + "\n";
  const Scan scan = Read(text).scan;
  ASSERT_EQ(scan.mz.size(), 30000u);
  for (std::size_t i = 0; i < scan.mz.size(); ++i) {
    ASSERT_EQ(scan.mz[i], static_cast<double>(i));
    ASSERT_EQ(scan.amplitude[i], static_cast<double>(2 * i));
  }
}

TEST(TextFile, MeetsGarbledBytesWithDataOrAnError) {
  std::string text;
  for (int i = 0; i < 40; ++i) text += std::to_string(100 + i) + ".25\t" + std::to_string(i * i) + "\n";
  std::mt19937 random(11);
  int refused = 0;
  for (int round = 0; round < 300; ++round) {
    std::string garbled = text;
    garbled[random() % text.size()] = static_cast<char>(random() % 256);
    refused += !ErrorOf(garbled).empty();
  }
  EXPECT_GT(refused, 100);
}

}  // namespace
}  // namespace tests
