#include <tool/commands/peaks/EvaluationRemarks.h>

#include <fmt/format.h>

#include <algorithm>

namespace TslTool {
namespace {

// Below it QSignalToNoise knows no ratio.
constexpr double kLeastNoise = 1e-8;

bool LosesAmplitudes(const LoadedSpectrum& loaded, double lift) {
  return loaded.spectrum->CheckAllStatus(TslBL::Curve::STATUS_SMOOTHED) &&
         std::ranges::any_of(loaded.measured, [=](double amplitude) { return amplitude + lift < 0.0; });
}

bool HasNoiselessPeak(const TslBL::Spectrum& spectrum) {
  return std::ranges::any_of(spectrum.peaks,
                             [](const TslBL::PeakInfo& peak) { return peak.noiseAmpl < kLeastNoise; });
}

// Of a handful of points, which any usual window exceeds, nobody expects a smooth curve.
constexpr std::size_t kLeastPoints = 25;

const std::vector<TslBL::SmoothStep>& WindowsOf(const TslBL::Spectrum& spectrum) {
  static const std::vector<TslBL::SmoothStep> none;
  return spectrum.CheckAllStatus(TslBL::Curve::STATUS_SMOOTHED) ? spectrum.smoothParams.Steps : none;
}

bool IsShorterThanItsWindow(const TslBL::Spectrum& spectrum) {
  const std::size_t points = spectrum.xAxis.size();
  return points >= kLeastPoints &&
         std::ranges::any_of(WindowsOf(spectrum),
                             [&](const TslBL::SmoothStep& step) { return step.Size > points; });
}

// 0 if there is none, or the smoothing takes it as it is.
std::uint32_t EvenWidth(const TslBL::Spectrum& spectrum) {
  using TslBL::SmoothParams;
  const bool mustBeOdd = spectrum.smoothParams.Alg == SmoothParams::SavitzkyGolay ||
                         spectrum.smoothParams.Alg == SmoothParams::Median;
  const auto& windows = WindowsOf(spectrum);
  const auto even =
      std::ranges::find_if(windows, [](const TslBL::SmoothStep& step) { return step.Size % 2 == 0; });
  return mustBeOdd && even != windows.end() ? even->Size : 0;
}

std::string Counted(std::uint64_t count, const std::string& what) {
  return fmt::format("{} {} {}", count, count == 1 ? "spectrum" : "spectra", what);
}

}  // namespace

void EvaluationRemarks::Look(const LoadedSpectrum& loaded, double lift) {
  if (LosesAmplitudes(loaded, lift)) ++cut_;
  if (HasNoiselessPeak(*loaded.spectrum)) ++noiseless_;
  if (IsShorterThanItsWindow(*loaded.spectrum)) ++short_;
  if (const std::uint32_t width = EvenWidth(*loaded.spectrum)) evenWidth_ = width;
}

std::vector<std::string> EvaluationRemarks::Texts() const {
  std::vector<std::string> texts;
  if (cut_ > 0)
    texts.push_back(
        Counted(cut_, "with amplitudes below 0, which smoothing takes for 0; --smooth off keeps them"));
  if (noiseless_ > 0)
    texts.push_back(
        Counted(noiseless_,
                "with peaks where the noise is below 1e-8, so that --sn lets them all pass; if the "
                "amplitudes are so small, --scale 1e12 or the like multiplies them"));
  if (short_ > 0)
    texts.push_back(
        Counted(short_, "shorter than the window of the smoothing, which is cut to their length"));
  if (const std::uint32_t width = evenWidth_)
    texts.push_back(
        fmt::format("a window of {} points is smoothed with {}, the next odd number", width, width + 1));
  return texts;
}

}  // namespace TslTool
