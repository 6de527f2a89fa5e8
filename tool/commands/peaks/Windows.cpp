#include <tool/commands/peaks/Windows.h>

#include <tool/io/Gaps.h>
#include <algorithm>
#include <vector>

namespace TslTool {
namespace {

constexpr double kGap = 3.5;  // mean steps, below which there is none

bool MayHaveGaps(const std::vector<double>& x) {
  double widest = 0.0;
  for (std::size_t i = 1; i < x.size(); ++i) widest = std::max(widest, x[i] - x[i - 1]);
  return x.size() > 2 && widest * static_cast<double>(x.size() - 1) > kGap * (x.back() - x.front());
}

struct Window {
  std::uint32_t first;
  std::uint32_t last;

  std::uint32_t Points() const { return last - first + 1; }
};

std::uint32_t SmoothedOver(const TslBL::Spectrum& spectrum) {
  std::uint32_t most = 0;
  if (spectrum.CheckAllStatus(TslBL::Curve::STATUS_SMOOTHED))
    for (const TslBL::SmoothStep& step : spectrum.smoothParams.Steps) most = std::max(most, step.Size);
  return most;
}

Window WindowOf(std::uint32_t point, const std::vector<Gap>& gaps, std::size_t points) {
  const auto behind = std::ranges::upper_bound(gaps, point, {}, &Gap::at);
  return {static_cast<std::uint32_t>(behind == gaps.begin() ? 0 : behind[-1].at),
          static_cast<std::uint32_t>((behind == gaps.end() ? points : behind->at) - 1)};
}

// Whether the window cuts the peak above half its height.
bool EndWith(const Window& window, TslBL::PeakInfo& peak) {
  peak.startIdx = std::max(peak.startIdx, window.first);
  peak.endIdx = std::min(peak.endIdx, window.last);
  const double left = std::max<double>(peak.halfHeightLeftIdx, window.first);
  const double right = std::min<double>(peak.halfHeightRightIdx, window.last);
  const bool isCut = left > peak.halfHeightLeftIdx || right < peak.halfHeightRightIdx;
  peak.halfHeightLeftIdx = left;
  peak.halfHeightRightIdx = right;
  return isCut;
}

}  // namespace

std::optional<double> EndPeaksWithTheirWindows(TslBL::Spectrum& spectrum) {
  if (!MayHaveGaps(spectrum.xAxis)) return std::nullopt;
  const std::vector<Gap> gaps = GapsOf(spectrum.xAxis);
  if (gaps.empty()) return std::nullopt;
  const std::uint32_t least = 2 * SmoothedOver(spectrum);
  std::optional<double> first;
  for (TslBL::PeakInfo& peak : spectrum.peaks) {
    const Window window = WindowOf(peak.apexIdx, gaps, spectrum.xAxis.size());
    const bool isCut = EndWith(window, peak);
    if ((isCut || window.Points() < least) && !first) first = spectrum.xAxis[peak.apexIdx];
  }
  return first;
}

}  // namespace TslTool
