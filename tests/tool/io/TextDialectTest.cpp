// Tests: TextHead.cpp, TextRow.cpp.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <charconv>
#include <random>
#include <string>
#include <vector>

#include <tool/io/TextReading.h>

namespace tests {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

// A text in which the points are (100.5, 2000) and (101.25, 30.5), and what is told of it; nothing of the
// usual.
struct Readable {
  std::string text, note, columns = "";
};

TEST(TextDialect, ReadsWhatIsCertain) {
  const std::string first = "columns 1 and 2, ";
  const std::vector<Readable> table = {
      {"100.5 2000\n101.25 30.5\n", ""},
      {"100.5\t2000\t\n101.25\t30.5\t\n", ""},
      {"\n;;\n100.5,2000,,\n101.25,30.5,,\n,,\n\"\",\n", ""},
      {"sep=;\n100.5;2000\n;\n101.25;30.5\n", first + "semicolon separated, 1 line of head"},
      {"RT: 5\n100.5 2000\n101.25 30.5\n", first + "blank separated, 1 line of head"},
      {"[MS]\nm/z\tAbsolute Intensity\tRelative Intensity\n100.5\t2000\t1\n101.25\t30.5\t1\n",
       "columns \"m/z\" (1) and \"Absolute Intensity\" (2), tab separated, 2 lines of head"},
      {"#\"+ESI Scan (0.1 min)\"\n#Point,X(Thomsons),Y(Counts)\n0,100.5,2000\n1,101.25,30.5\n",
       "columns \"X(Thomsons)\" (2) and \"Y(Counts)\" (3), comma separated"},
      {"\"100.5\",\"2000\"\n\"101.25\",\"30.5\"\n", ""},
      {"% made\n// by\n; hand\n# here\n100.5 2000 # first\n%\n//\n;5\n101.25 30.5\n", ""},
      {"100.5;2000;\n101.25;30.5;\n", first + "semicolon separated"},
      {"100,5;2000\n101,25;30,5\n", first + "semicolon separated, decimal comma"},
      {"100,5\t2000\n101,25\t30,5\n", first + "tab separated, decimal comma"},
      {"100,5 2000\n101,25 30,5\n", first + "blank separated, decimal comma"},
      {"\"100,5\",\"2000\"\n\"101,25\",\"30,5\"\n", first + "comma separated, decimal comma"},
      {"Spectrum 7\nRun of 2024-11-22 15:30\n\n100.5 2000\n101.25 30.5\n",
       first + "blank separated, 2 lines of head"},
      {"Intensity list\n100.5 2000\n101.25 30.5\n", first + "blank separated, 1 line of head"},
      {"# m/z intensity\n100.5 2000\n101.25 30.5\n",
       "columns \"m/z\" (1) and \"intensity\" (2), blank separated"},
      {"m/z\tIntensity\nTh\tCounts\n100.5\t2000\n101.25\t30.5\n",
       "columns \"m/z\" (1) and \"Intensity\" (2), tab separated, 2 lines of head"},
      {"Intensity;m/z\n2000;100,5\n30,5;101,25\n",
       "columns \"m/z\" (2) and \"Intensity\" (1), semicolon separated, decimal comma, 1 line of head"},
      {"X Values,Y Values\n100.5,2000\n101.25,30.5\n",
       "columns \"X Values\" (1) and \"Y Values\" (2), comma separated, 1 line of head"},
      {"m/z (Th) Intensity (counts)\n100.5 2000\n101.25 30.5\n",
       "columns \"m/z (Th)\" (1) and \"Intensity (counts)\" (2), blank separated, 1 line of head"},
      {"Scan,Mass (Da),Abundance\n1,100.5,2000\n1,101.25,30.5\n",
       "columns \"Mass (Da)\" (2) and \"Abundance\" (3), comma separated, 1 line of head"},
      {"#,m/z,I,Intensity\n1,100.5,,2000\n2,101.25,,30.5\n",
       "columns \"m/z\" (2) and \"Intensity\" (4), comma separated"},
      {";mz;int\n0;100,5;2000\n1;101,25;30,5\n",
       "columns \"mz\" (2) and \"int\" (3), semicolon separated, decimal comma"},
      {"m/z;Intensity;Remark\n100,5;2000\n101,25;30,5;good\n",
       "columns \"m/z\" (1) and \"Intensity\" (2), semicolon separated, decimal comma, 1 line of head"},
      {"name\tmz\tcounts\ncaffeine; pure\t100.5\t2000\nsugar, raw\t101.25\t30.5\n",
       "columns \"mz\" (2) and \"counts\" (3), tab separated, 1 line of head"},
      {"1 100.5 2000\n2 101.25 30.5\n", "columns 2 and 3, blank separated", "2,3"},
      {"a,100.5,2000\nb,101.25,30.5\n", "columns 2 and 3, comma separated", "2,3"},
      {"2000 100.5\n30.5 101.25\n", "columns 2 and 1, blank separated", "2,1"},
      {"a;b;c\n100.5;2000;3\n101.25;30.5;3\n",
       "columns \"a\" (1) and \"b\" (2), semicolon separated, 1 line of head", "A,b"},
  };
  for (const Readable& row : table) {
    const ReadText read = Read(row.text, "a.txt", row.columns);
    EXPECT_THAT(read.scan.mz, ElementsAre(100.5, 101.25)) << row.text;
    EXPECT_THAT(read.scan.amplitude, ElementsAre(2000, 30.5)) << row.text;
    EXPECT_EQ(read.notes, row.note.empty() ? std::vector<std::string>() : std::vector{row.note}) << row.text;
    EXPECT_THAT(read.warnings, IsEmpty());
  }
}

TEST(TextDialect, WarnsOfNamesThatDoNotTellWhatTheyAreTakenFor) {
  const std::string confirm = "; --columns 1,2 confirms it";
  const std::pair<const char*, std::string> cases[] = {
      {"DAC,Counts\n100.5,2000\n",
       "column \"DAC\" (1) taken for m/z, which its name does not tell" + confirm},
      {"Mass;Area\n100.5;2000\n",
       "column \"Area\" (2) taken for the amplitude, which its name does not tell" + confirm},
      {"a\tb\n100.5\t2000\n",
       "columns \"a\" (1) and \"b\" (2) taken for m/z and amplitude, which their names do not tell" +
           confirm}};
  for (const auto& [text, warning] : cases) {
    EXPECT_THAT(Read(text).warnings, ElementsAre(warning)) << text;
    EXPECT_THAT(Read(text, "a.txt", "1,2").warnings, IsEmpty()) << text;
  }
}

TEST(TextDialect, TheUserMayTakeATimeForMz) {
  EXPECT_THAT(Read("time,signal\n1.5,7\n", "a.txt", "1,2").scan.mz, ElementsAre(1.5));
  EXPECT_THAT(Read("X(Minutes),Y(Counts)\n1.5,7\n", "a.txt", "X,Y").scan.mz, ElementsAre(1.5));
}

TEST(TextDialect, ACommaAloneSeparates) {
  EXPECT_THAT(Read("100,5\n101,6\n").scan.mz, ElementsAre(100, 101));
  EXPECT_THAT(Read("100, 5\n101, 6\n").scan.amplitude, ElementsAre(5, 6));
}

TEST(TextDialect, IsJudgedByAllRowsOfTheSample) {
  // The first rows alone would be whole numbers, and pairs.
  EXPECT_THAT(Read("99\t5\n100,5\t6\n").scan.mz, ElementsAre(99, 100.5));
  EXPECT_THAT(Read("m/z;I\n99;5\n100,5;6,25\n").scan.amplitude, ElementsAre(5, 6.25));
  // The first commas alone might mark thousands.
  EXPECT_THAT(Read("1,125\t5\n1,25\t6\n").scan.mz, ElementsAre(1.125, 1.25));
  EXPECT_THAT(Read("99\t1,125\n100\t1234,5\n").scan.amplitude, ElementsAre(1.125, 1234.5));
  EXPECT_THAT(Read("100,125\t5\n200,250\t6\n").scan.mz, ElementsAre(100.125, 200.25));
}

TEST(TextDialect, NumbersColumnsInTheFormat) {
  EXPECT_EQ(Read("1 2\n").format, "two-column text");
  EXPECT_EQ(Read("n,mz,int\n1,2,3\n").format, "text with 3 columns");
}

struct Refused {
  std::string text, error, columns = "";
};

TEST(TextDialect, RefusesWhatIsNotCertain) {
  const std::string tell = ": tell which hold m/z and amplitude, as in --columns ";
  const std::string chrom = ": a table over time is no spectrum; 'tslbl chrom' reads it";
  const std::string mark =
      " has a decimal comma or a mark for thousands, and nothing in the file tells which; write decimal "
      "points";
  const std::string thousands =
      " is not a number; thousands have no mark, and the decimal mark is the same in the whole file";
  const std::vector<Refused> table = {
      {"1 2 3\n", "line 1: 3 columns, \"1\" (1), \"2\" (2), \"3\" (3)" + tell + "2,3"},
      {"a;b;c\n1;2;3\n", "line 2: 3 columns, \"a\" (1), \"b\" (2), \"c\" (3)" + tell + "2,3"},
      {"mz,int\n100,5,20,5\n", "line 2: 4 columns, \"100\" (1), \"5\" (2), \"20\" (3), \"5\" (4)" + tell +
                                   "2,3; if the commas are decimal, separate the columns with semicolons"},
      {"\"mz\",\"int\"\n\"1\",100.5,2\n",
       "line 2: 3 columns, \"1\" (1), \"100.5\" (2), \"2\" (3)" + tell + "2,3"},
      {"counts\tchannel\n5\t100\n", "line 2: 2 columns, \"counts\" (1), \"channel\" (2)" + tell + "1,2"},
      {"time,signal\n1,5\n", "line 2: \"time\" (1), \"signal\" (2)" + chrom},
      {"X(Minutes),Y(Counts)\n1,5\n",
       "line 2: 2 columns, \"X(Minutes)\" (1), \"Y(Counts)\" (2)" + tell + "1,2"},
      {"n,X(Minutes),Y(Counts)\n1,1.5,5\n",
       "line 2: 3 columns, \"n\" (1), \"X(Minutes)\" (2), \"Y(Counts)\" (3)" + tell + "2,3"},
      {"#Point,X(Minutes),Y(Counts)\n1,1.5,5\n",
       "line 2: 3 columns, \"#Point\" (1), \"X(Minutes)\" (2), \"Y(Counts)\" (3)" + tell + "2,3"},
      {"Time (min) Intensity\n1 5\n", "line 2: \"Time (min)\" (1), \"Intensity\" (2)" + chrom},
      {"2theta,Intensity\n1,5\n", "line 2: 2 columns, \"2theta\" (1), \"Intensity\" (2)" + tell + "1,2"},
      {"Temperature\tWeight\n1\t5\n",
       "line 2: 2 columns, \"Temperature\" (1), \"Weight\" (2)" + tell + "1,2"},
      {"# RT counts\n1 5\n", "line 2: \"RT\" (1), \"counts\" (2)" + chrom},
      {"Wavelength\tA\n1\t5\n", "line 2: 2 columns, \"Wavelength\" (1), \"A\" (2)" + tell + "1,2"},
      {"100 5 101 6\n102 7 103 8\n", "line 1: 2 pairs of m/z and amplitude in a line; write one a line"},
      {"100 5 101 6\n102 7 103 8\n", "line 1: 2 pairs of m/z and amplitude in a line; write one a line",
       "1,2"},
      {"1 2 3\n", "line 1: there is no column 4: \"1\" (1), \"2\" (2), \"3\" (3)", "1,4"},
      {"a;b\n1;2\n", "line 2: the columns a and c are not found among \"a\" (1), \"b\" (2)", "a,c"},
      {"1,234\t5\n1,235\t6\n", "line 1: \"1,234\"" + mark},
      {"100;5\n101;1,234\n", "line 2: \"1,234\"" + mark},
      {"1,234.5\t5\n1,235.5\t6\n", "line 1: \"1,234.5\"" + thousands},
      {"1,234.5 5\n1,235.5 6\n", "line 1: \"1,234.5\"" + thousands},
      {"100,5;1.234,5\n101,5;1\n", "line 1: \"1.234,5\"" + thousands},
      {"1 234,5;6\n1 235,5;7\n", "line 1: \"1 234,5\"" + thousands},
      {"100.5;5\n100.6;5\n101,7;6\n", "line 3: \"101,7\" is not a number"},
      {"100,5;5\n100,6;5\n101.7;6\n", "line 3: \"101.7\" is not a number"},
      {"100,5;5\n101,5;6;7\n102,5;7\n",
       "line 2: 3 columns, \"101,5;6;7\", where two are expected (m/z, amplitude)"},
      {"100,5;5\n101,5\n102,5;7\n", "line 2: one column, \"101,5\", where two are expected (m/z, amplitude)"},
      {"n mz int\n1 100 x\n2 101 5\n", "line 2: \"x\" is not a number"},
      {"the m/z of intensity 5\nis about 100 to 5 or more\n",
       ": holds no line with m/z and amplitude; line 1 is \"the m/z of intensity 5\""},
      {"n\tmz\tint\n1\t100\t5\n2\t101\n", "line 3: 2 columns, \"2 101\", where 3 are expected"},
      {"n\tmz\tint\n1\t100\t5\n2\t101\t6\t7\n", "line 3: 4 columns, \"2 101 6 7\", where 3 are expected"},
      {"n\tmz\tint\n1\t100\t\n2\t101\t6\n3\t102\t7\n", "line 2: 2 columns, \"1 100\", where 3 are expected"},
      {"scan,mz,int\n7,100,5\n7,101,6\n8,102,5\n",
       "line 4: spectrum \"8\" behind \"7\": a text holds one spectrum"},
      {"mz\tint\n100\tx\n101\t6\n", "line 2: \"x\" is not a number"},
      {"100 x4\n101 6\n", "line 1: \"x4\" is not a number"},
      {"100 nan\n101 6\n", "line 1: \"nan\" is not a finite number"},
      {"1x 2\n101 6\n", "line 1: \"1x\" is not a number"},
      {"100\n101 6\n102 7\n", "line 1: one column, \"100\", where two are expected (m/z, amplitude)"},
      {"5\n6\n", "line 1: one column, \"5\", where two are expected (m/z, amplitude)"},
      {"100 5\n101 6\nTotal 7\n", "line 3: \"Total\" is not a number"},
      {"100,5;5\n-1,5;6\n", "line 2: the m/z \"-1,5\" is negative"},
      {"100;5\n;6\n", "line 2: \"\" is not a number"},
      {"a b\nc\x01\n1 2\n", "line 2: holds bytes that no text has"},
      {"int main(void) {\n}\n", ": holds no line with m/z and amplitude; line 1 is \"int main(void) {\""},
      {"# a\n\na\tb\tc\n",
       ": holds no line with m/z and amplitude; line 3 is \"a b c\"; of a table, --columns tells which hold "
       "them"},
      {"name,b,c\nx,1,2\n",
       ": holds no line with m/z and amplitude; line 1 is \"name,b,c\"; of a table, --columns tells which "
       "hold them"},
      {"name,b,c\nx,y,2\n", ": holds no line with m/z and amplitude; line 1 is \"name,b,c\"", "2,3"},
  };
  for (const Refused& row : table) EXPECT_EQ(ErrorOf(row.text, "a.txt", row.columns), row.error) << row.text;
}

TEST(TextDialect, NumbersBeginInTheFirstHundredThousandLines) {
  std::string words;
  for (int i = 0; i < 99'999; ++i) words += "a b\n";
  EXPECT_THAT(Read(words + "c\n1 2\n").scan.mz, ElementsAre(1));
  EXPECT_EQ(ErrorOf(words + "c\nd\n1 2\n"), "line 100001: no line with m/z and amplitude up to here");
}

TEST(TextDialect, BreaksBehindTheSampleAreFound) {
  std::string text;
  for (int i = 0; i < 2000; ++i) text += std::to_string(i) + "\t5\n";
  EXPECT_EQ(
      ErrorOf(text + "2000,5\t6\n"),
      "line 2001: 3 columns, \"2000,5 6\", where two are expected (m/z, amplitude; decimal point, no decimal "
      "comma)");
}

// One way to write a spectrum.
struct Dialect {
  char separator, decimal;
  bool isQuoted, hasIndex, isBetweenBlanks;
  std::string lineEnd;
  int encoding;  // 0: UTF-8; 1, 2: with mark; 3 to 6: UTF-16
};

std::string NumberText(double value, char decimal) {
  char text[32];
  std::string written(text, std::to_chars(text, text + sizeof text, value).ptr);
  std::ranges::replace(written, '.', decimal);
  return written;
}

std::string Encoded(const std::string& text, int encoding) {
  if (encoding == 0) return text;
  return encoding == 1 ? "\xef\xbb\xbf" + text : Utf16(text, encoding % 2 == 0, encoding < 4);
}

std::string Written(const Dialect& d, const TslTool::Scan& scan) {
  const std::string blank = d.isBetweenBlanks ? " " : "";
  const auto field = [&](const std::string& text) {
    return blank + (d.isQuoted ? "\"" + text + "\"" : text) + blank;
  };
  std::string text = "Export of today" + d.lineEnd + d.lineEnd +
                     (d.hasIndex ? field("No") + d.separator : "") + field("m/z") + d.separator +
                     field("Intensity") + d.lineEnd;
  for (std::size_t i = 0; i < scan.mz.size(); ++i) {
    text += (d.hasIndex ? field(std::to_string(i + 1)) + d.separator : "") +
            field(NumberText(scan.mz[i], d.decimal)) + d.separator +
            field(NumberText(scan.amplitude[i], d.decimal)) + d.lineEnd;
  }
  return Encoded(text, d.encoding);
}

TslTool::Scan RandomScan(std::mt19937& random) {
  std::uniform_real_distribution<double> step(0.001, 1.0), height(-10.0, 1e6);
  TslTool::Scan scan;
  double mz = 50.0;
  for (int i = 0; i < 1500; ++i) {
    scan.mz.push_back(mz += step(random));
    scan.amplitude.push_back(height(random));
  }
  return scan;
}

TEST(TextDialect, EveryOneReadsBackToTheBit) {
  std::mt19937 random(3);
  int read = 0;
  for (const char separator : {'\t', ';', ',', ' '})
    for (const char decimal : {'.', ','})
      for (const bool isQuoted : {false, true})
        for (const bool hasIndex : {false, true})
          for (const std::string lineEnd : {"\n", "\r\n", "\r"}) {
            if (separator == ',' && decimal == ',' && !isQuoted) continue;
            const Dialect dialect{separator,
                                  decimal,
                                  isQuoted,
                                  hasIndex,
                                  random() % 2 == 0 && !isQuoted,
                                  lineEnd,
                                  static_cast<int>(random() % 6)};
            const TslTool::Scan scan = RandomScan(random);
            const ReadText result = Read(Written(dialect, scan));
            ASSERT_EQ(result.scan.mz, scan.mz) << Written(dialect, scan).substr(0, 200);
            ASSERT_EQ(result.scan.amplitude, scan.amplitude);
            ++read;
          }
  EXPECT_EQ(read, 90);
}

}  // namespace
}  // namespace tests
