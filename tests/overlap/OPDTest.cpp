// Tests: OPD.cpp, CmdOPD.cpp.
#include <tslbl/overlap/OPD.h>

#include <gtest/gtest.h>

#include <curve/FailingAllocations.h>
#include <curve/TestCurve.h>
#include <overlap/FakeEngine.h>
#include <overlap/OverlapSpectrum.h>
#include <tslbl/closed/common/ComponentRegistry.h>
#include <tslbl/curve/Execute.h>
#include <stdexcept>

using namespace TslBL;
using namespace tests;

namespace {

// Two groups: a pair that is joined, and a lone peak under which two are proposed.
Indexes OnBothHalves(const EstimateCall& call) { return call.y.size() > 11 ? Indexes{5, 15} : Indexes{3, 7}; }

class OPD : public testing::Test {
 protected:
  OPD() {
    engine.estimate = [](const EstimateCall& call, Indexes& peaks) {
      peaks = OnBothHalves(call);
      return OverlapPeakEngine::kOk;
    };
  }
  Outcome Run() {
    return RunOn([](Spectrum& s, Changed& changed, std::wstring& error) { return DoOPD(s, changed, error); },
                 spectrum);
  }
  template <class Step>
  static Outcome RunOn(Step step, Spectrum& spectrum) {
    Outcome outcome;
    Changed changed;
    outcome.ok = step(spectrum, changed, outcome.error);
    outcome.changed = Flags(changed);
    return outcome;
  }

  FakeEngine engine;
  Spectrum spectrum = TwoJoinedAndOne();
};

}  // namespace

TEST_F(OPD, FitsEachGroup) {
  EXPECT_EQ(Run(), Success("overlapPeaks"));
  EXPECT_EQ(Text(spectrum.overlapPeaks), "1:0@15 1:1@25 2:2@63 2:2@67");
  EXPECT_EQ(RowGroups(spectrum), "1 1 2");
  EXPECT_TRUE(spectrum.CheckAllStatus(Curve::STATUS_OPD));
  EXPECT_EQ(History(spectrum), "OPD");
  EXPECT_EQ(engine.fits.size(), 2U);
  EXPECT_EQ(engine.alive, 0);
}

TEST_F(OPD, LeavesThePeakTable) {
  const std::vector<PeakInfo> before = spectrum.peaks;
  Run();
  for (PeakInfo& row : spectrum.peaks) row.overlapGroup = NoOverlapGroupId;
  EXPECT_EQ(spectrum.peaks, before);
}

TEST_F(OPD, KeepsItsParametersInTheHistory) {
  spectrum.opdParams.MaxPeaks = 4;
  Run();
  EXPECT_EQ(spectrum.evals.back(), CurveEval(spectrum.opdParams));
}

TEST_F(OPD, NeedsThePeaks) {
  spectrum.status &= ~Curve::STATUS_PEAKS;
  spectrum.overlapPeaks = Fits("1:0@15");
  EXPECT_EQ(Run(),
            Failure(L"Peak Detect must be executed before Overlapped Peak Deconvolution can be executed."));
  EXPECT_EQ(Text(spectrum.overlapPeaks), "1:0@15");
  EXPECT_EQ(History(spectrum), "");
  EXPECT_FALSE(spectrum.CheckAllStatus(Curve::STATUS_OPD));
}

TEST_F(OPD, FindsNothingWhereEveryPeakIsResolvedAndAlone) {
  spectrum = SpectrumOfPeaks({{10, 15, 20, 1}, {60, 65, 70, 1}});
  EXPECT_EQ(Run(), Success("overlapPeaks"));
  EXPECT_TRUE(spectrum.overlapPeaks.empty());
  EXPECT_TRUE(spectrum.CheckAllStatus(Curve::STATUS_OPD));
  EXPECT_EQ(History(spectrum), "OPD");
  EXPECT_TRUE(engine.estimates.empty());
}

TEST_F(OPD, FindsNothingInATableWithoutPeaks) {
  spectrum = SpectrumOfPeaks({});
  EXPECT_EQ(Run(), Success("overlapPeaks"));
  EXPECT_TRUE(spectrum.CheckAllStatus(Curve::STATUS_OPD));
}

TEST_F(OPD, BeginsWithAClearSpectrum) {
  spectrum.overlapPeaks = Fits("1:0@11 2:2@61");
  Run();
  EXPECT_EQ(Text(spectrum.overlapPeaks), "1:0@15 1:1@25 2:2@63 2:2@67");
}

TEST_F(OPD, RunsAgainOnItsOwnResult) {
  Run();
  const std::vector<OverlapPeakInfo> first = spectrum.overlapPeaks;
  EXPECT_EQ(Run(), Success("overlapPeaks"));
  EXPECT_EQ(spectrum.overlapPeaks, first);
  EXPECT_EQ(History(spectrum), "OPD, OPD");
}

TEST_F(OPD, PutsAllEstimatesInASingleGroup) {
  spectrum.opdParams.SingleGroup = true;
  Run();
  ASSERT_EQ(engine.fits.size(), 1U);
  EXPECT_EQ(engine.fits[0].apexes, (Indexes{5, 15, 53, 57}));
  EXPECT_EQ(engine.fits[0].y.size(), 61U);  // from 10 to 70
  EXPECT_EQ(Text(spectrum.overlapPeaks), "1:0@15 1:1@25 1:2@63 1:2@67");
}

TEST_F(OPD, FitsByTheMethodThatIsAskedFor) {
  Run();
  spectrum.opdParams.FittingFunc = OPDParams::HookeJeeves;
  Run();
  EXPECT_FALSE(engine.fits.front().hookeJeeves);
  EXPECT_TRUE(engine.fits.back().hookeJeeves);
}

namespace {

// Runs with a fit that for the first group does as told, and for the others as usual.
void FailFirst(FakeEngine& engine, decltype(FakeEngine::fit) first) {
  engine.fit = [&engine, first](const FitCall& call, auto& results) {
    return engine.fits.size() == 1 ? first(call, results) : FitOnApexes(call, results);
  };
}

}  // namespace

TEST_F(OPD, AFitThatFailsCostsItsGroupAlone) {
  const decltype(FakeEngine::fit) failures[] = {
      [](auto&, auto&) -> std::int32_t { throw std::runtime_error("diverged"); },
      [](auto&, auto&) -> std::int32_t { throw std::bad_alloc(); },
      [](auto&, auto&) { return OverlapPeakEngine::kNoFit; },
      [](auto&, auto& results) {
        results.resize(2);
        results[0].centre = -1;
        return OverlapPeakEngine::kOk;
      },
  };
  for (const auto& failure : failures) {
    spectrum = TwoJoinedAndOne();
    engine.fits.clear();
    FailFirst(engine, failure);
    EXPECT_EQ(Run(), Success("overlapPeaks"));
    EXPECT_EQ(Text(spectrum.overlapPeaks), "1:2@63 1:2@67");
    EXPECT_EQ(RowGroups(spectrum), "0 0 1");
  }
}

TEST_F(OPD, AnEngineThatFailsEndsTheRun) {
  const auto run = [&] { Run(); };
  spectrum.overlapPeaks = Fits("1:0@11 2:2@61");
  engine.fit = [](auto&, auto&) { return static_cast<std::int32_t>(0x80004005); };
  EXPECT_THROW(run(), ComError);
  EXPECT_TRUE(spectrum.overlapPeaks.empty());
  EXPECT_EQ(History(spectrum), "");
  EXPECT_FALSE(spectrum.CheckAllStatus(Curve::STATUS_OPD));
  EXPECT_EQ(engine.alive, 0);
  engine.estimate = [](auto&, auto&) { return static_cast<std::int32_t>(0x80004005); };
  EXPECT_THROW(run(), ComError);
}

TEST_F(OPD, AnEngineThatFailsLeavesTheGroupsBefore) {
  engine.fit = [this](const FitCall& call, auto& results) {
    return engine.fits.size() == 1 ? FitOnApexes(call, results) : static_cast<std::int32_t>(0x80004005);
  };
  EXPECT_THROW(Run(), ComError);
  EXPECT_EQ(Text(spectrum.overlapPeaks), "1:0@15 1:1@25");
}

TEST_F(OPD, WithoutAnEngineWhatWasFittedIsGone) {
  FakeEngine::Registry().Register(OverlapPeakEngine::kClassId, nullptr);
  spectrum.overlapPeaks = Fits("1:0@11 2:2@61");
  EXPECT_EQ(Thrown<std::runtime_error>([&] { Run(); }), "Unable to load overlap peak deconvolution library.");
  EXPECT_TRUE(spectrum.overlapPeaks.empty());
  EXPECT_EQ(History(spectrum), "");
}

TEST_F(OPD, NeedsAnEngineBeforeItLooksForGroups) {
  FakeEngine::Registry().Register(OverlapPeakEngine::kClassId, nullptr);
  spectrum = SpectrumOfPeaks({{10, 15, 20, 1}});
  EXPECT_EQ(Thrown<std::runtime_error>([&] { Run(); }), "Unable to load overlap peak deconvolution library.");
  spectrum = TwoJoinedAndOne();
  spectrum.peaks[0].baselineAmpl = 100.0;
  EXPECT_EQ(Thrown<std::runtime_error>([&] { Run(); }), "Unable to load overlap peak deconvolution library.");
}

TEST_F(OPD, FitsCleanPeaksThatAreJoinedAsTheyAre) {
  spectrum = SpectrumOfPeaks({{10, 15, 20, 1}, {20, 25, 30, 1}});
  Run();
  EXPECT_TRUE(engine.estimates.empty());
  ASSERT_EQ(engine.fits.size(), 1U);
  EXPECT_EQ(engine.fits[0].apexes, (Indexes{5, 15}));
  EXPECT_NEAR(engine.fits[0].a3, 5.5 / 2.3548200450309493, 1e-12);
}

TEST_F(OPD, WhatIsWrongBeforeFittingLeavesTheRun) {
  spectrum.peaks[0].baselineAmpl = 100.0;
  EXPECT_EQ(Thrown<std::logic_error>([&] { Run(); }), "Amplitude less than baseline.");
  EXPECT_EQ(History(spectrum), "");
  spectrum = TwoJoinedAndOne();
  engine.estimate = [](auto&, auto&) -> std::int32_t { throw std::runtime_error("no estimates"); };
  EXPECT_EQ(Thrown<std::runtime_error>([&] { Run(); }), "no estimates");
}

TEST_F(OPD, FreezesTheSpectrum) {
  Run();
  EXPECT_EQ(RunCommand(SmoothParams(), spectrum), Failure(L"Unable to smooth."));
  EXPECT_EQ(RunCommand(PeakDetectParams(), spectrum), Failure(L"Unable to peak detect."));
  EXPECT_TRUE(RunCommand(CurveEval::AerosolFilter(), spectrum).ok);
}

TEST_F(OPD, OutOfMemoryIsInTheHistoryIfAndOnlyIfItRan) {
  for (std::size_t nth = 0;; ++nth) {
    spectrum = TwoJoinedAndOne();
    engine.fits.clear();
    engine.estimates.clear();
    Changed changed;
    std::wstring error;
    const FailingAllocation fault(nth);
    try {
      DoOPD(spectrum, changed, error);
    } catch (const std::bad_alloc&) {
    }
    EXPECT_EQ(spectrum.evals.size(), changed.overlapPeaks ? 1U : 0U) << nth;
    EXPECT_EQ(spectrum.CheckAllStatus(Curve::STATUS_OPD), changed.overlapPeaks) << nth;
    if (!fault.Failed()) break;
  }
}

TEST_F(OPD, IsACommand) {
  OPDParams params;
  params.SingleGroup = true;
  EXPECT_EQ(RunCommand(params, spectrum), Success("overlapPeaks"));
  EXPECT_EQ(spectrum.opdParams, params);
  EXPECT_EQ(Text(spectrum.overlapPeaks), "1:0@15 1:1@25 1:2@63 1:2@67");
  EXPECT_EQ(spectrum.evals.back(), CurveEval(params));
}

TEST_F(OPD, AsACommandFailsWithoutAMessageOnOtherCurves) {
  TestCurve curve = CurveOf("0 1 5");
  const TestCurve before = curve;
  EXPECT_EQ(RunCommand(OPDParams(), curve), Failure(L""));
  EXPECT_EQ(curve, before);
}

TEST_F(OPD, AsACommandOnOtherCurvesLeavesTheText) {
  TestCurve curve = CurveOf("0 1 5");
  Changed changed;
  std::wstring error = L"of before";
  EXPECT_FALSE(CurveEval(OPDParams()).Execute(curve, changed, error));
  EXPECT_EQ(error, L"of before");
}

TEST_F(OPD, EndsACompactChain) {
  OPDParams last;
  last.MaxPeaks = 3;
  const std::vector<CurveEval> chain = {CurveEval(OPDParams()), CurveEval(PeakDetectParams()),
                                        CurveEval(last), CurveEval(SmoothParams()),
                                        CurveEval(BaselineParams())};
  EXPECT_EQ(Names(CompactEval(chain)), "Smooth, Baseline, Peak Detect, OPD");
  EXPECT_EQ(CompactEval(chain).back(), CurveEval(last));
}

namespace {

Outcome Execute(Spectrum& spectrum) {
  Outcome outcome;
  Changed changed;
  outcome.ok = ExecuteOPD(spectrum, changed, outcome.error);
  outcome.changed = Flags(changed);
  return outcome;
}

}  // namespace

TEST_F(OPD, ExecutedDetectsThePeaksFirst) {
  spectrum = SpectrumOf(Values("1 1 1 1 5 9 20 60 90 60 20 9 5 1 1 1 1 1"));
  spectrum.baseline.clear();
  spectrum.noise.clear();
  EXPECT_EQ(Execute(spectrum), Success("baseline noise peaks overlapPeaks"));
  EXPECT_EQ(History(spectrum), "Baseline, Noise, Peak Detect, OPD");
}

TEST_F(OPD, ExecutedKeepsThePeaksThatThereAre) {
  EXPECT_EQ(Execute(spectrum), Success("overlapPeaks"));
  EXPECT_EQ(History(spectrum), "OPD");
}

TEST_F(OPD, ExecutedFailsAsThePeakDetectionDoes) {
  Spectrum empty;
  EXPECT_EQ(Execute(empty), Failure(L"Unable to baseline."));
}
