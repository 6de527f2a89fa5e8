#include <tslbl/chargestate/CSDeconEdit.h>

#include <gtest/gtest.h>

#include <chargestate/DeconSample.h>
#include <chargestate/FakeEngines.h>
#include <curve/TestCurve.h>
#include <tslbl/chargestate/DeconXMLParser.h>
#include <tslbl/chargestate/PeakRows.h>

using namespace tests;

namespace {

using Ids = std::vector<std::uint32_t>;

constexpr std::uint32_t kNone = 4294967295u;
const std::wstring kNoResults = L"No Charge State Deconvolution results found with current settings.";
const std::wstring kNoSuchSeries = L"Invalid Charge State Deconvolution Series.";

// Resolved 1 with peaks 0 (monoisotopic) and 1, unresolved 1 with peaks 2 and 3.
DeconSpectrum Deconvolved() {
  DeconSpectrum s = SpectrumToDecon();
  s.CSAddSeries(kResolved, 1000.5, 0.5, PeaksAt("2m 2"));
  s.CSAddSeries(kUnresolved, 2000.5, 0.5, PeaksAt("7 8", 2));
  s.MassX = s.MassY = {1.0, 2.0};
  s.AddStatus(Curve::STATUS_CSDECON);
  s.evals = {CurveEval(s.CSParams)};
  return s;
}

class CSDeconEdit : public testing::Test {
 protected:
  Outcome AddSeries(CSSeries::Types type, const Ids& ids) {
    return Run([&](std::wstring& error) { return CSDeconAddSeries(spectrum, type, ids, error); });
  }
  Outcome DeleteSeries(const std::vector<CSSeries>& series) {
    return Run([&](std::wstring& error) { return CSDeconDeleteSeries(spectrum, series, error); });
  }
  Outcome AddPeaks(const CSSeries& series, const Ids& ids) {
    return Run([&](std::wstring& error) { return CSDeconAddSeriesPeaks(spectrum, series, ids, error); });
  }
  Outcome DeletePeaks(const CSSeries& series, const Ids& ids) {
    return Run([&](std::wstring& error) { return CSDeconDeleteSeriesPeaks(spectrum, series, ids, error); });
  }
  template <class Edit>
  static Outcome Run(Edit edit) {
    Outcome outcome;
    outcome.ok = edit(outcome.error);
    return outcome;
  }
  // What an engine is to be asked about the peaks of the spectrum.
  std::wstring Question(double avgMass, const Ids& ids) const {
    DeconXMLParser parser;
    parser.WMZPeaks(BuildPeakRows(spectrum));
    parser.WSeriesPeaks(avgMass, ids);
    return parser.QText();
  }
  bool IsRedrawn() const { return spectrum.MassX == std::vector<double>{1000.0, 1000.5}; }

  FakeEngines engines;
  DeconSpectrum spectrum = Deconvolved();
};

constexpr CSSeries::Types kOtherType = static_cast<CSSeries::Types>(3);

}  // namespace

TEST_F(CSDeconEdit, NeedsASpectrumThatHasBeenDeconvolved) {
  spectrum.status &= ~Curve::STATUS_CSDECON;
  const Outcome refused =
      Failure(L"Charge State Deconvolution must be executed before the results can be editted.");
  EXPECT_EQ(AddSeries(CSSeries::None, {}), refused);
  EXPECT_EQ(DeleteSeries({}), refused);
  EXPECT_EQ(AddPeaks({}, {}), refused);
  EXPECT_EQ(DeletePeaks({}, {}), refused);
  EXPECT_EQ(engines.Log(), "");
}

TEST_F(CSDeconEdit, AddsASeriesFromChosenPeaks) {
  engines.answers["Unresolved.FindSeries"] = AnswerXml(SeriesXml(3000, StateXml(5, kNone, {0, 1})));
  EXPECT_EQ(AddSeries(kUnresolved, {1, 0}), Success(""));
  EXPECT_EQ(Keys(spectrum), "R1 U1 U2");
  EXPECT_EQ(spectrum.Series[2].AvgMass, 3000.0);
  EXPECT_EQ(engines.Sent("Unresolved.FindSeries"), Question(0.0, {1, 0}));
  EXPECT_TRUE(IsRedrawn());
}

TEST_F(CSDeconEdit, AddsASeriesByTheEngineOfItsTypeAlone) {
  engines.answers["Resolved.FindSeries"] = AnswerXml(SeriesXml(3000, StateXml(5, 0, {0})));
  EXPECT_EQ(AddSeries(kResolved, {0}), Success(""));
  EXPECT_EQ(Keys(spectrum), "R1 U1 R2");
  const std::string log = engines.Log();
  EXPECT_TRUE(log.starts_with("+Resolved Resolved.SetPrefs +Plot Resolved.FindSeries Plot.AddPeakPlot "));
  EXPECT_TRUE(log.ends_with(" Plot.GetResultPlot -Plot -Resolved"));
  EXPECT_EQ(log.find("Unresolved"), std::string::npos);
}

TEST_F(CSDeconEdit, RefusesASeriesOfAnotherTypeBeforeItLooksAtThePeaks) {
  for (const auto type : {CSSeries::None, kOtherType})
    for (const Ids& ids : {Ids(), Ids{0}})
      EXPECT_EQ(AddSeries(type, ids), Failure(L"Invalid Charge State Deconvolution Series Type."));
  EXPECT_EQ(engines.Log(), "");
}

TEST_F(CSDeconEdit, RefusesASeriesOfNoPeaks) {
  for (const auto type : {kResolved, kUnresolved})
    EXPECT_EQ(AddSeries(type, {}), Failure(L"No peaks specified for operation."));
  EXPECT_EQ(engines.Log(), "");
}

TEST_F(CSDeconEdit, SaysWhyNoSeriesWasAdded) {
  engines.Fail("Resolved.FindSeries");
  EXPECT_EQ(AddSeries(kResolved, {0}), Failure(L"resolved engine failed"));
  engines.answers["Unresolved.FindSeries"] = AnswerXml(L"");
  EXPECT_EQ(AddSeries(kUnresolved, {0}), Failure(kNoResults));
  EXPECT_EQ(Keys(spectrum), "R1 U1");
  EXPECT_EQ(spectrum.MassX, (std::vector<double>{1.0, 2.0}));
}

TEST_F(CSDeconEdit, LeavesOutASeriesThatIsNotValid) {
  engines.answers["Resolved.FindSeries"] = AnswerXml(SeriesXml(3000, StateXml(5, kNone, {0})));
  EXPECT_EQ(AddSeries(kResolved, {0}), Success(""));
  EXPECT_EQ(Keys(spectrum), "R1 U1");
}

TEST_F(CSDeconEdit, DeletesSeriesAndDrawsTheRest) {
  EXPECT_EQ(DeleteSeries({{kResolved, 1}, {kResolved, 7}}), Success(""));
  EXPECT_EQ(Keys(spectrum), "U1");
  EXPECT_TRUE(IsRedrawn());
  EXPECT_EQ(
      engines.Log(),
      "+Plot Plot.AddPeakPlot Plot.AddPeakPlot Plot.GetSeriesPlot Plot.AddSeriesPlot Plot.GetResultPlot "
      "-Plot");
}

TEST_F(CSDeconEdit, DeletesNoSeries) {
  EXPECT_EQ(DeleteSeries({}), Success(""));
  EXPECT_EQ(engines.Log(), "");
  EXPECT_EQ(spectrum, Deconvolved());
}

TEST_F(CSDeconEdit, DeletingAllSeriesLeavesNoCurveAndSaysSo) {
  EXPECT_EQ(DeleteSeries({{kUnresolved, 1}, {kResolved, 1}}), Failure(kNoResults));
  EXPECT_TRUE(spectrum.Series.empty() && spectrum.MassX.empty() && spectrum.MassY.empty());
  EXPECT_EQ(engines.Log(), "+Plot -Plot");
  EXPECT_TRUE(spectrum.CheckAllStatus(Curve::STATUS_CSDECON));
}

TEST_F(CSDeconEdit, ADeletedSeriesIsGoneThoughTheCurveCannotBeDrawn) {
  engines.Fail("Plot.GetSeriesPlot");
  EXPECT_EQ(DeleteSeries({{kResolved, 1}}), Failure(L"plot engine failed"));
  EXPECT_EQ(Keys(spectrum), "U1");
  FakeEngines::Registry().Register(MassPlotEngine::kClassId, nullptr);
  EXPECT_EQ(DeleteSeries({{kUnresolved, 1}}),
            Failure(L"Unable to load Charge State Deconvolution COM controls."));
  EXPECT_EQ(Keys(spectrum), "");
}

TEST_F(CSDeconEdit, AddsPeaksToAResolvedSeriesBesideItsMonoisotopicOnes) {
  engines.answers["Resolved.RecalcSeries"] =
      AnswerXml(SeriesXml(1500, StateXml(2, 0, {0, 1}) + StateXml(3, 3, {3})));
  EXPECT_EQ(AddPeaks({kResolved, 1}, {3, 2}), Success(""));
  EXPECT_EQ(engines.Sent("Resolved.RecalcSeries"), Question(1000.5, {0, 3, 2}));
  EXPECT_EQ(Keys(spectrum), "R1 U1");
  EXPECT_EQ(spectrum.Series[0].AvgMass, 1500.0);
  EXPECT_EQ(spectrum.Series[0].Peaks.size(), 3u);
  EXPECT_TRUE(IsRedrawn());
}

TEST_F(CSDeconEdit, AddsPeaksToAnUnresolvedSeriesBesideAllItsOwn) {
  engines.answers["Unresolved.RecalcSeries"] = AnswerXml(SeriesXml(1500, StateXml(2, kNone, {1, 2, 3})));
  EXPECT_EQ(AddPeaks({kUnresolved, 1}, {1}), Success(""));
  EXPECT_EQ(engines.Sent("Unresolved.RecalcSeries"), Question(2000.5, {2, 3, 1}));
  EXPECT_EQ(spectrum.Series[1].Peaks.size(), 3u);
  EXPECT_TRUE(
      engines.Log().starts_with("+Unresolved Unresolved.SetPrefs +Plot Unresolved.RecalcSeries Plot."));
}

TEST_F(CSDeconEdit, AddsOrTakesOutNoPeaks) {
  EXPECT_EQ(AddPeaks({kResolved, 7}, {}), Success(""));
  EXPECT_EQ(DeletePeaks({kResolved, 7}, {}), Success(""));
  EXPECT_EQ(engines.Log(), "");
  EXPECT_EQ(spectrum, Deconvolved());
}

TEST_F(CSDeconEdit, RefusesPeaksOfASeriesThatThereIsNot) {
  EXPECT_EQ(AddPeaks({kResolved, 7}, {0}), Failure(kNoSuchSeries));
  EXPECT_EQ(DeletePeaks({CSSeries::None, 1}, {0}), Failure(kNoSuchSeries));
  EXPECT_EQ(engines.Log(), "");
}

TEST_F(CSDeconEdit, CannotRecalculateASeriesThatNoEngineIsFor) {
  spectrum.Series[0].Series = {kOtherType, 1};
  EXPECT_EQ(AddPeaks({kOtherType, 1}, {3}),
            Failure(L"Unable to Recalculate Series information with current settings."));
  EXPECT_EQ(engines.Log(), "+Plot -Plot");
}

TEST_F(CSDeconEdit, SaysWhyASeriesWasNotRecalculated) {
  engines.Fail("Resolved.RecalcSeries");
  EXPECT_EQ(AddPeaks({kResolved, 1}, {3}), Failure(L"resolved engine failed"));
  engines.answers["Unresolved.RecalcSeries"] = AnswerXml(L"");
  EXPECT_EQ(AddPeaks({kUnresolved, 1}, {1}), Failure(kNoResults));
  EXPECT_EQ(spectrum.Series, Deconvolved().Series);
}

TEST_F(CSDeconEdit, TakesPeaksOutOfASeries) {
  spectrum.Series[1].Peaks = PeaksAt("7 8 9", 1);
  engines.answers["Unresolved.RecalcSeries"] = AnswerXml(SeriesXml(1500, StateXml(7, kNone, {1, 3})));
  EXPECT_EQ(DeletePeaks({kUnresolved, 1}, {2}), Success(""));
  EXPECT_EQ(engines.Sent("Unresolved.RecalcSeries"), Question(2000.5, {1, 3}));
  EXPECT_EQ(spectrum.Series[1].AvgMass, 1500.0);
  EXPECT_TRUE(IsRedrawn());
}

TEST_F(CSDeconEdit, TakesPeaksOutOfAResolvedSeriesByItsMonoisotopicOnes) {
  spectrum.Series[0].Peaks = PeaksAt("2m 2 3m 3");
  engines.answers["Resolved.RecalcSeries"] = AnswerXml(SeriesXml(1500, StateXml(2, 0, {0})));
  EXPECT_EQ(DeletePeaks({kResolved, 1}, {3, 1}), Success(""));
  EXPECT_EQ(engines.Sent("Resolved.RecalcSeries"), Question(1000.5, {0, 2}));
}

TEST_F(CSDeconEdit, TakingTheOnlyMonoisotopicPeakDeletesAResolvedSeries) {
  EXPECT_EQ(DeletePeaks({kResolved, 1}, {0}), Success(""));
  EXPECT_EQ(Keys(spectrum), "U1");
  EXPECT_TRUE(IsRedrawn());
  EXPECT_TRUE(engines.Log().starts_with("+Plot Plot.AddPeakPlot"));
}

TEST_F(CSDeconEdit, TakingOneOfTwoPeaksDeletesAnUnresolvedSeries) {
  EXPECT_EQ(DeletePeaks({kUnresolved, 1}, {3}), Success(""));
  EXPECT_EQ(Keys(spectrum), "R1");
}

TEST_F(CSDeconEdit, DeletingTheLastSeriesByItsPeaksSaysThatNothingIsLeft) {
  spectrum.Series.erase(spectrum.Series.begin());
  EXPECT_EQ(DeletePeaks({kUnresolved, 1}, {2, 3}), Failure(kNoResults));
  EXPECT_TRUE(spectrum.Series.empty() && spectrum.MassX.empty());
}

TEST_F(CSDeconEdit, KeepsASeriesWhoseNewContentIsNotValid) {
  engines.answers["Resolved.RecalcSeries"] = AnswerXml(SeriesXml(1500, StateXml(2, kNone, {0})));
  EXPECT_EQ(AddPeaks({kResolved, 1}, {3}), Success(""));
  EXPECT_EQ(spectrum.Series, Deconvolved().Series);
}

TEST_F(CSDeconEdit, LeavesTheHistory) {
  engines.answers["Resolved.FindSeries"] = AnswerXml(SeriesXml(3000, StateXml(5, 0, {0})));
  engines.answers["Resolved.RecalcSeries"] = AnswerXml(SeriesXml(1500, StateXml(2, 0, {0})));
  AddSeries(kResolved, {0});
  AddPeaks({kResolved, 1}, {3});
  DeletePeaks({kResolved, 1}, {3});
  DeleteSeries({{kUnresolved, 1}});
  EXPECT_EQ(spectrum.evals, Deconvolved().evals);
}

TEST_F(CSDeconEdit, LetsAnEnginePassThatFailsAndCannotSayWhy) {
  engines.Fail("Plot.GetResultPlot");
  engines.Fail("Plot.GetLastError");
  EXPECT_THROW(DeleteSeries({{kResolved, 1}}), ComError);
  EXPECT_EQ(Keys(spectrum), "U1");
}
