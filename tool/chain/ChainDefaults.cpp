#include <tool/chain/ChainDefaults.h>

#include <fmt/format.h>

#include <algorithm>
#include <cmath>

namespace TslTool {
namespace {

// Of a line of the quadrupole, m/z.
constexpr double kLineWidth = 0.6;
constexpr double kWindow = 1.1;       // widths
constexpr double kSegment = 40.0;     // widths
constexpr double kLeastWidth = 0.55;  // widths
constexpr double kLeastSmoothed = 4.0;
constexpr double kLeastLimited = 5.0;
constexpr double kManyWidths = 2200.0;
constexpr double kMostPoints = 1001.0;
// For noise that runs over neighbouring points, whose bumps are as wide as peaks and rather high.
constexpr std::uint32_t kLeastSegmentOfBumps = 1000;
constexpr std::uint32_t kLeastOfBumps = 8;
constexpr double kShortest = 50.0;  // points, to tell a peak from what lies beside it

std::string SmoothingFor(double width) {
  if (width < kLeastSmoothed) return "off";
  const double window = std::min(kWindow * width, kMostPoints);
  return fmt::format("savgol:{}:2", static_cast<std::uint32_t>(window) | 1U);
}

// To three digits, as it is shown.
double Rounded(double value) {
  const double scale = std::pow(10.0, 2.0 - std::floor(std::log10(value)));
  return std::round(value * scale) / scale;
}

std::uint32_t SignalToNoiseFor(double width, double points) {
  if (width < kLeastSmoothed) return 7;
  return points > kManyWidths * width ? 6 : 5;
}

std::string NothingSeen(const Preview& preview) {
  if (preview.points > 0.0 && preview.points < kShortest)
    return fmt::format("{:.0f} points are too few to tell how wide a peak is", preview.points);
  return "no peak stands out enough to tell its width";
}

// `width` in points.
ChainDefaults For(double width, const Preview& preview, std::optional<double> evenStep,
                  const std::string& reason) {
  ChainDefaults defaults;
  defaults.smooth = SmoothingFor(width);
  defaults.segment = static_cast<std::uint32_t>(std::lround(std::clamp(kSegment * width, 250.0, 4000.0)));
  defaults.sn = SignalToNoiseFor(width, preview.points);
  if (evenStep && width >= kLeastLimited) defaults.minWidth = Rounded(kLeastWidth * width * *evenStep);
  defaults.reason = reason;
  if (preview.isNoiseCorrelated) {
    defaults.segment = std::max(defaults.segment, kLeastSegmentOfBumps);
    defaults.sn = kLeastOfBumps;
    defaults.reason += ", noise runs over neighbouring points";
  }
  return defaults;
}

}  // namespace

ChainDefaults DefaultsFor(const Preview& preview, std::optional<double> mzStep) {
  if (preview.pointsAcross > 0.0)
    return For(preview.pointsAcross, preview, preview.evenStep,
               fmt::format("peaks are {:.1f} points wide", preview.pointsAcross));
  if (mzStep && *mzStep > 0.0)
    return For(kLineWidth / *mzStep, preview, *mzStep,
               fmt::format("lines of {} m/z; {}", kLineWidth, NothingSeen(preview)));
  return For(0.0, preview, std::nullopt, NothingSeen(preview));
}

}  // namespace TslTool
