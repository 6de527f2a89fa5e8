#include <tool/commands/overlap/WidthCheck.h>

#include <fmt/format.h>

#include <tool/chain/SmoothFilter.h>
#include <cmath>

namespace TslTool {
namespace {

constexpr std::uint64_t kLeastPeaks = 10;
constexpr double kUsual = 1.1;  // the window that the chain takes, in widths of a peak
constexpr double kFarWider = 1.5;
constexpr double kLeastWindow = 5.0;

}  // namespace

void WidthCheck::Add(const TslBL::Spectrum& spectrum) {
  const auto filter = FilterOf(spectrum);
  if (filter == nullptr) return;
  for (const TslBL::OverlapPeakInfo& peak : spectrum.overlapPeaks) {
    if (!(peak.Height > 0.0)) continue;
    ++peaks_;
    widths_ += std::abs(peak.FWHM);
    windows_ += static_cast<double>(filter->weights.size());
  }
}

std::string WidthCheck::Warning() const {
  const double usual = std::max(kUsual * widths_, kLeastWindow * static_cast<double>(peaks_));
  if (peaks_ < kLeastPeaks || windows_ <= kFarWider * usual) return "";
  const double mean = static_cast<double>(peaks_);
  const auto suitable = static_cast<int>(usual / mean) | 1;
  return fmt::format(
      "fitted peaks are {:.1f} points wide in the mean, and smoothing over {:.0f} points looks for wider "
      "ones; "
      "--smooth savgol:{}:2 suits them",
      widths_ / mean, windows_ / mean, suitable);
}

}  // namespace TslTool
