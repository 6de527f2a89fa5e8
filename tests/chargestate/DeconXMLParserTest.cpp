#include <tslbl/chargestate/DeconXMLParser.h>

#include <gtest/gtest.h>

#include <chargestate/SampleParams.h>
#include <chargestate/Thrown.h>
#include <limits>

using namespace tests;

namespace {

template <class Write>
std::wstring Written(Write write) {
  DeconXMLParser parser;
  write(parser);
  return parser.QText();
}

std::vector<FoundSeries> Series(const std::wstring& children) {
  return DeconXMLParser(L"<CSDecon>" + children + L"</CSDecon>").QSeries();
}
std::vector<PlotPoint> Plot(const std::wstring& children) {
  return DeconXMLParser(L"<CSDecon>" + children + L"</CSDecon>").QPlot();
}

using Write = void (*)(DeconXMLParser& parser);
struct Kind {
  const char* name;
  Write write;
};
constexpr Kind kKinds[] = {
    {"ResPrefs", [](DeconXMLParser& p) { p.WResPrefs(MakeResPrefs({})); }},
    {"UnresPrefs", [](DeconXMLParser& p) { p.WUnresPrefs(MakeUnresPrefs({})); }},
    {"MZPeaks", [](DeconXMLParser& p) { p.WMZPeaks({}); }},
    {"SeriesPeaks", [](DeconXMLParser& p) { p.WSeriesPeaks(1.0, {}); }},
    {"Plot", [](DeconXMLParser& p) { p.WPlot({}); }},
};

}  // namespace

TEST(DeconXMLParser, BeginsWithAnEmptyRoot) { EXPECT_EQ(DeconXMLParser().QText(), L"<CSDecon/>"); }

TEST(DeconXMLParser, WritesResPrefs) {
  EXPECT_EQ(Written([](auto& p) { p.WResPrefs(MakeResPrefs({})); }),
            L"<CSDecon><ResPrefs snCutoff=\"3\" resLow=\"1000\" resHigh=\"5000\" minPatternScore=\"0.6\" "
            L"zMax=\"3\" "
            L"maxGaps=\"0\" tolerance=\"1000\" adductMass=\"1.007276\" csfTolerance=\"1000\" "
            L"csfAllowableGaps=\"1\" scoreFunct=\"0\" mmCalcFunc=\"0\" atomicProbability=\"1e-06\" "
            L"molecularProbability=\"1e-06\" csfMaxFamily=\"10\"><Formula>C117 H184 N32 O35 S1</Formula>"
            L"</ResPrefs></CSDecon>");
}

TEST(DeconXMLParser, WritesUnresPrefs) {
  EXPECT_EQ(Written([](auto& p) { p.WUnresPrefs(MakeUnresPrefs({})); }),
            L"<CSDecon><UnresPrefs minMass=\"1000\" maxMass=\"20000\" chargeCarrierMass=\"1.007398\" "
            L"minSeriesSize=\"5\" maxSeries=\"10\" isotopicGaps=\"1\" massAccuracy=\"1000\"/></CSDecon>");
}

TEST(DeconXMLParser, WritesAFormulaWhateverItHolds) {
  ResPrefs prefs = MakeResPrefs({});
  prefs.formula = L"<C> & \"\u03b1\"";
  const std::wstring text = Written([&](auto& p) { p.WResPrefs(prefs); });
  EXPECT_NE(text.find(L"<Formula>&lt;C&gt; &amp; \"\u03b1\"</Formula>"), std::wstring::npos);
  prefs.formula.clear();
  EXPECT_NE(Written([&](auto& p) { p.WResPrefs(prefs); }).find(L"<Formula"), std::wstring::npos);
}

TEST(DeconXMLParser, WritesMZPeaks) {
  EXPECT_EQ(
      Written([](auto& p) {
        p.WMZPeaks({{7, 500.25, 12.5, 30.75, 4.5, 1500}, {4294967295u}});
      }),
      L"<CSDecon><MZPeaks><Peak id=\"7\" mz=\"500.25\" ampl=\"12.5\" area=\"30.75\" sn=\"4.5\" res=\"1500\""
      L"/>"
      L"<Peak id=\"4294967295\" mz=\"0\" ampl=\"0\" area=\"0\" sn=\"0\" res=\"0\"/></MZPeaks></CSDecon>");
}

TEST(DeconXMLParser, WritesSeriesPeaks) {
  EXPECT_EQ(
      Written([](auto& p) {
        p.WSeriesPeaks(1999.5, {3, 1});
      }),
      L"<CSDecon><SeriesPeaks avgMass=\"1999.5\"><Peak id=\"3\"/><Peak id=\"1\"/></SeriesPeaks></CSDecon>");
}

TEST(DeconXMLParser, WritesAPlot) {
  EXPECT_EQ(Written([](auto& p) {
              p.WPlot({{1.5, 2.5}, {3, 4}});
            }),
            L"<CSDecon><Plot><Point x=\"1.5\" y=\"2.5\"/><Point x=\"3\" y=\"4\"/></Plot></CSDecon>");
}

TEST(DeconXMLParser, WritesAPlotWithItsCharge) {
  EXPECT_EQ(
      Written([](auto& p) {
        p.WPlot({{1.5, 2.5}}, 1.007276, 12);
      }),
      L"<CSDecon><Plot adductMass=\"1.007276\" charge=\"12\"><Point x=\"1.5\" y=\"2.5\"/></Plot></CSDecon>");
}

TEST(DeconXMLParser, NumbersReadBackToTheSameDouble) {
  for (const double value : {0.1, 1.0 / 3.0, 1e-300, 1.7976931348623157e308, 5e-324, -2.5, 9e99}) {
    const DeconXMLParser parser(Written([&](auto& p) { p.WPlot({{value, value}}); }));
    EXPECT_EQ(parser.QPlot(), (std::vector<PlotPoint>{{value, value}}));
  }
}

TEST(DeconXMLParser, HoldsOneElementOfEachKind) {
  for (const Kind& kind : kKinds) {
    DeconXMLParser parser;
    for (const Kind& each : kKinds) each.write(parser);
    const std::wstring before = parser.QText();
    EXPECT_EQ(Thrown([&] { kind.write(parser); }),
              "Only one " + std::string(kind.name) + " node is allowed.");
    EXPECT_EQ(parser.QText(), before);
  }
  DeconXMLParser parser;
  parser.WPlot({});
  EXPECT_EQ(Thrown([&] { parser.WPlot({}, 1.0, 2); }), "Only one Plot node is allowed.");
}

TEST(DeconXMLParser, HoldsOneElementOfEachKindAlsoWhereItWasLoaded) {
  DeconXMLParser parser(L"<CSDecon><MZPeaks/></CSDecon>");
  EXPECT_EQ(Thrown([&] { parser.WMZPeaks({}); }), "Only one MZPeaks node is allowed.");
  parser.WSeriesPeaks(2, {});
  EXPECT_EQ(parser.QText(), L"<CSDecon><MZPeaks/><SeriesPeaks avgMass=\"2\"/></CSDecon>");
}

TEST(DeconXMLParser, ClearedBeginsAnew) {
  DeconXMLParser parser(L"<Other><MZPeaks/></Other>");
  parser.Clear();
  EXPECT_EQ(parser.QText(), L"<CSDecon/>");
  parser.WMZPeaks({});
  EXPECT_EQ(parser.QText(), L"<CSDecon><MZPeaks/></CSDecon>");
}

TEST(DeconXMLParser, TakesATextInThePlaceOfWhatItHolds) {
  DeconXMLParser parser;
  parser.WMZPeaks({});
  parser.WText(L"<?xml version='1.0'?>\n<CSDecon>\n  <Plot><Point y='2' x='1'/></Plot>\n</CSDecon>");
  EXPECT_EQ(parser.QPlot(), (std::vector<PlotPoint>{{1, 2}}));
  EXPECT_TRUE(parser.QSeries().empty());
}

TEST(DeconXMLParser, RefusesATextThatIsNoDocument) {
  for (const wchar_t* text : {L"", L"abc", L"<CSDecon>", L"<a/><b/>", L"<!DOCTYPE a><a/>"}) {
    EXPECT_EQ(Thrown([&] { DeconXMLParser parser(text); }), "Error reading XML content.");
    DeconXMLParser parser;
    EXPECT_EQ(Thrown([&] { parser.WText(text); }), "Error reading XML content.");
  }
}

TEST(DeconXMLParser, HasNoRootToWriteToAfterATextThatIsNone) {
  DeconXMLParser parser;
  EXPECT_EQ(Thrown([&] { parser.WText(L"abc"); }), "Error reading XML content.");
  for (const Kind& kind : kKinds)
    EXPECT_EQ(Thrown([&] { kind.write(parser); }), "Error writing XML content.") << kind.name;
  EXPECT_EQ(parser.QText(), L"");
  parser.Clear();
  EXPECT_EQ(parser.QText(), L"<CSDecon/>");
}

TEST(DeconXMLParser, ReadsSeriesInTheirOrder) {
  const std::vector<FoundSeries> series = Series(
      L"<Series avgMass='1999.5' stdDev='0.25'>"
      L"<ChargeState charge='4' dev='0.5' monoPk='7' monoMass='1998.25'><Peak id='7'/><Peak "
      L"id='8'/></ChargeState>"
      L"<Other/><ChargeState monoMass='1997' monoPk='4294967295' dev='-0.5' charge='-3'/>"
      L"</Series><Plot/><Series avgMass='3000' stdDev='0'/>");
  ASSERT_EQ(series.size(), 2u);
  EXPECT_EQ(series[0].avgMass, 1999.5);
  EXPECT_EQ(series[0].stdDev, 0.25);
  ASSERT_EQ(series[0].chargeStates.size(), 2u);
  const FoundSeries::ChargeState& first = series[0].chargeStates[0];
  EXPECT_EQ(first.charge, 4);
  EXPECT_EQ(first.dev, 0.5);
  EXPECT_EQ(first.monoPk, 7u);
  EXPECT_EQ(first.monoMass, 1998.25);
  EXPECT_EQ(first.peakIds, (std::vector<std::uint32_t>{7, 8}));
  EXPECT_EQ(series[0].chargeStates[1].charge, -3);
  EXPECT_EQ(series[0].chargeStates[1].monoPk, 4294967295u);
  EXPECT_EQ(series[1].avgMass, 3000.0);
  EXPECT_TRUE(series[1].chargeStates.empty());
}

TEST(DeconXMLParser, FindsNoSeriesWhereThereIsNone) {
  EXPECT_TRUE(Series(L"").empty());
  EXPECT_TRUE(Series(L"<Other><Series/></Other>").empty());
}

TEST(DeconXMLParser, RoundsWhereAnEngineCountsInRealNumbers) {
  const auto charge = [](const std::wstring& text) {
    return Series(L"<Series avgMass=' 1e3 ' stdDev='.5'><ChargeState charge='" + text +
                  L"' dev='0' monoPk='0' monoMass='0'/></Series>")
        .at(0)
        .chargeStates.at(0)
        .charge;
  };
  EXPECT_EQ(charge(L"4.0"), 4);
  EXPECT_EQ(charge(L"3.9999"), 4);
  EXPECT_EQ(charge(L" 1e1\t"), 10);
  EXPECT_EQ(charge(L"-2147483648"), std::numeric_limits<std::int32_t>::min());
}

TEST(DeconXMLParser, RefusesAValueThatIsMissingOrNoNumberOfItsKind) {
  const wchar_t* const series[] = {
      L"<Series stdDev='0'/>",
      L"<Series avgMass='1'/>",
      L"<Series avgMass='abc' stdDev='0'/>",
      L"<Series avgMass='1,5' stdDev='0'/>",
      L"<Series avgMass='' stdDev='0'/>",
      L"<Series avgMass='nan' stdDev='0'/>",
      L"<Series avgMass='1e999' stdDev='0'/>",
      L"<Series avgMass='1' stdDev='0'><ChargeState dev='0' monoPk='0' monoMass='0'/></Series>",
      L"<Series avgMass='1' stdDev='0'><ChargeState charge='2147483648' dev='0' monoPk='0' "
      L"monoMass='0'/></Series>",
      L"<Series avgMass='1' stdDev='0'><ChargeState charge='1' dev='0' monoPk='-1' monoMass='0'/></Series>",
      L"<Series avgMass='1' stdDev='0'><ChargeState charge='1' dev='0' monoPk='0' monoMass='0'><Peak/>"
      L"</ChargeState></Series>",
      L"<Series avgMass='1' stdDev='0'><ChargeState charge='1' dev='0' monoPk='0' monoMass='0'>"
      L"<Peak id='4294967296'/></ChargeState></Series>",
  };
  for (const wchar_t* text : series) EXPECT_EQ(Thrown([&] { Series(text); }), "Error reading XML content");
  for (const wchar_t* text : {L"<Plot><Point x='1'/></Plot>", L"<Plot><Point x='1' y='b'/></Plot>"})
    EXPECT_EQ(Thrown([&] { Plot(text); }), "Error reading XML content");
}

TEST(DeconXMLParser, ReadsThePointsOfAPlot) {
  EXPECT_EQ(Plot(L"<Plot charge='2'><Point x='1' y='2'/><Other/><Point x='3' y='4'/></Plot>"),
            (std::vector<PlotPoint>{{1, 2}, {3, 4}}));
  EXPECT_TRUE(Plot(L"<Plot/>").empty());
}

TEST(DeconXMLParser, NeedsAPlotToRead) {
  EXPECT_EQ(Thrown([] { Plot(L"<Series/>"); }), "No Plot node found.");
  EXPECT_EQ(Thrown([] { DeconXMLParser().QPlot(); }), "No Plot node found.");
}
