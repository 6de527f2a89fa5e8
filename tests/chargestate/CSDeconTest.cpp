// Tests: CSDecon.cpp, CmdCSDecon.cpp.
#include <tslbl/chargestate/CSDecon.h>

#include <RecordCheck.h>

#include <chargestate/DeconSample.h>
#include <chargestate/FakeEngines.h>
#include <chargestate/SampleParams.h>
#include <curve/FailingAllocations.h>
#include <curve/TestCurve.h>
#include <tslbl/chargestate/DeconXMLParser.h>
#include <tslbl/chargestate/PeakRows.h>
#include <tslbl/closed/common/XMLParser.h>
#include <tslbl/curve/CommandTable.h>
#include <tslbl/curve/Execute.h>

using namespace tests;

namespace {

const std::wstring kNoResults = L"No Charge State Deconvolution results found with current settings.";

template <class Step>
Outcome RunOn(Step step, DeconSpectrum& spectrum) {
  Outcome outcome;
  Changed changed;
  outcome.ok = step(spectrum, changed, outcome.error);
  outcome.changed = Flags(changed);
  return outcome;
}

class CSDecon : public testing::Test {
 protected:
  CSDecon() {
    engines.answers["Resolved.AutoSeries"] = AnswerXml(SeriesXml(1000, StateXml(2, 0, {0, 1})));
    engines.answers["Unresolved.AutoSeries"] =
        AnswerXml(SeriesXml(2000, StateXml(7, 9, {2}) + StateXml(8, 9, {3})));
  }
  Outcome Run() { return RunOn(DoCSDecon, spectrum); }
  Outcome RunWith(ChargeStateParams::Methods method) {
    spectrum.CSParams.Method = method;
    return Run();
  }

  FakeEngines engines;
  DeconSpectrum spectrum = SpectrumToDecon();
};

constexpr const char* kWholeLog =
    "+Resolved Resolved.SetPrefs +Unresolved Unresolved.SetPrefs +Plot "
    "Resolved.AutoSeries Unresolved.AutoSeries "
    "Plot.AddPeakPlot Plot.AddPeakPlot Plot.GetSeriesPlot Plot.AddSeriesPlot "
    "Plot.AddPeakPlot Plot.AddPeakPlot Plot.GetSeriesPlot Plot.AddSeriesPlot Plot.GetResultPlot "
    "-Plot -Unresolved -Resolved";

}  // namespace

TEST_F(CSDecon, FindsSeriesByBothMethodsAndDrawsThem) {
  EXPECT_EQ(Run(), Success("chargeState"));
  EXPECT_EQ(Keys(spectrum), "R1 U1");
  EXPECT_EQ(spectrum.MassX, (std::vector<double>{1000.0, 1000.5}));
  EXPECT_EQ(spectrum.MassY, (std::vector<double>{5.0, 7.0}));
  EXPECT_TRUE(spectrum.CheckAllStatus(Curve::STATUS_CSDECON));
  EXPECT_EQ(History(spectrum), "Charge State Deconvolution");
  EXPECT_EQ(spectrum.evals.back(), CurveEval(spectrum.CSParams));
}

TEST_F(CSDecon, MakesAsksAndGivesUpTheEnginesInOrder) {
  Run();
  EXPECT_EQ(engines.Log(), kWholeLog);
}

TEST_F(CSDecon, WithTheResolvedMethodNeedsNoUnresolvedEngine) {
  EXPECT_EQ(RunWith(ChargeStateParams::ResolvedOnly), Success("chargeState"));
  EXPECT_EQ(Keys(spectrum), "R1");
  EXPECT_EQ(engines.Log(),
            "+Resolved Resolved.SetPrefs +Plot Resolved.AutoSeries Plot.AddPeakPlot Plot.AddPeakPlot "
            "Plot.GetSeriesPlot Plot.AddSeriesPlot Plot.GetResultPlot -Plot -Resolved");
}

TEST_F(CSDecon, WithTheUnresolvedMethodNeedsNoResolvedEngine) {
  EXPECT_EQ(RunWith(ChargeStateParams::UnresolvedOnly), Success("chargeState"));
  EXPECT_EQ(Keys(spectrum), "U1");
  EXPECT_EQ(engines.Log(),
            "+Unresolved Unresolved.SetPrefs +Plot Unresolved.AutoSeries Plot.AddPeakPlot Plot.AddPeakPlot "
            "Plot.GetSeriesPlot Plot.AddSeriesPlot Plot.GetResultPlot -Plot -Unresolved");
}

TEST_F(CSDecon, WithAMethodThatThereIsNotFindsNothing) {
  EXPECT_EQ(RunWith(static_cast<ChargeStateParams::Methods>(3)), Failure(kNoResults));
  EXPECT_EQ(engines.Log(), "+Plot -Plot");
}

TEST_F(CSDecon, GivesBothEnginesTheSamePeaks) {
  Run();
  DeconXMLParser expected;
  expected.WMZPeaks(BuildPeakRows(spectrum));
  EXPECT_EQ(engines.Sent("Resolved.AutoSeries"), expected.QText());
  EXPECT_EQ(engines.Sent("Unresolved.AutoSeries"), expected.QText());
}

TEST_F(CSDecon, WithAreasForIntensitiesTheAmplitudeOfEachPeakIsItsArea) {
  spectrum.CSParams.PkIntensity = ChargeStateParams::Area;
  Run();
  TslCommon::XMLParser document;
  ASSERT_TRUE(document.LoadText(engines.Sent("Resolved.AutoSeries")));
  ASSERT_TRUE(document.StartNode(L"CSDecon") && document.StartNode(L"MZPeaks"));
  int peaks = 0;
  for (std::wstring ampl, area; document.StartNode(L"Peak"); document.EndNode(), ++peaks) {
    ASSERT_TRUE(document.QAttribute(L"ampl", ampl) && document.QAttribute(L"area", area));
    EXPECT_EQ(ampl, area);
    EXPECT_EQ(area, ToText(300.5 + peaks));
  }
  EXPECT_EQ(peaks, 4);
}

TEST_F(CSDecon, GivesTheResolvedEngineTheMonoisotopicMassOfTheProtonAndTheOtherItsAverageMass) {
  Run();
  EXPECT_NE(engines.Sent("Resolved.SetPrefs").find(L" adductMass=\"1.007276\""), std::wstring::npos);
  EXPECT_NE(engines.Sent("Unresolved.SetPrefs").find(L" chargeCarrierMass=\"1.007398\""), std::wstring::npos);
}

TEST_F(CSDecon, AnOverlapPeakOfASeriesStandsWhereItWasFittedAndHasNoPoints) {
  spectrum = WithOverlapPeaks();
  spectrum.CSParams.UseOPD = true;
  engines.answers["Resolved.AutoSeries"] = AnswerXml(SeriesXml(1000, StateXml(2, 5, {5})));
  EXPECT_EQ(RunWith(ChargeStateParams::ResolvedOnly), Success("chargeState"));
  EXPECT_EQ(spectrum.Series.at(0).Peaks.at(0).MZ, 117.0);
  EXPECT_EQ(engines.Sent("Plot.AddPeakPlot"),
            L"<CSDecon><Plot adductMass=\"1.007276\" charge=\"2\"/></CSDecon>");
}

TEST_F(CSDecon, NeedsThePeaks) {
  spectrum.status &= ~Curve::STATUS_PEAKS;
  spectrum.CSAddSeries(kResolved, 1, 0, PeaksAt("1m"));
  EXPECT_EQ(Run(),
            Failure(L"Peak Detect must be executed before Charge State Deconvolution can be executed."));
  EXPECT_EQ(Keys(spectrum), "R1");
  EXPECT_EQ(engines.Log(), "");
}

TEST_F(CSDecon, FindsNoPeaksInARangeWithoutAny) {
  spectrum.CSAddSeries(kResolved, 1, 0, PeaksAt("1m"));
  spectrum.MassX = spectrum.MassY = {1.0};
  spectrum.CSParams.FullRange = false;
  spectrum.CSParams.StartMz = 1000.0;
  EXPECT_EQ(Run(), Failure(L"Peak detect found no peaks."));
  EXPECT_TRUE(spectrum.Series.empty() && spectrum.MassX.empty() && spectrum.MassY.empty());
  EXPECT_EQ(engines.Log(), "");
  EXPECT_EQ(History(spectrum), "");
  EXPECT_FALSE(spectrum.CheckAllStatus(Curve::STATUS_CSDECON));
}

TEST_F(CSDecon, FindsNoPeaksInAnEmptyTable) {
  spectrum.peaks.clear();
  EXPECT_EQ(Run(), Failure(L"Peak detect found no peaks."));
}

TEST_F(CSDecon, SaysThatAnEngineCannotBeMade) {
  for (const char* id :
       {SeriesEngine::kResolvedClassId, SeriesEngine::kUnresolvedClassId, MassPlotEngine::kClassId}) {
    const FakeEngines present;
    FakeEngines::Registry().Register(id, nullptr);
    EXPECT_EQ(Run(), Failure(L"Unable to load Charge State Deconvolution COM controls.")) << id;
    EXPECT_EQ(History(spectrum), "");
  }
}

TEST_F(CSDecon, EndsWhereTheResolvedMethodFindsNothing) {
  engines.answers["Resolved.AutoSeries"] = AnswerXml(L"");
  EXPECT_EQ(Run(), Failure(kNoResults));
  EXPECT_EQ(engines.Log(),
            "+Resolved Resolved.SetPrefs +Unresolved Unresolved.SetPrefs +Plot Resolved.AutoSeries "
            "-Plot -Unresolved -Resolved");
  EXPECT_EQ(History(spectrum), "");
}

TEST_F(CSDecon, LeavesTheResolvedSeriesWithoutACurveIfTheUnresolvedMethodFails) {
  engines.Fail("Unresolved.AutoSeries");
  EXPECT_EQ(Run(), Failure(L"unresolved engine failed"));
  EXPECT_EQ(Keys(spectrum), "R1");
  EXPECT_TRUE(spectrum.MassX.empty());
  EXPECT_FALSE(spectrum.CheckAllStatus(Curve::STATUS_CSDECON));
  EXPECT_EQ(History(spectrum), "");
  EXPECT_EQ(engines.log.back(), "-Resolved");
}

TEST_F(CSDecon, FindsNothingWhereNoSeriesIsValid) {
  engines.answers["Resolved.AutoSeries"] = AnswerXml(SeriesXml(1000, StateXml(2, 9, {0, 1})));
  engines.answers["Unresolved.AutoSeries"] = AnswerXml(SeriesXml(1000, StateXml(2, 0, {0})));
  EXPECT_EQ(Run(), Failure(kNoResults));
  EXPECT_TRUE(spectrum.Series.empty());
}

TEST_F(CSDecon, HasTheTextOfWhateverFails) {
  engines.Fail("Plot.GetResultPlot");
  EXPECT_EQ(Run(), Failure(L"plot engine failed"));
  EXPECT_EQ(Keys(spectrum), "R1 U1");
  engines.Fail("Unresolved.SetPrefs");
  EXPECT_EQ(Run(), Failure(L"unresolved engine failed"));
  engines.doing["Resolved.AutoSeries"] = [] { throw std::runtime_error("a runtime error"); };
  EXPECT_EQ(Run(), Failure(L"unresolved engine failed"));  // parameters come first
  engines.doing.erase("Unresolved.SetPrefs");
  EXPECT_EQ(Run(), Failure(L"a runtime error"));
  engines.doing["Resolved.AutoSeries"] = [] { throw std::logic_error("a logic error"); };
  EXPECT_EQ(Run(), Failure(L"a logic error"));
  engines.doing.erase("Resolved.AutoSeries");
  engines.answers["Resolved.AutoSeries"] = L"<CSDecon><Series/></CSDecon>";
  EXPECT_EQ(Run(), Failure(L"Error reading XML content"));
  engines.answers["Resolved.AutoSeries"] = L"abc";
  EXPECT_EQ(Run(), Failure(L"Error reading XML content."));
}

TEST_F(CSDecon, LetsAnEnginePassThatFailsAndCannotSayWhy) {
  engines.Fail("Resolved.AutoSeries");
  engines.Fail("Resolved.GetLastError");
  EXPECT_THROW(Run(), ComError);
  EXPECT_EQ(History(spectrum), "");
  EXPECT_EQ(engines.log.back(), "-Resolved");
}

TEST_F(CSDecon, RunsAgainOnItsOwnResult) {
  Run();
  EXPECT_EQ(Run(), Success("chargeState"));
  EXPECT_EQ(Keys(spectrum), "R1 U1");
  EXPECT_EQ(History(spectrum), "Charge State Deconvolution, Charge State Deconvolution");
}

TEST_F(CSDecon, RunsOnASpectrumWithOverlapPeaks) {
  spectrum = WithOverlapPeaks();
  spectrum.AddStatus(Curve::STATUS_OPD);
  EXPECT_EQ(Run(), Success("chargeState"));
}

TEST_F(CSDecon, FreezesTheSpectrum) {
  Run();
  EXPECT_EQ(RunCommand(SmoothParams(), spectrum), Failure(L"Unable to smooth."));
  EXPECT_EQ(RunCommand(PeakDetectParams(), spectrum), Failure(L"Unable to peak detect."));
  EXPECT_TRUE(RunCommand(CurveEval::AerosolFilter(), spectrum).ok);
}

TEST_F(CSDecon, OutOfMemoryIsInTheHistoryIfAndOnlyIfItRan) {
  for (std::size_t nth = 0;; ++nth) {
    spectrum = SpectrumToDecon();
    engines.log.clear();
    engines.sent.clear();
    Changed changed;
    std::wstring error;
    const FailingAllocation fault(nth);
    bool ran = false;
    try {
      ran = DoCSDecon(spectrum, changed, error);
    } catch (const std::bad_alloc&) {
    }
    EXPECT_EQ(spectrum.evals.size(), ran ? 1U : 0U) << nth;
    EXPECT_EQ(spectrum.CheckAllStatus(Curve::STATUS_CSDECON), ran) << nth;
    EXPECT_EQ(changed.chargeState, ran) << nth;
    if (!fault.Failed()) break;
  }
}

TEST_F(CSDecon, ExecutedDetectsThePeaksFirst) {
  spectrum = DeconSpectrum(SpectrumOf(Values("1 1 1 1 5 9 20 60 90 60 20 9 5 1 1 1 1 1")));
  spectrum.baseline.clear();
  spectrum.noise.clear();
  engines.answers["Resolved.AutoSeries"] = AnswerXml(SeriesXml(1000, StateXml(2, 0, {0})));
  spectrum.CSParams.Method = ChargeStateParams::ResolvedOnly;
  EXPECT_EQ(RunOn(ExecuteCSDecon, spectrum), Success("baseline noise peaks chargeState"));
  EXPECT_EQ(History(spectrum), "Baseline, Noise, Peak Detect, Charge State Deconvolution");
}

TEST_F(CSDecon, ExecutedKeepsThePeaksThatThereAre) {
  EXPECT_EQ(RunOn(ExecuteCSDecon, spectrum), Success("chargeState"));
  EXPECT_EQ(History(spectrum), "Charge State Deconvolution");
}

TEST_F(CSDecon, ExecutedFailsAsThePeakDetectionDoes) {
  DeconSpectrum empty;
  EXPECT_EQ(RunOn(ExecuteCSDecon, empty), Failure(L"Unable to baseline."));
  EXPECT_EQ(engines.Log(), "");
}

TEST_F(CSDecon, IsACommandThatPutsItsParametersInTheSpectrum) {
  ChargeStateParams params;
  params.Method = ChargeStateParams::UnresolvedOnly;
  params.MaxSpecies = 7;
  EXPECT_EQ(RunCommand(params, spectrum), Success("chargeState"));
  EXPECT_EQ(spectrum.CSParams, params);
  EXPECT_EQ(Keys(spectrum), "U1");
  EXPECT_EQ(spectrum.evals, std::vector<CurveEval>{CurveEval(params)});
}

TEST_F(CSDecon, AsACommandPutsItsParametersInTheSpectrumAlsoIfItFails) {
  spectrum.status &= ~Curve::STATUS_PEAKS;
  EXPECT_FALSE(RunCommand(SampleChargeStateParams(), spectrum).ok);
  EXPECT_EQ(spectrum.CSParams, SampleChargeStateParams());
}

TEST_F(CSDecon, AsACommandFailsWithoutAMessageOnOtherCurves) {
  Spectrum plain = spectrum;
  const Spectrum before = plain;
  Changed changed;
  std::wstring error = L"of before";
  EXPECT_FALSE(CurveEval(ChargeStateParams()).Execute(plain, changed, error));
  EXPECT_FALSE(FindCommand(EvalType::CSDecon)->step(plain, changed, error));
  EXPECT_EQ(error, L"of before");
  EXPECT_EQ(Flags(changed), "");
  EXPECT_EQ(plain, before);
}

TEST(CSDeconCommand, HasTypeAndText) {
  const CurveEval eval{SampleChargeStateParams()};
  EXPECT_EQ(eval.Type(), 7u);
  EXPECT_EQ(eval.TypeText(), L"Charge State Deconvolution");
  EXPECT_EQ(eval, CurveEval(SampleChargeStateParams()));
  EXPECT_FALSE(eval == CurveEval(ChargeStateParams()));
  EXPECT_FALSE(eval == CurveEval());
}

TEST(CSDeconCommand, IsStoredWithItsParameters) {
  const CurveEval eval{SampleChargeStateParams()};
  EXPECT_EQ(ToBytes(eval), Bytes(2u, 7u) + ToBytes(SampleChargeStateParams()));
  EXPECT_EQ(FromBytes<CurveEval>(ToBytes(eval)), eval);
  CheckCutShort(eval);
}

TEST(CSDeconCommand, IsADocumentWithItsParameters) {
  ChargeStateParams params = SampleChargeStateParams();
  params.CustomAdductIon.MonoMass = 7.0;  // as a document keeps it
  const CurveEval eval{params};
  const std::wstring xml = ToXml(eval);
  EXPECT_TRUE(xml.starts_with(L"<CurveEval Type=\"Charge State Deconvolution\">\n  <ChargeState>\n"));
  EXPECT_EQ(FromXml<CurveEval>(xml), eval);
}

TEST(CSDeconCommand, DumpsItsParameters) {
  EXPECT_EQ(DumpOf(CurveEval(SampleChargeStateParams())),
            L"Cmd:\tCharge State Deconvolution\r\n" + DumpOf(SampleChargeStateParams()));
}

TEST(CSDeconCommand, IsWhatADocumentMeansByAnyTextOfNoCommand) {
  for (const wchar_t* text : {L"Smooth ", L"smooth", L"opd", L"", L"Unknown"}) {
    const std::wstring open = std::wstring(L"<CurveEval Type='") + text + L"'>";
    EXPECT_EQ(FromXml<CurveEval>(open + L"<Smooth/></CurveEval>", CurveEval(SmoothParams())),
              CurveEval(ChargeStateParams()));
    ChargeStateParams params;
    params.MaxSpecies = 7;
    EXPECT_EQ(FromXml<CurveEval>(open + L"<ChargeState><MaxSpecies>7</MaxSpecies></ChargeState></CurveEval>"),
              CurveEval(params));
  }
}

TEST(CSDeconCommand, EndsACompactChainOnce) {
  ChargeStateParams last;
  last.MaxSpecies = 3;
  const std::vector<CurveEval> chain = {CurveEval(ChargeStateParams()), CurveEval(OPDParams()),
                                        CurveEval(last), CurveEval(PeakDetectParams()),
                                        CurveEval(SmoothParams())};
  EXPECT_EQ(Names(CompactEval(chain)), "Smooth, Peak Detect, OPD, Charge State Deconvolution");
  EXPECT_EQ(CompactEval(chain).back(), CurveEval(last));
}

TEST(CSDeconCommand, StandsInTheHistoryThatASpectrumIsStoredWith) {
  Spectrum spectrum;
  spectrum.evals = {CurveEval(SampleChargeStateParams())};
  EXPECT_EQ(FromBytes<Spectrum>(ToBytes(spectrum)), spectrum);
}
