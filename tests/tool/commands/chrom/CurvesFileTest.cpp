#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <fmt/format.h>

#include <string>

#include <tool/TempFile.h>
#include <tool/commands/chrom/CurvesFile.h>
#include <tool/frame/InputError.h>

namespace tests {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::StartsWith;

const std::string kRange = R"(<MZRange Type="Partial" Start="500.25" End="501"/>)";

std::string Curve(const std::string& id, const std::string& definition) {
  return "<Curve Id=\"" + id + "\"><CurveDef>" + definition + "</CurveDef></Curve>";
}

std::string Document(const std::string& ranges, const std::string& curves) {
  return "<Results><MZRanges>" + ranges + "</MZRanges><CurveDefs>" + curves + "</CurveDefs></Results>";
}

TslTool::CurveDefinitions Loaded(const std::string& text) {
  return TslTool::LoadCurvesFile(TempFile("a.xml", text).Path());
}

// The message without the file's name.
std::string ErrorOf(const std::string& text) {
  const TempFile file("a.xml", text);
  try {
    TslTool::LoadCurvesFile(file.Path());
  } catch (const TslTool::InputError& error) {
    EXPECT_EQ(error.File(), file.Path());
    return error.Place() + ": " + error.Reason();
  }
  return "";
}

TEST(CurvesFile, HasRangesInTheirOrderAndCurvesInThatOfTheirIds) {
  const auto read = Loaded(Document(kRange + R"(<MZRange Type="Full"/>)",
                                    Curve("4294967295", "1-B") + Curve("7", "A") + Curve("0", "b")));
  EXPECT_THAT(read.ranges, ElementsAre("500.25-501", "5-3000"));
  EXPECT_THAT(read.definitions, ElementsAre("b", "A", "1-B"));
}

TEST(CurvesFile, TellsWhetherTheCurvesAreMeans) {
  const std::string text = Document(kRange, Curve("1", "A"));
  EXPECT_FALSE(Loaded(text).areMeans);
  for (const bool areMeans : {false, true}) {
    std::string with = text;
    with.insert(with.find("</Results>"),
                fmt::format("<Chromatograms Values=\"{}\"/>", areMeans ? "mean" : "sum"));
    EXPECT_EQ(Loaded(with).areMeans, areMeans);
  }
}

TEST(CurvesFile, TakesSectionsRightBelowTheRootAlone) {
  const std::string other = "<Spectra><MZRanges><Odd/></MZRanges><CurveDefs/><Curve Id=\"1\"/></Spectra>";
  std::string text = Document(kRange, Curve("1", "A"));
  text.insert(text.find("<MZRanges>"), other);
  EXPECT_THAT(Loaded(text).definitions, ElementsAre("A"));
}

TEST(CurvesFile, TakesSectionsInAnyOrderWithCommentsBetween) {
  EXPECT_THAT(Loaded("<?xml version=\"1.0\"?>\n<Results><!-- a --><CurveDefs>" + Curve("1", "A") +
                     "</CurveDefs><!-- <MZRanges/> --><MZRanges>\n" + kRange + "\n</MZRanges></Results>\n")
                  .definitions,
              ElementsAre("A"));
}

TEST(CurvesFile, KeepsAllDigitsOfARange) {
  EXPECT_THAT(
      Loaded(Document(R"(<MZRange Type="Partial" Start="1508.1234567" End="1e4"/>)", Curve("1", "A"))).ranges,
      ElementsAre("1508.1234567-10000"));
}

TEST(CurvesFile, RefusesWhatIsNoDocumentOfResults) {
  EXPECT_THAT(ErrorOf(""), HasSubstr("no XML element"));
  EXPECT_THAT(ErrorOf("500 1\n501 2\n"), HasSubstr("line 1"));
  EXPECT_THAT(ErrorOf("<Results><MZRanges></Results>"), HasSubstr("line 1"));
  EXPECT_THAT(ErrorOf(Document(kRange, Curve("1", "A")) + "<Results/>"), HasSubstr("line 1"));
  EXPECT_THAT(ErrorOf("<mzML/>"),
              HasSubstr("is no document of results: it begins with \"mzML\", not with \"Results\""));
}

TEST(CurvesFile, RefusesADocumentWithoutItsSections) {
  EXPECT_EQ(ErrorOf("<Results/>"), ": the document has no element \"MZRanges\"");
  EXPECT_EQ(ErrorOf("<Results><MZRanges/></Results>"), ": the document has no element \"CurveDefs\"");
  EXPECT_EQ(ErrorOf(Document(kRange, "")), "CurveDefs: it has no \"Curve\"");
  EXPECT_EQ(ErrorOf("<Results><MZRanges/>\n<MZRanges/></Results>"),
            "line 2: one element too many: \"MZRanges\"");
}

TEST(CurvesFile, RefusesWhatWouldNotBeTakenAsItStands) {
  const std::string curve = Curve("1", "A");
  const struct {
    std::string ranges, curves, error;
  } kRows[] = {
      {R"(<MZRange Type="Partial" Start="x" End="501"/>)", curve,
       "MZRanges/MZRange@Start: \"x\" is not a value for it"},
      {R"(<MZRange Type="Part" Start="1" End="2"/>)", curve,
       "MZRanges/MZRange@Type: \"Part\" is not a value for it"},
      {R"(<MZRange Type="Partial" Start="1"/>)", curve, "MZRanges/MZRange[1]: it has no \"End\""},
      {R"(<MZRange Type="Partial" End="1"/>)", curve, "MZRanges/MZRange[1]: it has no \"Start\""},
      {R"(<MZRange Type="Partial" Start="2" End="1"/>)", curve,
       "MZRanges/MZRange[1]: \"2-1\" ends before it begins"},
      {kRange + "<Odd/>", curve, "MZRanges: unknown element \"Odd\""},
      {kRange, Curve("x", "A"), "CurveDefs/Curve@Id: \"x\" is not a value for it"},
      {kRange, Curve("-1", "A"), "CurveDefs/Curve@Id: \"-1\" is not a value for it"},
      {kRange, Curve("4294967296", "A"), "CurveDefs/Curve@Id: \"4294967296\" is not a value for it"},
      {kRange, Curve("100000.5", "A"), "CurveDefs/Curve@Id: \"100000.5\" is not a value for it"},
      {kRange, curve + Curve("1", "A"), "Curve with Id 1: there are two of this Id"},
      {kRange, R"(<Curve Id="1"><Def>A</Def></Curve>)", "CurveDefs/Curve: unknown element \"Def\""},
      {kRange, R"(<Curve Id="3"/>)", "Curve with Id 3: it has no definition in an element \"CurveDef\""},
      {kRange, Curve("1", "A") + Curve("2", "A"), "Curve with Id 2: \"A\" is given twice"},
      {kRange, Curve("9", "B"),
       "Curve with Id 9: \"B\": Curve definition 1 contains an invalid range letter."},
      {kRange, Curve("9", "k"), "Curve with Id 9: \"k\": Curve definition 1 contains an invalid character."},
      {kRange, Curve("9", "A+1"),
       "Curve with Id 9: \"A+1\": Curve definition 1 contains an invalid curve number."},
      {"", Curve("9", "A"),
       "Curve with Id 9: a definition is made of ranges, as in --range A=500-501 --curve A"},
  };
  for (const auto& row : kRows) EXPECT_EQ(ErrorOf(Document(row.ranges, row.curves)), row.error);
}

TEST(CurvesFile, RefusesMoreRangesThanThereAreLetters) {
  std::string ranges;
  for (int i = 0; i < 11; ++i) ranges += kRange;
  EXPECT_EQ(ErrorOf(Document(ranges, Curve("1", "A"))), "MZRanges: it has 11 elements; 10 are the most");
}

TEST(CurvesFile, OfAMissingFileIsRefused) {
  EXPECT_THROW(TslTool::LoadCurvesFile("/no/such/file.xml"), TslTool::InputError);
  EXPECT_THROW(TslTool::LoadCurvesFile("/tmp"), TslTool::InputError);
}

}  // namespace
}  // namespace tests
