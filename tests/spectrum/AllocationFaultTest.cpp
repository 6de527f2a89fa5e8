// Memory that runs out at any moment: each allocation of a piece of work fails in turn. The work ends in
// std::bad_alloc, or in a message where it promises one; what it works on stays sound; nothing is leaked.
//
// Tests: CreateSpectrum.cpp, PeakTable.cpp, tslbl/curve/Execute.cpp.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <RecordCheck.h>
#include <curve/FailingAllocations.h>
#include <tslbl/closed/common/Text.h>
#include <tslbl/curve/CommandTable.h>
#include <tslbl/curve/Execute.h>
#include <tslbl/detect/FindOnePeak.h>
#include <tslbl/spectrum/CountRate.h>
#include <tslbl/spectrum/CreateSpectrum.h>
#include <tslbl/spectrum/PeakTable.h>
#include <tune/Samples.h>
#include <cmath>
#include <memory>
#include <new>

namespace {

using namespace TslBL;
using namespace tests;

// Calls `work(subject)` on fresh subjects, failing one allocation more each time until none is left to fail;
// `check(subject, failed)` sees each. Returns how many allocations there were.
template <class Make, class Work, class Check>
std::size_t FailEach(Make make, Work work, Check check) {
  auto warm = make();  // what is made once in the life of a process
  work(warm);
  for (std::size_t nth = 0;; ++nth) {
    const std::ptrdiff_t taken = BlocksTaken();
    bool failed = false;
    {
      auto subject = make();
      try {
        const FailingAllocation fault(nth);
        work(subject);
        failed = fault.Failed();
      } catch (const std::bad_alloc&) {
        failed = true;
      }
      check(subject, failed);
    }
    EXPECT_EQ(BlocksTaken(), taken) << "leaked at allocation " << nth;
    if (!failed) return nth;
  }
}

Spectrum Ions() {
  Spectrum spectrum;
  for (int i = 0; i < 400; ++i) {
    const double t = (i % 80 - 40) / 5.0;
    spectrum.xAxis.push_back(100.0 + 0.05 * i);
    spectrum.yAxis.push_back(std::floor(20.0 + i % 7 + 500.0 * std::exp(-t * t)));
  }
  spectrum.AddStatus(Curve::STATUS_X);
  spectrum.AddStatus(Curve::STATUS_Y);
  return spectrum;
}

Spectrum Evaluated() {
  Spectrum spectrum = Ions();
  Changed changed;
  std::wstring error;
  ExecutePeakDetect(spectrum, changed, error);
  return spectrum;
}

void ExpectSound(const Spectrum& spectrum) {
  EXPECT_EQ(spectrum.yAxis.size(), 400U);
  EXPECT_EQ(spectrum.xAxis.size(), 400U);
  if (spectrum.CheckAllStatus(Curve::STATUS_BASELINE)) {
    EXPECT_EQ(spectrum.baseline.size(), 400U);
  }
  if (spectrum.CheckAllStatus(Curve::STATUS_NOISE)) {
    EXPECT_EQ(spectrum.noise.size(), 400U);
  }
  const auto rows = static_cast<std::int32_t>(spectrum.peaks.size());
  for (const std::int32_t row :
       {spectrum.largestAreaIdx, spectrum.largestMaxIdx, spectrum.largestCentroidIdx}) {
    EXPECT_LT(row, rows);
    EXPECT_EQ(row >= 0, rows > 0);
  }
}

std::vector<CurveEval> EachCommand() {
  ThresholdParams threshold;
  threshold.Value = 30.0;
  SmoothParams twice = SmoothParams::DefaultMS();
  twice.Passes = 2;
  std::vector<CurveEval> commands = {CurveEval(SmoothParams::DefaultMS()), CurveEval(twice),
                                     CurveEval(threshold), CurveEval(CurveEval::AerosolFilter())};
  for (const auto alg : {SmoothParams::Mean, SmoothParams::Median, SmoothParams::Gaussian}) {
    SmoothParams smooth;
    smooth.Alg = alg;
    commands.emplace_back(smooth);
  }
  for (const auto alg : {BaselineParams::VFBaseline, BaselineParams::Adaptive, BaselineParams::LinearFitSD}) {
    BaselineParams baseline;
    baseline.Alg = alg;
    commands.emplace_back(baseline);
  }
  using Noises = NoiseParams::AutoAlgs;
  for (const auto alg : {Noises::VFNoise, Noises::Dispersion, Noises::Median, Noises::LinearFitSD}) {
    NoiseParams noise;
    noise.AlgAuto = alg;
    commands.emplace_back(noise);
  }
  return commands;
}

TEST(AllocationFault, ACommandIsInTheHistoryIfAndOnlyIfItRan) {
  for (const CurveEval& command : EachCommand()) {
    SCOPED_TRACE(TslCommon::ToUtf8(command.TypeText()));
    const Spectrum before = Ions();
    const auto run = [&](Spectrum& spectrum) {
      Changed changed;
      std::wstring error;
      command.Execute(spectrum, changed, error);
    };
    FailEach(Ions, run, [&](const Spectrum& spectrum, bool failed) {
      ExpectSound(spectrum);
      EXPECT_EQ(spectrum.evals.size(), failed ? 0U : 1U);
      if (failed) {
        EXPECT_EQ(spectrum.yAxis, before.yAxis);
        EXPECT_EQ(spectrum.status, before.status);
      }
    });
  }
}

// A spectrum on which every command may run, with values of all that commands compute.
Spectrum Complete() {
  Spectrum spectrum = Evaluated();
  Changed changed;
  std::wstring error;
  ExecuteThreshold(spectrum, changed, error);
  return spectrum;
}

TEST(AllocationFault, ACommandThatFailedLeftAllThatTheCurveHolds) {
  std::vector<CurveEval> commands = EachCommand();
  // A group of overlapping peaks whose fit runs out of memory is lost, and the command has run: see OPDTest.
  // Charge states are for another kind of spectrum: see CSDeconTest.
  for (const CommandRow& row : CommandTable())
    if (row.type != EvalType::Empty && row.type != EvalType::OPD && row.type != EvalType::CSDecon)
      commands.push_back(row.make());
  const Spectrum before = Complete();
  for (const CurveEval& command : commands) {
    SCOPED_TRACE(TslCommon::ToUtf8(command.TypeText()));
    const auto run = [&](Spectrum& spectrum) {
      Changed changed;
      std::wstring error;
      command.Execute(spectrum, changed, error);
    };
    FailEach(Complete, run, [&](const Spectrum& spectrum, bool failed) {
      EXPECT_EQ(spectrum.evals.size(), before.evals.size() + (failed ? 0 : 1));
      if (!failed) return;
      EXPECT_EQ(spectrum.yAxis, before.yAxis);
      EXPECT_EQ(spectrum.baseline, before.baseline);
      EXPECT_EQ(spectrum.noise, before.noise);
      EXPECT_EQ(spectrum.peaks, before.peaks);
      EXPECT_EQ(spectrum.status, before.status);
    });
  }
}

TEST(AllocationFault, AFailedPeakDetectionLeavesTheTableAndTheHistory) {
  for (const auto algorithm : {PeakDetectParams::Sequential, PeakDetectParams::Sorted}) {
    PeakDetectParams params;
    params.FindFeatureAlgorithm = algorithm;
    const Spectrum before = Evaluated();
    ASSERT_GT(before.peaks.size(), 3U);
    const auto run = [&](Spectrum& spectrum) {
      Changed changed;
      std::wstring error;
      CurveEval(params).Execute(spectrum, changed, error);
    };
    const std::size_t allocations = FailEach(Evaluated, run, [&](const Spectrum& spectrum, bool failed) {
      ExpectSound(spectrum);
      EXPECT_EQ(spectrum.evals.size(), before.evals.size() + (failed ? 0 : 1));
      if (failed) {
        EXPECT_EQ(spectrum.peaks, before.peaks);
      }
    });
    EXPECT_GT(allocations, 4U);
  }
}

TEST(AllocationFault, AChainStopsAtACommandBoundary) {
  const std::vector<CurveEval> chain = {CurveEval(SmoothParams::DefaultMS()), CurveEval(BaselineParams()),
                                        CurveEval(NoiseParams()), CurveEval(PeakDetectParams::DefaultMS())};
  std::vector<Spectrum> stages = {Ions()};
  for (const CurveEval& command : chain) {
    Changed changed;
    std::wstring error;
    stages.push_back(stages.back());
    ASSERT_TRUE(command.Execute(stages.back(), changed, error));
  }
  const auto run = [&](Spectrum& spectrum) {
    Changed changed;
    std::wstring error;
    ExecuteCurveEvals(spectrum, chain, changed, error);
  };
  FailEach(Ions, run, [&](const Spectrum& spectrum, bool) {
    ExpectSound(spectrum);
    const Spectrum& stage = stages.at(spectrum.evals.size());
    EXPECT_EQ(spectrum.evals, stage.evals);
    EXPECT_EQ(spectrum.yAxis, stage.yAxis);
    EXPECT_EQ(spectrum.status, stage.status);
    EXPECT_EQ(spectrum.peaks, stage.peaks);
  });
}

TEST(AllocationFault, ACascadeLeavesASoundCurve) {
  using Step = bool (*)(Curve&, Changed&, std::wstring&);
  for (const Step step : {Step(ExecuteSmooth), Step(ExecuteBaseline), Step(ExecuteBaselineSubtract),
                          Step(ExecuteNoise), Step(ExecuteThresholdSubtract), Step(ExecutePeakDetect)}) {
    const auto run = [&](Spectrum& spectrum) {
      Changed changed;
      std::wstring error;
      step(spectrum, changed, error);
    };
    FailEach(Evaluated, run, [](const Spectrum& spectrum, bool) { ExpectSound(spectrum); });
  }
}

TEST(AllocationFault, APeakByHandIsAddedOrNot) {
  const Spectrum before = Evaluated();
  const auto run = [](Spectrum& spectrum) { FindOnePeak(spectrum, 40); };
  FailEach(Evaluated, run, [&](const Spectrum& spectrum, bool failed) {
    ExpectSound(spectrum);
    EXPECT_EQ(spectrum.peaks.size(), before.peaks.size() + (failed ? 0 : 1));
  });
}

TEST(AllocationFault, TheReportOfASpectrumLeavesIt) {
  const Spectrum before = Evaluated();
  const auto run = [](Spectrum& spectrum) {
    CreateMZPeakTable(spectrum);
    TslCommon::XMLBuilder builder;
    AddCurvePeaks(spectrum, builder);
    CompactEval(spectrum.evals);
    std::wstring text;
    CurveEvalsText(spectrum.evals, text);
    const std::unique_ptr<Curve> copy(spectrum.Clone());
  };
  FailEach(Evaluated, run, [&](const Spectrum& spectrum, bool) { EXPECT_TRUE(spectrum == before); });
}

// Reads the bytes of `written` over a record of defaults.
template <class R>
void CheckReading(const R& written) {
  const std::string bytes = ToBytes(written);
  const auto read = [&](R& record) { ReadBytes(bytes, record); };
  FailEach([] { return R(); }, read,
           [&](const R& record, bool failed) { EXPECT_TRUE(record == (failed ? R() : written)); });
}

TEST(AllocationFault, ARecordIsReadOrStaysAsItWas) {
  CheckReading(SampleTune());
  CheckReading(Evaluated());
  CheckReading(CurveEval(SmoothParams::DefaultMS()));
  RawSpectrum raw;
  raw.info.Id = 3;
  raw.counts.assign(20000, 7.0);
  CheckReading(raw);
}

TEST(AllocationFault, BytesAreWrittenWholeOrNotAtAll) {
  const std::string whole = ToBytes(SampleTune());
  const auto write = [](std::string& bytes) { bytes = ToBytes(SampleTune()); };
  const std::size_t allocations =
      FailEach([] { return std::string(); }, write,
               [&](const std::string& bytes, bool failed) { EXPECT_EQ(bytes, failed ? "" : whole); });
  EXPECT_GT(allocations, 4U);
}

TEST(AllocationFault, ADocumentIsWrittenWholeOrNotAtAll) {
  const std::wstring whole = ToXml(SampleTune());
  const auto write = [](std::wstring& text) { text = ToXml(SampleTune()); };
  FailEach([] { return std::wstring(); }, write,
           [&](const std::wstring& text, bool failed) { EXPECT_EQ(text, failed ? L"" : whole); });
}

TEST(AllocationFault, ADocumentIsReadOrSaidToFail) {
  const std::wstring text = ToXml(SampleTune());
  const auto read = [&](Tune& tune) { tune = FromXml<Tune>(text); };
  FailEach([] { return Tune(); }, read,
           [&](const Tune& tune, bool failed) { EXPECT_TRUE(failed || ToXml(tune) == text); });
}

TEST(AllocationFault, ASpectrumIsMadeOfCountsOrNot) {
  Tune tune = SampleTune();
  tune.MZCalPts = {MZCalPt(), MZCalPt()};
  tune.MZCalPts[1].MZ = 1000.0;
  tune.MZCalPts[1].MassDAC = 30000.0;
  RawSpectrum raw;
  raw.counts.assign(300, 5.0);
  const auto make = [] { return std::unique_ptr<Spectrum>(); };
  const auto run = [&](std::unique_ptr<Spectrum>& spectrum) {
    std::vector<double> rates = raw.counts;
    AssignCountRateAmpl(rates, tune, nullptr);
    spectrum.reset(CreateSpectrum(tune, raw, nullptr));
    MZAssign(*spectrum);
  };
  FailEach(make, run, [](const std::unique_ptr<Spectrum>& spectrum, bool failed) {
    if (spectrum != nullptr) {
      EXPECT_EQ(spectrum->xAxis.size(), 300U);
    }
    EXPECT_TRUE(failed || spectrum != nullptr);
  });
}

}  // namespace
