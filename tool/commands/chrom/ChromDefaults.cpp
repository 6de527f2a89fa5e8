#include <tool/commands/chrom/ChromDefaults.h>

#include <fmt/format.h>

#include <tslbl/closed/math/baseline/Baseline.h>
#include <tslbl/closed/math/baseline/Noise.h>
#include <tslbl/closed/math/peak/TypicalWidth.h>
#include <algorithm>
#include <cmath>

namespace TslTool {
namespace {

constexpr double kWindow = 0.5;         // widths
constexpr double kNoiseSegment = 40.0;  // widths
constexpr double kBaseSegment = 3.0;    // widths
constexpr double kLeastWidth = 0.4;     // widths
constexpr double kLeastSmoothed = 4.0;
constexpr double kShort = 20.0;  // widths
constexpr double kMostPoints = 1001.0;
constexpr std::uint32_t kLeastSegment = 15;
constexpr std::uint32_t kSmooth = 25;  // points of averaging of an adaptive baseline
constexpr double kCurved = 2.5;

ChainDefaults Presets() {
  return {"mean:5", 0, 4, std::nullopt, "no peak tells its width", "valley:50", "valley:250", 50};
}

std::string SmoothingFor(double width) {
  if (width < kLeastSmoothed) return "off";
  const double window = std::clamp(kWindow * width, 5.0, kMostPoints);
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
  const auto middle = steps.begin() + static_cast<std::ptrdiff_t>(steps.size() / 2);
  std::ranges::nth_element(steps, middle);
  return *middle;
}

// Whether a baseline that may bend lies farther off the straight ones than noise would carry it.
bool IsCurved(std::span<const double> values, std::uint32_t straight, std::uint32_t bent) {
  const auto n = static_cast<std::uint32_t>(values.size());
  std::vector<double> line(n);
  std::vector<double> curve(n);
  std::vector<double> noise(n);
  TslMath::LinearFitSDBaseline(values.data(), n, straight, 5, 3, line.data());
  TslMath::APBMorph(values.data(), n, bent, kSmooth, curve.data());
  TslMath::LinearFitSDNoise(values.data(), n, straight, 5, 3, noise.data());
  double apart = 0.0;
  double expected = 0.0;
  for (std::size_t i = 0; i < n; ++i) {
    apart += (line[i] - curve[i]) * (line[i] - curve[i]);
    expected += noise[i] * noise[i] * 2.0 / bent;
  }
  return apart > kCurved * kCurved * expected;
}

}  // namespace

ChainDefaults DefaultsForCurve(std::span<const double> seconds, std::span<const double> values) {
  const auto n = static_cast<std::uint32_t>(values.size());
  const double width = TslMath::MeasurePeakWidth(values.data(), n).points;
  if (!(width > 0.0)) return Presets();
  ChainDefaults defaults;
  defaults.smooth = SmoothingFor(width);
  defaults.segment = std::clamp(Points(kNoiseSegment * width), 50U, std::max(n, 50U));
  defaults.adaptiveSegment = std::max(Points(kBaseSegment * width), kLeastSegment);
  defaults.sn = 4;
  defaults.minWidth = Rounded(kLeastWidth * width * MedianStep(seconds));
  defaults.noise = fmt::format("linear:{}", defaults.segment);
  const bool isLong = n >= kShort * width;
  const bool isBent = isLong && IsCurved(values, defaults.segment, *defaults.adaptiveSegment);
  defaults.baseline =
      isBent ? fmt::format("adaptive:{}:{}", *defaults.adaptiveSegment, kSmooth) : defaults.noise;
  defaults.reason = fmt::format("peaks are {:.1f} points wide", width);
  return defaults;
}

}  // namespace TslTool
