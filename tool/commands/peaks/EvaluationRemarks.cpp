#include <tool/commands/peaks/EvaluationRemarks.h>

#include <fmt/format.h>

#include <algorithm>

namespace TslTool {
namespace {

// Below it QSignalToNoise knows no ratio.
constexpr double kLeastNoise = 1e-8;

bool LosesAmplitudes(const LoadedSpectrum& loaded) {
  return loaded.spectrum->CheckAllStatus(TslBL::Curve::STATUS_SMOOTHED) &&
         std::ranges::any_of(loaded.measured, [](double amplitude) { return amplitude < 0.0; });
}

bool HasNoiselessPeak(const TslBL::Spectrum& spectrum) {
  return std::ranges::any_of(spectrum.peaks,
                             [](const TslBL::PeakInfo& peak) { return peak.noiseAmpl < kLeastNoise; });
}

std::string Counted(std::uint64_t count, const std::string& what) {
  return fmt::format("{} {} {}", count, count == 1 ? "spectrum" : "spectra", what);
}

}  // namespace

void EvaluationRemarks::Look(const LoadedSpectrum& loaded) {
  if (LosesAmplitudes(loaded)) ++cut_;
  if (HasNoiselessPeak(*loaded.spectrum)) ++noiseless_;
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
  return texts;
}

}  // namespace TslTool
