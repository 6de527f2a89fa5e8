#include <tslbl/chargestate/DeconRun.h>

#include <gtest/gtest.h>

#include <chargestate/DebugFolder.h>
#include <chargestate/DeconSample.h>
#include <chargestate/FakeEngines.h>
#include <chargestate/SampleParams.h>
#include <chargestate/Thrown.h>
#include <tslbl/chargestate/DeconXMLParser.h>

using namespace tests;

namespace {

const std::string kNoEngine = "Unable to load Charge State Deconvolution COM controls.";
const std::string kNoResults = "No Charge State Deconvolution results found with current settings.";

class Run : public testing::Test {
 protected:
  void SetUpBoth() { SetUpEngines(run, true, true); }
  void SetUpPlot() {
    SetUpEngines(run, false, false);
    engines.log.clear();
  }
  // The points of the documents that AddPeakPlot was given, as "x=y x=y | x=y".
  std::string PeakPlots() const {
    std::ostringstream text;
    const auto sent = engines.sent.find("Plot.AddPeakPlot");
    if (sent == engines.sent.end()) return "none";
    for (const std::wstring& document : sent->second) {
      text << (&document == sent->second.data() ? "" : " | ");
      for (const PlotPoint& point : DeconXMLParser(document).QPlot())
        text << point.x << '=' << point.y << ' ';
    }
    return text.str();
  }

  FakeEngines engines;
  DeconSpectrum spectrum = SpectrumToDecon();
  DeconRun run{spectrum};
};

struct NoEngineAtAll : TslCommon::IComponent {};

}  // namespace

TEST_F(Run, MakesTheEnginesThatAreWantedAndThatForThePlot) {
  const struct {
    bool resolved;
    bool unresolved;
    const char* log;
  } rows[] = {
      {false, false, "+Plot -Plot"},
      {true, false, "+Resolved Resolved.SetPrefs +Plot -Plot -Resolved"},
      {false, true, "+Unresolved Unresolved.SetPrefs +Plot -Plot -Unresolved"},
      {true, true,
       "+Resolved Resolved.SetPrefs +Unresolved Unresolved.SetPrefs +Plot -Plot -Unresolved -Resolved"},
  };
  for (const auto& row : rows) {
    engines.log.clear();
    {
      DeconRun each{spectrum};
      SetUpEngines(each, row.resolved, row.unresolved);
      EXPECT_EQ(HasEngine(each, kResolved), row.resolved);
      EXPECT_EQ(HasEngine(each, kUnresolved), row.unresolved);
      EXPECT_FALSE(HasEngine(each, CSSeries::None));
    }
    EXPECT_EQ(engines.Log(), row.log);
  }
}

TEST_F(Run, SetsTheParametersOfTheSpectrum) {
  spectrum.CSParams = SampleChargeStateParams();
  SetUpBoth();
  DeconXMLParser resolved;
  resolved.WResPrefs(MakeResPrefs(SampleChargeStateParams()));
  EXPECT_EQ(engines.Sent("Resolved.SetPrefs"), resolved.QText());
  DeconXMLParser unresolved;
  unresolved.WUnresPrefs(MakeUnresPrefs(SampleChargeStateParams()));
  EXPECT_EQ(engines.Sent("Unresolved.SetPrefs"), unresolved.QText());
}

TEST_F(Run, SaysThatThereIsNoEngine) {
  for (const char* id :
       {SeriesEngine::kResolvedClassId, SeriesEngine::kUnresolvedClassId, MassPlotEngine::kClassId}) {
    const FakeEngines present;
    DeconRun other{spectrum};
    FakeEngines::Registry().Register(id, nullptr);
    EXPECT_EQ(Thrown([&] { SetUpEngines(other, true, true); }), kNoEngine) << id;
  }
}

TEST_F(Run, SaysThatAnEngineIsNoneWhateverItIs) {
  for (const ComponentRegistry::Factory& factory :
       {ComponentRegistry::Factory([] { return nullptr; }),
        ComponentRegistry::Factory([] { return std::make_unique<NoEngineAtAll>(); }),
        ComponentRegistry::Factory([]() -> std::unique_ptr<IComponent> { throw ComError{0x80070005}; }),
        ComponentRegistry::Factory(
            []() -> std::unique_ptr<IComponent> { throw std::runtime_error("no licence"); })}) {
    FakeEngines::Registry().Register(MassPlotEngine::kClassId, factory);
    EXPECT_EQ(Thrown([&] { SetUpBoth(); }), kNoEngine);
  }
}

TEST_F(Run, HasTheTextOfTheEngineThatRefusesItsParameters) {
  engines.Fail("Resolved.SetPrefs");
  EXPECT_EQ(Thrown([&] { SetUpEngines(run, true, false); }), "resolved engine failed");
  engines.Fail("Unresolved.SetPrefs");
  EXPECT_EQ(Thrown([&] { SetUpEngines(run, false, true); }), "unresolved engine failed");
}

TEST_F(Run, AsksTheEngineOfTheType) {
  engines.answers["Resolved.AutoSeries"] = L"auto";
  engines.answers["Unresolved.FindSeries"] = L"find";
  engines.answers["Resolved.RecalcSeries"] = L"recalc";
  SetUpBoth();
  engines.log.clear();
  EXPECT_EQ(AskForSeries(run, kResolved, SeriesCall::Auto, L"<a/>"), L"auto");
  EXPECT_EQ(AskForSeries(run, kUnresolved, SeriesCall::Find, L"<b/>"), L"find");
  EXPECT_EQ(AskForSeries(run, kResolved, SeriesCall::Recalc, L"<c/>"), L"recalc");
  EXPECT_EQ(engines.Log(), "Resolved.AutoSeries Unresolved.FindSeries Resolved.RecalcSeries");
  EXPECT_EQ(engines.Sent("Resolved.AutoSeries"), L"<a/>");
  EXPECT_EQ(engines.Sent("Unresolved.FindSeries"), L"<b/>");
  EXPECT_EQ(engines.Sent("Resolved.RecalcSeries"), L"<c/>");
}

TEST_F(Run, HasTheTextOfTheEngineThatFails) {
  engines.answers["Unresolved.GetLastError"] = L"keine Peaks \u00fcber 3";
  SetUpBoth();
  for (const auto& [call, name] : {std::pair(SeriesCall::Auto, "Unresolved.AutoSeries"),
                                   std::pair(SeriesCall::Find, "Unresolved.FindSeries"),
                                   std::pair(SeriesCall::Recalc, "Unresolved.RecalcSeries")}) {
    engines.Fail(name);
    const SeriesCall asked = call;
    EXPECT_EQ(Thrown([&] { AskForSeries(run, kUnresolved, asked, L"<a/>"); }), "keine Peaks \u00fcber 3");
  }
}

TEST_F(Run, LetsAnEnginesOwnExceptionPass) {
  engines.doing["Resolved.AutoSeries"] = [] { throw std::runtime_error("of its own"); };
  SetUpBoth();
  EXPECT_EQ(Thrown([&] { AskForSeries(run, kResolved, SeriesCall::Auto, L"<a/>"); }), "of its own");
}

TEST_F(Run, DrawsThePeaksOfEachSeries) {
  spectrum.CSAddSeries(kResolved, 1000, 0.5, PeaksAt("5m 6"));
  spectrum.CSAddSeries(kUnresolved, 2000, 0.5, PeaksAt("7 8", 2));
  SetUpPlot();
  DrawMassCurve(run);
  EXPECT_EQ(engines.Log(),
            "Plot.AddPeakPlot Plot.AddPeakPlot Plot.GetSeriesPlot Plot.AddSeriesPlot "
            "Plot.AddPeakPlot Plot.AddPeakPlot Plot.GetSeriesPlot Plot.AddSeriesPlot Plot.GetResultPlot");
  EXPECT_EQ(spectrum.MassX, (std::vector<double>{1000.0, 1000.5}));
  EXPECT_EQ(spectrum.MassY, (std::vector<double>{5.0, 7.0}));
}

TEST_F(Run, DrawsThePointsThatAPeakCovers) {
  spectrum.peaks[1].startIdx = 14;
  spectrum.peaks[1].endIdx = 16;
  spectrum.CSAddSeries(kResolved, 1000, 0.5, PeaksAt("5m", 1));
  SetUpPlot();
  DrawMassCurve(run);
  EXPECT_EQ(engines.Sent("Plot.AddPeakPlot"),
            L"<CSDecon><Plot adductMass=\"1.007276\" charge=\"5\"><Point x=\"114\" y=\"3\"/>"
            L"<Point x=\"115\" y=\"52\"/><Point x=\"116\" y=\"3\"/></Plot></CSDecon>");
}

TEST_F(Run, DrawsAnUnresolvedSeriesWithTheAverageMassOfTheIon) {
  spectrum.CSParams.AdductIon = AdductIonInfo::Potassium;
  spectrum.CSAddSeries(kUnresolved, 1000, 0.5, PeaksAt("5 6"));
  spectrum.CSAddSeries(kResolved, 1000, 0.5, PeaksAt("7m"));
  SetUpPlot();
  DrawMassCurve(run);
  const auto& sent = engines.sent["Plot.AddPeakPlot"];
  ASSERT_EQ(sent.size(), 3u);
  EXPECT_NE(sent[0].find(L"adductMass=\"39.09776\" charge=\"5\""), std::wstring::npos);
  EXPECT_NE(sent[1].find(L"adductMass=\"39.09776\" charge=\"6\""), std::wstring::npos);
  EXPECT_NE(sent[2].find(L"adductMass=\"38.963158\" charge=\"7\""), std::wstring::npos);
}

TEST_F(Run, DrawsNoPointsOfAPeakBeyondThePeakTable) {
  spectrum = WithOverlapPeaks();
  spectrum.CSAddSeries(kUnresolved, 1000, 0.5, PeaksAt("5 6 7", 3));
  SetUpPlot();
  DrawMassCurve(run);
  EXPECT_EQ(PeakPlots(), "130=3 131=3 132=3 133=3 134=3 135=54 136=3 137=3 138=3 139=3  |  | ");
}

TEST_F(Run, DrawsNoPointsBeyondTheSpectrum) {
  spectrum.peaks[3].startIdx = 49;
  spectrum.peaks[3].endIdx = 4294967295u;
  spectrum.peaks[2].startIdx = 25;
  spectrum.peaks[2].endIdx = 24;
  spectrum.CSAddSeries(kUnresolved, 1000, 0.5, PeaksAt("5 6", 2));
  SetUpPlot();
  DrawMassCurve(run);
  EXPECT_EQ(PeakPlots(), " | 149=3 ");
}

TEST_F(Run, HandsThePlotOfASeriesOnAsItCame) {
  spectrum.CSAddSeries(kResolved, 1000, 0.5, PeaksAt("5m"));
  engines.answers["Plot.GetSeriesPlot"] = L"whatever it is";
  SetUpPlot();
  DrawMassCurve(run);
  EXPECT_EQ(engines.Sent("Plot.AddSeriesPlot"), L"whatever it is");
}

TEST_F(Run, WithoutPeaksInAnySeriesDrawsNothing) {
  spectrum.MassX = spectrum.MassY = {1.0};
  spectrum.Series.resize(2);
  SetUpPlot();
  EXPECT_EQ(Thrown([&] { DrawMassCurve(run); }), kNoResults);
  EXPECT_EQ(engines.Log(), "");
  EXPECT_TRUE(spectrum.MassX.empty() && spectrum.MassY.empty());
}

TEST_F(Run, LeavesOutASeriesWithoutPeaks) {
  spectrum.Series.resize(1);
  spectrum.CSAddSeries(kResolved, 1000, 0.5, PeaksAt("5m"));
  SetUpPlot();
  DrawMassCurve(run);
  EXPECT_EQ(engines.Log(), "Plot.AddPeakPlot Plot.GetSeriesPlot Plot.AddSeriesPlot Plot.GetResultPlot");
}

TEST_F(Run, HasTheTextOfThePlotEngineThatFails) {
  spectrum.CSAddSeries(kResolved, 1000, 0.5, PeaksAt("5m"));
  spectrum.MassX = spectrum.MassY = {1.0};
  SetUpPlot();
  for (const char* call :
       {"Plot.GetResultPlot", "Plot.AddSeriesPlot", "Plot.GetSeriesPlot", "Plot.AddPeakPlot"}) {
    engines.Fail(call);
    EXPECT_EQ(Thrown([&] { DrawMassCurve(run); }), "plot engine failed") << call;
  }
  EXPECT_EQ(spectrum.MassX, std::vector<double>{1.0});
}

TEST_F(Run, RefusesAResultWithoutAPlot) {
  spectrum.CSAddSeries(kResolved, 1000, 0.5, PeaksAt("5m"));
  SetUpPlot();
  engines.answers["Plot.GetResultPlot"] = L"<CSDecon/>";
  EXPECT_EQ(Thrown([&] { DrawMassCurve(run); }), "No Plot node found.");
  engines.answers["Plot.GetResultPlot"] = L"";
  EXPECT_EQ(Thrown([&] { DrawMassCurve(run); }), "Error reading XML content.");
}

TEST_F(Run, SavesWhatGoesOutAndComesInWhileDebugFilesAreOn) {
  const DebugFolder folder;
  for (const char* call : {"AutoSeries", "FindSeries", "RecalcSeries"})
    for (const char* engine : {"Resolved.", "Unresolved."})
      engines.answers[std::string(engine) + call] = L"<Out" + std::wstring(call, call + 4) + L"/>";
  SetUpBoth();
  for (const auto type : {kResolved, kUnresolved})
    for (const auto call : {SeriesCall::Auto, SeriesCall::Find, SeriesCall::Recalc})
      AskForSeries(run, type, call, L"<In/>");
  std::set<std::string> names;
  for (const std::string engine : {"Res", "Unres"})
    for (const std::string document : {"Params_Set", "AutoMz_In", "AutoSeries_Out", "FindSeries_In",
                                       "FindSeries_Out", "RecalcSeries_In", "RecalcSeries_Out"})
      names.insert("C:\\CSD_" + engine + document + ".xml");
  EXPECT_EQ(folder.Files(), names);
  EXPECT_EQ(ToUtf8(engines.Sent("Resolved.SetPrefs")), folder.Read("C:\\CSD_ResParams_Set.xml"));
  EXPECT_EQ(folder.Read("C:\\CSD_UnresFindSeries_In.xml"), "<In/>");
  EXPECT_EQ(folder.Read("C:\\CSD_ResAutoSeries_Out.xml"), "<OutAuto/>");
  EXPECT_EQ(folder.Read("C:\\CSD_UnresRecalcSeries_Out.xml"), "<OutReca/>");
}

TEST_F(Run, SavesWhatAnEngineWasAskedAlsoIfItFails) {
  const DebugFolder folder;
  SetUpBoth();
  engines.Fail("Resolved.AutoSeries");
  EXPECT_EQ(Thrown([&] { AskForSeries(run, kResolved, SeriesCall::Auto, L"<In/>"); }),
            "resolved engine failed");
  EXPECT_TRUE(folder.Files().contains("C:\\CSD_ResAutoMz_In.xml"));
  EXPECT_FALSE(folder.Files().contains("C:\\CSD_ResAutoSeries_Out.xml"));
}
