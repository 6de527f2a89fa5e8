#include <tslbl/results/ResultCurve.h>

#include <gtest/gtest.h>

#include <tslbl/chromatogram/ExtractedCurves.h>
#include <tslbl/closed/common/Text.h>
#include <tslbl/closed/common/XMLBuilder.h>
#include <tslbl/closed/common/XMLParser.h>
#include <random>

using namespace TslBL;

namespace {

using Definitions = std::map<std::uint32_t, std::wstring>;
using BasePeaks = std::map<std::uint32_t, std::pair<wchar_t, MZPeakField>>;

constexpr std::uint32_t kMost = 4294967295;

std::wstring Added(std::uint32_t id, const std::vector<double>& x, const std::vector<double>& y) {
  XMLBuilder builder;
  AddCurve(builder, id, x, y);
  return builder.QXML();
}

// Reads so many elements of a list.
template <class Map>
Map Loaded(const std::wstring& xml, void (*load)(XMLParser&, Map&), Map map = {}, int count = 1) {
  XMLParser parser;
  EXPECT_TRUE(parser.LoadText(L"<Curves>" + xml + L"</Curves>"));
  EXPECT_TRUE(parser.StartNode(L"Curves"));
  for (; count > 0; --count) load(parser, map);
  return map;
}

Definitions LoadedDefs(const std::wstring& xml, Definitions map = {}, int count = 1) {
  return Loaded(xml, LoadCurveDefs, std::move(map), count);
}

BasePeaks LoadedBasePeaks(const std::wstring& xml, BasePeaks map = {}) {
  return Loaded(xml, LoadBICCurve, std::move(map));
}

std::wstring Defined(std::uint32_t id, const std::wstring& definition) {
  XMLBuilder builder;
  builder.StartNode(L"Curve");
  builder.WAttribute(L"Id", ToText(id));
  builder.WNode(L"CurveDef", definition);
  builder.EndNode();
  return builder.QXML();
}

std::wstring BasePeak(std::uint32_t id, const std::wstring& letter, const MZPeakField& field) {
  XMLBuilder builder;
  builder.StartNode(L"Curve");
  builder.WAttribute(L"Id", ToText(id));
  builder.WNode(L"MZRangeDef", letter);
  field.Serialize(builder);
  builder.EndNode();
  return builder.QXML();
}

}  // namespace

TEST(AddCurve, WritesIdAndPointsInFull) {
  EXPECT_EQ(Added(kMost, {0.5, 1.0 / 3.0}, {1e-300, 123456789.0}),
            L"<Curve Id=\"4294967295\">\n"
            L"  <Profile Count=\"2\">\n"
            L"    <X>0.5 0.3333333333333333</X>\n"
            L"    <Y>1e-300 123456789</Y>\n"
            L"  </Profile>\n"
            L"</Curve>\n");
}

TEST(AddCurve, WithoutPointsHasAnEmptyProfile) {
  EXPECT_EQ(Added(0, {}, {}),
            L"<Curve Id=\"0\">\n"
            L"  <Profile Count=\"0\">\n"
            L"    <X></X>\n"
            L"    <Y></Y>\n"
            L"  </Profile>\n"
            L"</Curve>\n");
}

TEST(AddCurve, LeavesTheBuilderWhereItWas) {
  XMLBuilder builder;
  builder.StartNode(L"Curves");
  AddCurve(builder, 1, {1}, {2});
  builder.WAttribute(L"Count", L"1");
  EXPECT_EQ(builder.QXML().rfind(L"<Curves Count=\"1\">\n  <Curve Id=\"1\">", 0), 0u);
}

TEST(LoadCurveDefs, TakesIdAndDefinition) {
  EXPECT_EQ(LoadedDefs(L"<Curve Id=\"7\"><CurveDef>A+B-C</CurveDef></Curve>"), (Definitions{{7, L"A+B-C"}}));
}

TEST(LoadCurveDefs, TakesTheTextAsItStands) {
  for (const wchar_t* text : {L" A ", L"k", L"A<B&C", L"\u00e4"})
    EXPECT_EQ(LoadedDefs(Defined(kMost, text)), (Definitions{{kMost, text}}));
}

TEST(LoadCurveDefs, ChangesNothingWhereNoneFollows) {
  const Definitions before = {{3, L"A"}};
  for (const wchar_t* xml : {L"", L"<curve Id=\"1\" />", L"<Curves><Curve Id=\"1\" /></Curves>"})
    EXPECT_EQ(LoadedDefs(xml, before), before) << xml;
}

TEST(LoadCurveDefs, WithoutADefinitionIsEmptyAndGivesZero) {
  const Definitions read = LoadedDefs(L"<Curve Id=\"5\" />");
  EXPECT_EQ(read, (Definitions{{5, L""}}));
  std::vector<double> points;
  std::wstring error;
  EXPECT_TRUE(CalcEICPoints({7.0}, {read.at(5)}, points, error));
  EXPECT_EQ(points, std::vector<double>{0.0});
}

TEST(LoadCurveDefs, OfAWrittenCurveIsEmpty) {
  EXPECT_EQ(LoadedDefs(Added(9, {1, 2}, {3, 4})), (Definitions{{9, L""}}));
}

TEST(LoadCurveDefs, HasTheId0WithoutANumber) {
  for (const wchar_t* id : {L"", L" Id=\"\"", L" Id=\"x\"", L" id=\"4\""})
    EXPECT_EQ(LoadedDefs(std::wstring(L"<Curve") + id + L"><CurveDef>A</CurveDef></Curve>"),
              (Definitions{{0, L"A"}}))
        << id;
}

TEST(LoadCurveDefs, ReplacesADefinitionOfItsId) {
  EXPECT_EQ(LoadedDefs(Defined(3, L"B"), {{3, L"A"}, {4, L"C"}}), (Definitions{{3, L"B"}, {4, L"C"}}));
}

TEST(LoadCurveDefs, ReadsTheItemsOfAListAndStopsAtItsEnd) {
  EXPECT_EQ(LoadedDefs(Defined(2, L"A") + Defined(1, L"B-1"), {}, 4), (Definitions{{1, L"B-1"}, {2, L"A"}}));
}

TEST(LoadCurveDefs, LeavesTheParserWhereItWas) {
  XMLParser parser;
  ASSERT_TRUE(parser.LoadText(L"<Curves Here=\"yes\"><Curve Id=\"1\" Here=\"no\"/></Curves>"));
  ASSERT_TRUE(parser.StartNode(L"Curves"));
  Definitions definitions;
  for (int i = 0; i < 2; ++i) {
    LoadCurveDefs(parser, definitions);
    std::wstring here;
    EXPECT_TRUE(parser.QAttribute(L"Here", here));
    EXPECT_EQ(here, L"yes");
  }
}

TEST(LoadCurveDefs, ReadsAnyDefinitionsAsTheyWereWritten) {
  constexpr std::uint32_t kSeed = 1;
  std::mt19937 random(kSeed);
  for (int round = 0; round < 200; ++round) {
    Definitions definitions;
    std::wstring xml;
    for (std::size_t count = random() % 6; definitions.size() < count;) {
      std::wstring text;
      for (std::size_t length = random() % 12; text.size() < length;)
        text += static_cast<wchar_t>(random() % 0x7f + 1);
      definitions[static_cast<std::uint32_t>(random())] = text;
    }
    for (const auto& [id, text] : definitions) xml += Defined(id, text);
    EXPECT_EQ(LoadedDefs(xml, {}, static_cast<int>(definitions.size())), definitions)
        << "seed " << kSeed << ", round " << round;
  }
}

TEST(LoadBICCurve, TakesIdLetterAndField) {
  EXPECT_EQ(LoadedBasePeaks(L"<Curve Id=\"7\"><MZRangeDef>C</MZRangeDef><MZPkFld Type=\"Mass\"/></Curve>"),
            (BasePeaks{{7, {L'C', MZPeakField::Mass}}}));
}

TEST(LoadBICCurve, ReadsEachFieldAsItWasWritten) {
  for (const auto field : {MZPeakField::Ampl, MZPeakField::Mass, MZPeakField::Res, MZPeakField::Width})
    EXPECT_EQ(LoadedBasePeaks(BasePeak(kMost, L"J", field)), (BasePeaks{{kMost, {L'J', field}}}));
}

TEST(LoadBICCurve, TakesTheFirstLetterBehindWhiteSpace) {
  for (const auto& [text, letter] : {std::pair<std::wstring, wchar_t>{L" b", L'b'},
                                     {L"\t\r\n\v\f b", L'b'},
                                     {L"AB", L'A'},
                                     {L"\u00a0A", L'\u00a0'},
                                     {L"7", L'7'}})
    EXPECT_EQ(LoadedBasePeaks(BasePeak(1, text, {})).at(1).first, letter) << ToUtf8(text);
}

TEST(LoadBICCurve, HasNoLetterAndTheAmplitudeWithoutChildren) {
  const BasePeaks none = {{1, {L'\0', MZPeakField::Ampl}}};
  EXPECT_EQ(LoadedBasePeaks(L"<Curve Id=\"1\" />"), none);
  EXPECT_EQ(LoadedBasePeaks(L"<Curve Id=\"1\"><MZRangeDef> </MZRangeDef></Curve>"), none);
  EXPECT_EQ(LoadedBasePeaks(Added(1, {1}, {2})), none);
}

TEST(LoadBICCurve, HasTheId0WithoutANumber) {
  EXPECT_TRUE(LoadedBasePeaks(L"<Curve Id=\"x\" />").contains(0));
  EXPECT_TRUE(LoadedBasePeaks(L"<Curve />").contains(0));
}

TEST(LoadBICCurve, ChangesNothingWhereNoneFollows) {
  const BasePeaks before = {{3, {L'A', MZPeakField::Res}}};
  EXPECT_EQ(LoadedBasePeaks(L"<MZPkFld Type=\"Mass\" />", before), before);
}

TEST(LoadBICCurve, ReplacesACurveOfItsId) {
  EXPECT_EQ(LoadedBasePeaks(BasePeak(3, L"B", MZPeakField::Mass), {{3, {L'A', MZPeakField::Res}}}),
            (BasePeaks{{3, {L'B', MZPeakField::Mass}}}));
}

TEST(LoadBICCurve, LeavesTheParserWhereItWas) {
  XMLParser parser;
  ASSERT_TRUE(
      parser.LoadText(L"<Curves Here=\"yes\"><Curve Id=\"1\"><MZPkFld Type=\"Mass\"/></Curve></Curves>"));
  ASSERT_TRUE(parser.StartNode(L"Curves"));
  BasePeaks curves;
  for (int i = 0; i < 2; ++i) {
    LoadBICCurve(parser, curves);
    std::wstring here;
    EXPECT_TRUE(parser.QAttribute(L"Here", here));
  }
}
