// The evaluation chain: arbitrary amplitudes on an arbitrary axis, arbitrary parameters at and beyond
// their limits, commands in arbitrary order. Whatever comes, each command succeeds or says why not,
// the curve keeps one entry a point, and its peaks lie inside it, in order.

#include <fuzz/Records.h>
#include <tslbl/chargestate/DeconSpectrum.h>
#include <tslbl/closed/common/Text.h>
#include <tslbl/curve/CommandTable.h>
#include <tslbl/curve/Execute.h>
#include <tslbl/detect/FindOnePeak.h>
#include <tslbl/spectrum/PeakTable.h>
#include <algorithm>
#include <cmath>
#include <random>
#include <stdexcept>
#include <vector>

using namespace TslBL;
using namespace fuzz;

namespace {

constexpr std::size_t kMostPoints = 2000;
constexpr std::size_t kMostCommands = 8;
// The library smooths as often, with as high an order and with as many widths as it is told to: what is
// bounded here is the time that one input takes.
constexpr std::uint32_t kMostPasses = 2;
constexpr std::uint32_t kHighestOrder = 20;
constexpr std::uint32_t kWidestOfSeveral = 300;
constexpr std::uint32_t kMostPeaksOfAGroup = 6;

constexpr double kInfinity = std::numeric_limits<double>::infinity();
constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
constexpr double kOdd[] = {kNaN, kInfinity, -kInfinity, 1e308, -1e308, 5e-324,
                           -0.0, 1e-300,    -5.0,       0.5,   4.3e9,  1e15};

// A byte is an amplitude: small counts as often as not, else what no detector delivers.
double AmplitudeOf(std::uint8_t byte) {
  if (byte < 200) return byte;
  return kOdd[byte % std::size(kOdd)];
}

std::vector<double> FromBytes(Input& input, std::size_t points) {
  std::vector<double> y(points);
  for (double& value : y) value = AmplitudeOf(input.Take<std::uint8_t>());
  return y;
}

std::vector<double> FromDoubles(Input& input, std::size_t points) {
  std::vector<double> y(std::min<std::size_t>(points, 64));
  for (double& value : y) value = input.Take<double>();
  return y;
}

// Peaks on a noisy background, with a few odd values in it.
std::vector<double> Simulated(Input& input, std::size_t points) {
  std::minstd_rand random(input.Take<std::uint16_t>());
  const auto level = static_cast<double>(input.Below(100));
  const auto width = 1.0 + static_cast<double>(input.Below(30));
  const double height = std::pow(10.0, static_cast<double>(input.Below(7)));
  const std::size_t spacing = 5 + input.Below(250);
  std::vector<double> y(points);
  for (std::size_t i = 0; i < points; ++i) {
    const double t = (static_cast<double>(i % spacing) - static_cast<double>(spacing) / 2) / width;
    const double noise = static_cast<double>(random() % 1000) / 500.0 - 1.0;
    y[i] = std::floor(level + std::sqrt(level) * noise + height * std::exp(-t * t));
  }
  for (std::size_t odd = input.Below(4); odd > 0 && points > 0; --odd)
    y[input.Take<std::uint16_t>() % points] = kOdd[input.Below(std::size(kOdd))];
  return y;
}

std::vector<double> Amplitudes(Input& input) {
  const std::size_t points = input.Take<std::uint16_t>() % (kMostPoints + 1);
  switch (input.Below(4)) {
    case 0:
      return FromBytes(input, std::min(points, input.Rest().size()));
    case 1:
      return FromDoubles(input, points);
    default:
      return Simulated(input, points);
  }
}

// Mostly what a creator owes: one ascending x a point.
std::vector<double> Axis(Input& input, std::size_t points) {
  std::vector<double> x(points);
  const std::size_t kind = input.Below(8);
  double at = kind < 3 ? 100.0 : 0.0;
  for (double& value : x) {
    value = at;
    at += kind < 3 ? 0.05 : kind < 5 ? 1.0 : 1e-3 * static_cast<double>(1 + input.Take<std::uint8_t>());
  }
  if (kind == 6)
    for (double& value : x) value = AmplitudeOf(input.Take<std::uint8_t>());
  if (kind == 7) x.resize(input.Below(2 * points + 1));
  return x;
}

SmoothParams Smoothing(Input& input) {
  SmoothParams p;
  p.Passes = std::min(input.Integer(), kMostPasses);
  p.Order = std::min(input.Integer(), kHighestOrder);
  p.Alg = static_cast<SmoothParams::Algs>(input.Below(5));
  p.StepTrans = static_cast<SmoothParams::StepTransitions>(input.Below(3));
  p.Steps.resize(input.Below(5));
  for (SmoothStep& step : p.Steps) step = {input.Real(), input.Integer()};
  if (p.Steps.size() > 1)
    for (SmoothStep& step : p.Steps) step.Size = std::min(step.Size, kWidestOfSeveral);
  return p;
}

BaselineParams BaselineOf(Input& input) {
  BaselineParams p;
  p.Auto = input.Below(4) != 0;
  p.Alg = static_cast<BaselineParams::Algs>(input.Below(4));
  p.SegSize = input.Integer();
  p.Window = input.Integer();
  p.Points = input.Integer();
  p.Width = input.Integer();
  p.ManVal = input.Real();
  return p;
}

NoiseParams NoiseOf(Input& input) {
  NoiseParams p;
  p.Auto = input.Below(4) != 0;
  p.AlgAuto = static_cast<NoiseParams::AutoAlgs>(input.Below(5));
  p.SegSize = input.Integer();
  p.Median = input.Integer();
  p.Points = input.Integer();
  p.Width = input.Integer();
  p.AlgMan = static_cast<NoiseParams::ManAlgs>(input.Below(3));
  p.Start = input.Real();
  p.End = input.Real();
  return p;
}

PeakDetectParams PeakSearch(Input& input) {
  PeakDetectParams p;
  p.FullSearch = input.Below(4) != 0;
  p.SearchStart = input.Real();
  p.SearchEnd = input.Real();
  const auto inUse = input.Take<std::uint16_t>();
  bool* const flags[] = {&p.SNInUse,      &p.ThresholdInUse, &p.RelAmplInUse, &p.AbsAreaInUse,
                         &p.RelAreaInUse, &p.FWHMGTInUse,    &p.FWHMLTInUse,  &p.PeakCntInUse};
  for (std::size_t i = 0; i < std::size(flags); ++i) *flags[i] = (inUse >> i & 1) != 0;
  p.SN = input.Integer();
  for (double* limit : {&p.RelAmpl, &p.AbsArea, &p.RelArea, &p.FWHMGT, &p.FWHMLT, &p.MaxValley, &p.Retention})
    *limit = input.Real();
  p.PeakCnt = input.Integer();
  p.RetentionType = static_cast<PeakDetectParams::RetentionTypes>(input.Below(3));
  p.FindFeatureAlgorithm = static_cast<PeakDetectParams::FindFeatureAlgorithms>(input.Below(3));
  return p;
}

ThresholdParams ThresholdOf(Input& input) {
  ThresholdParams p;
  p.Value = input.Real();
  return p;
}

OPDParams OverlapOf(Input& input) {
  OPDParams p;
  p.FullRange = input.Below(4) != 0;
  p.Ranges.resize(input.Below(3));
  for (OPDRange& range : p.Ranges) range = {input.Below(4) != 0, input.Real(), input.Real()};
  for (std::uint32_t* limit :
       {&p.MinAmplPercentCmnEndPt, &p.ResolutionThreshold, &p.NumSmoothPts, &p.MinPeakAmplitude})
    *limit = input.Integer();
  p.MinDeltaCentroidPkMax = input.Real();
  p.MaxPeaks = std::min(input.Integer(), kMostPeaksOfAGroup);
  p.FittingFunc = static_cast<OPDParams::FittingFuncs>(input.Below(3));
  p.SingleGroup = input.Below(4) == 0;
  return p;
}

template <class Params, Params (*params)(Input&)>
CurveEval With(Input& input) {
  return CurveEval(params(input));
}

// Commands with parameters; peak detection twice, as it has the most to go wrong.
constexpr struct {
  EvalType type;
  CurveEval (*make)(Input& input);
} kWithParams[] = {
    {EvalType::Smooth, With<SmoothParams, Smoothing>},
    {EvalType::Baseline, With<BaselineParams, BaselineOf>},
    {EvalType::Noise, With<NoiseParams, NoiseOf>},
    {EvalType::PeakDetect, With<PeakDetectParams, PeakSearch>},
    {EvalType::PeakDetect, With<PeakDetectParams, PeakSearch>},
    {EvalType::Threshold, With<ThresholdParams, ThresholdOf>},
    {EvalType::OPD, With<OPDParams, OverlapOf>},
};

// All other commands that do something, with default parameters if they have any.
std::vector<CommandRow> Others() {
  std::vector<CommandRow> rows(CommandTable().begin(), CommandTable().end());
  std::erase_if(rows, [](const CommandRow& row) {
    return row.type == EvalType::Empty ||
           std::ranges::any_of(kWithParams, [&](const auto& with) { return with.type == row.type; });
  });
  return rows;
}

CurveEval Command(Input& input) {
  static const std::vector<CommandRow> others = Others();
  const std::size_t kind = input.Below(std::size(kWithParams) + others.size());
  return kind < std::size(kWithParams) ? kWithParams[kind].make(input)
                                       : others[kind - std::size(kWithParams)].make();
}

// Runs it, with an exception as a failure: overlap peak deconvolution refuses peaks without height so.
template <class Work>
bool RunOrRefuse(Work work, std::wstring& error) {
  try {
    return work();
  } catch (const std::logic_error& e) {
    error = TslCommon::TslNarrowToWideStr(e.what());
    return false;
  }
}

// A chain gives to the bit what its commands give one by one, also where they share work.
bool RunChain(Input& input, DeconSpectrum& spectrum, std::wstring& error) {
  std::vector<CurveEval> chain;
  for (std::size_t left = 1 + input.Below(4); left > 0; --left) chain.push_back(Command(input));
  DeconSpectrum alone = spectrum;
  Changed changed;
  std::wstring errorAlone;
  const auto runAlone = [&](const CurveEval& command) { return command.Execute(alone, changed, errorAlone); };
  const bool ran = RunOrRefuse([&] { return std::ranges::all_of(chain, runAlone); }, errorAlone);
  Changed changedByChain;
  const auto runChain = [&] { return ExecuteCurveEvals(spectrum, chain, changedByChain, error); };
  Require(RunOrRefuse(runChain, error) == ran && error == errorAlone, "a chain ends as its commands do");
  Require(ToBytes(spectrum) == ToBytes(alone), "a chain gives what its commands give");
  return ran;
}

// Runs one command or a chain, or a step with what depends on it, or picks a peak by hand, where to find
// none is no failure.
bool Run(Input& input, DeconSpectrum& spectrum, std::wstring& error) {
  using Step = bool (*)(Curve&, Changed&, std::wstring&);
  constexpr Step kSteps[] = {ExecuteSmooth,    ExecuteBaseline,  ExecuteBaselineSubtract,
                             ExecuteNoise,     ExecuteThreshold, ExecuteThresholdSubtract,
                             ExecutePeakDetect};
  Changed changed;
  const std::size_t kind = input.Below(16);
  if (kind < std::size(kSteps)) return kSteps[kind](spectrum, changed, error);
  if (kind == std::size(kSteps)) {
    const std::int32_t row = FindOnePeak(spectrum, input.Integer());
    Require(row < static_cast<std::int32_t>(spectrum.peaks.size()), "a peak by hand is a row of the table");
    return true;
  }
  if (kind <= std::size(kSteps) + 3) return RunChain(input, spectrum, error);
  const CurveEval command = Command(input);
  return RunOrRefuse([&] { return command.Execute(spectrum, changed, error); }, error);
}

void RequireRow(const Spectrum& spectrum, std::int32_t row) {
  Require(row >= -1 && row < static_cast<std::int32_t>(spectrum.peaks.size()), "the largest peak is a row");
  Require((row == -1) == spectrum.peaks.empty(), "there is a largest peak where there are peaks");
}

void RequirePeakInside(const PeakInfo& peak, double last) {
  Require(peak.startIdx <= peak.apexIdx && peak.apexIdx <= peak.endIdx, "start, apex and end are in order");
  Require(peak.endIdx <= last, "a peak ends inside the curve");
  for (const double index : {peak.maxIdx, peak.centroidIdx, peak.halfHeightLeftIdx, peak.halfHeightRightIdx,
                             peak.areaStartIdx, peak.areaEndIdx})
    Require(index >= 0.0 && index <= last, "what describes a peak lies inside the curve");
}

void RequireSound(const Spectrum& spectrum, std::size_t points) {
  Require(spectrum.yAxis.size() == points, "the curve keeps its points");
  for (const PeakInfo& peak : spectrum.peaks) RequirePeakInside(peak, static_cast<double>(points) - 1.0);
  Require(std::is_sorted(spectrum.overlapPeaks.begin(), spectrum.overlapPeaks.end()), "overlap peaks ascend");
  Require(std::is_sorted(spectrum.peaks.begin(), spectrum.peaks.end()), "peaks ascend");
  for (const std::int32_t row :
       {spectrum.largestAreaIdx, spectrum.largestMaxIdx, spectrum.largestCentroidIdx})
    RequireRow(spectrum, row);
}

// All that is made of a result.
void Report(const Spectrum& spectrum) {
  Require(CreateMZPeakTable(spectrum).size() == spectrum.peaks.size() + spectrum.overlapPeaks.size(),
          "each peak is a row in m/z");
  TslCommon::XMLBuilder document;
  AddCurvePeaks(spectrum, document);
  Spectrum again;
  Require(AcceptsBytes(ToBytes(spectrum), again), "an evaluated spectrum is read");
  Require(ToBytes(again) == ToBytes(spectrum), "an evaluated spectrum comes back");
  Accepts([&] { CompactEval(spectrum.evals); });
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  Input input(data, size);
  const std::uint8_t status = input.Take<std::uint8_t>();
  const std::size_t commands = 1 + input.Below(kMostCommands);
  DeconSpectrum spectrum;
  spectrum.yAxis = Amplitudes(input);
  spectrum.xAxis = Axis(input, spectrum.yAxis.size());
  // A creator that sets no status, or one too many, now and then.
  spectrum.status = status < 240 ? Curve::STATUS_X | Curve::STATUS_Y : status;
  const std::size_t points = spectrum.yAxis.size();
  for (std::size_t i = 0; i < commands; ++i) {
    std::wstring error;
    if (!Run(input, spectrum, error)) Require(!error.empty(), "a failure has a message");
    RequireSound(spectrum, points);
  }
  Report(Spectrum(spectrum));  // what has been deconvolved is not read back
  return 0;
}
