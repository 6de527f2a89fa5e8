#include <tool/commands/chrom/ChromDefaults.h>

#include <fmt/format.h>

#include <tslbl/closed/math/Median.h>
#include <tslbl/closed/math/baseline/Baseline.h>
#include <tslbl/closed/math/peak/TypicalWidth.h>
#include <algorithm>
#include <cmath>
#include <utility>

namespace TslTool {
namespace {

constexpr double kWindow = 0.5;         // widths
constexpr double kWeakWindow = 0.9;     // widths, where noise would part peaks
constexpr double kWeak = 12.0;          // strength
constexpr double kNoiseSegment = 40.0;  // widths
constexpr double kBaseSegment = 3.0;    // widths
constexpr double kBentNoise = 10.0;     // widths
constexpr double kLeastWidth = 0.4;     // widths
constexpr double kLeastSmoothed = 4.0;
constexpr double kShort = 20.0;  // widths
constexpr double kMostPoints = 1001.0;
constexpr std::uint32_t kLeastSegment = 15;
constexpr std::uint32_t kSmooth = 25;  // points of averaging of an adaptive baseline
// As the library takes them.
constexpr std::uint32_t kFoot = 5;       // points
constexpr std::uint32_t kRejection = 3;  // standard deviations
constexpr double kCurved = 5.0;
constexpr double kOfBent = 3.0;  // variance of an adaptive baseline times its segment, in that of a point
constexpr double kOfSpan = 1e-4;

// The preset of 4 takes one bump of noise in a thousand points for a peak.
constexpr std::uint32_t kLeastRatio = 5;

// With segments for a baseline or noise of another kind than the presets have.
ChainDefaults Presets() {
  return {"mean:5", 250, kLeastRatio, std::nullopt, "no peak tells its width", "valley:50", "valley:250", 50};
}

std::string SmoothingFor(double width, double strength) {
  if (width < kLeastSmoothed) return "off";
  const double share = strength < kWeak ? kWeakWindow : kWindow;
  const double window = std::clamp(share * width, 5.0, kMostPoints);
  return fmt::format("savgol:{}:2", static_cast<std::uint32_t>(window) | 1U);
}

double Rounded(double value) {
  const double scale = std::pow(10.0, 2.0 - std::floor(std::log10(value)));
  return std::round(value * scale) / scale;
}

std::uint32_t Points(double value) { return static_cast<std::uint32_t>(std::lround(value)); }

double MedianStep(std::span<const double> seconds) {
  std::vector<double> steps;
  for (std::size_t i = 1; i < seconds.size(); ++i) steps.push_back(seconds[i] - seconds[i - 1]);
  return TslMath::Median(std::move(steps));
}

// Whether a baseline that may bend lies farther off the straight one than noise would carry it.
bool IsCurved(std::span<const double> values, std::uint32_t straight, std::uint32_t bent) {
  const auto n = static_cast<std::uint32_t>(values.size());
  std::vector<double> line(n);
  std::vector<double> curve(n);
  TslMath::LinearFitSDBaseline(values.data(), n, straight, kFoot, kRejection, line.data());
  TslMath::APBMorph(values.data(), n, bent, kSmooth, curve.data());
  double apart = 0.0;
  for (std::size_t i = 0; i < n; ++i) apart += (line[i] - curve[i]) * (line[i] - curve[i]);
  const auto [low, high] = std::ranges::minmax(values);
  const double expected = TslMath::PointScatter(values) * std::sqrt(kOfBent / bent);
  return std::sqrt(apart / n) > kCurved * std::max(expected, kOfSpan * (high - low));
}

}  // namespace

ChainDefaults DefaultsForCurve(std::span<const double> seconds, std::span<const double> values) {
  const auto n = static_cast<std::uint32_t>(values.size());
  const auto [width, strength] = TslMath::MeasurePeakWidth(values.data(), n);
  if (!(width > 0.0)) return Presets();
  ChainDefaults defaults;
  defaults.smooth = SmoothingFor(width, strength);
  defaults.segment = std::clamp(Points(kNoiseSegment * width), 50U, std::max(n, 50U));
  defaults.adaptiveSegment = std::max(Points(kBaseSegment * width), kLeastSegment);
  defaults.sn = kLeastRatio;
  defaults.minWidth = Rounded(kLeastWidth * width * MedianStep(seconds));
  const bool isLong = n >= kShort * width;
  const bool isBent = isLong && IsCurved(values, defaults.segment, *defaults.adaptiveSegment);
  defaults.baseline = isBent ? fmt::format("adaptive:{}:{}", *defaults.adaptiveSegment, kSmooth)
                             : fmt::format("linear:{}", defaults.segment);
  // Over a bent background long segments would take the bend for noise.
  defaults.noise = fmt::format("linear:{}", isBent ? Points(kBentNoise * width) : defaults.segment);
  defaults.reason = fmt::format("peaks are {:.1f} points wide", width);
  return defaults;
}

}  // namespace TslTool
