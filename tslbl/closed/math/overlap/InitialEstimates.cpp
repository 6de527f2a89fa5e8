#include <tslbl/closed/math/overlap/InitialEstimates.h>

#include <tslbl/closed/math/overlap/CurvatureScan.h>
#include <tslbl/closed/math/overlap/GroupNoise.h>
#include <tslbl/closed/math/overlap/GroupSamples.h>
#include <tslbl/closed/math/overlap/ModelCheck.h>
#include <tslbl/closed/math/overlap/WidthGuess.h>
#include <tslbl/closed/math/smooth/Smoothing.h>

#include <algorithm>
#include <cmath>

namespace TslMath {
namespace {

constexpr std::int32_t kMostSmoothing = 100;
constexpr BendLimits kSeen{4.0, 3.5, 0.03, 0.001};
// In units of the likely width. Finer ones see more, and begin to part flat tops.
constexpr double kScales[] = {1.0, 0.75, 0.55};
constexpr double kLeastScale = 0.8;
constexpr double kLeastCount = 0.001;  // of the largest
// Of wide peaks sums of neighbouring points tell as much in less time: the standard deviation of a peak in
// sums.
constexpr double kRoughlyInSums = 8.0;
constexpr double kInSums = 4.0;
constexpr double kStridesInWidth = 2.5;
// How much more variance of points farther apart is that of a curve that was smoothed.
constexpr double kScatterOfSmoothed = 1.7;
// By how much of the highest point a filter may have changed the shape of peaks.
constexpr double kDistortion = 0.015;

// The curve in sums of `count` points.
struct SummedCurve {
  SummedCurve(std::span<const double> points, std::size_t count, const GroupNoise& noise)
      : y(Sums(points, count)), means(LocalMeans(y)) {
    const double highest = std::ranges::max(y);
    for (const double mean : means)
      variances.push_back(noise.variancePerMean * std::max(mean, kLeastCount * highest) +
                          noise.distortion * noise.distortion * highest * highest);
  }

  static std::vector<double> Sums(std::span<const double> y, std::size_t count) {
    if (count <= 1) return {y.begin(), y.end()};
    std::vector<double> sums(y.size() / count);
    for (std::size_t i = 0; i < sums.size(); ++i)
      for (std::size_t k = 0; k < count; ++k) sums[i] += y[i * count + k];
    return sums;
  }

  // Positive and negative points may cancel in sums.
  bool HasSignal() const { return std::isnormal(std::ranges::max(y)) && std::ranges::max(y) > 0.0; }

  std::vector<double> y;
  std::vector<double> means;
  std::vector<double> variances;
};

// By a power of two, so that nothing overflows.
std::vector<double> Scaled(std::span<const double> y) {
  const GroupSamples samples(y, y);
  return {samples.Amplitudes().begin(), samples.Amplitudes().end()};
}

std::vector<double> Smoothed(const std::vector<double>& y, std::int32_t width) {
  std::vector<double> smoothed(y.size());
  const auto n = static_cast<std::uint32_t>(y.size());
  SmoothGaussian(y.data(), n, 0, n, static_cast<std::uint32_t>(std::min(width, kMostSmoothing)),
                 smoothed.data());
  return smoothed;
}

// Through the filter that shows most.
std::vector<double> PlacesOfBends(std::span<const double> y, const std::vector<double>& variances,
                                  double width) {
  std::vector<Bend> most;
  for (const double scale : kScales) {
    const std::vector<Bend> bends =
        CurvatureScan(y, variances, std::max(kLeastScale, scale * width)).Bends(kSeen);
    if (bends.size() > most.size()) most = bends;
  }
  std::vector<double> places;
  places.reserve(most.size());
  for (const Bend& bend : most) places.push_back(static_cast<double>(bend.at));
  return places;
}

std::size_t PointsOfSum(double width, double inSums) {
  return static_cast<std::size_t>(std::max(1.0, width / inSums));
}

double LikelyWidth(std::span<const double> y, const GroupNoise& noise) {
  const double rough = WidthAtHalfHeight(y);
  const std::size_t count = PointsOfSum(rough, kRoughlyInSums);
  const SummedCurve curve(y, count, noise);
  if (!curve.HasSignal()) return rough;
  const auto points = static_cast<double>(count);
  return points * WidthOfBends(curve.y, curve.variances, rough / points);
}

// Bends are those of the smoothed curve; a sum of peaks is held against the points themselves.
std::vector<double> PlacesOfPeaks(const std::vector<double>& y, std::span<const double> smoothed,
                                  const GroupNoise& noise) {
  const double widthInPoints = LikelyWidth(smoothed, noise);
  const std::size_t count = PointsOfSum(widthInPoints, kInSums);
  const SummedCurve points(y, count, noise);
  const SummedCurve curve(smoothed, count, noise);
  if (!points.HasSignal() || !curve.HasSignal())
    return {static_cast<double>(std::ranges::max_element(y) - y.begin())};
  const auto step = static_cast<double>(count);
  std::vector<double> places = PlacesOfBends(curve.y, curve.variances, widthInPoints / step);
  if (places.empty())
    places.push_back(static_cast<double>(std::ranges::max_element(curve.means) - curve.means.begin()));
  places = ModelCheck(points.y, noise, widthInPoints / step).AddMissing(places);
  for (double& place : places) place = (place + 0.5) * step - 0.5;
  return places;
}

// Of a smoothed curve points farther apart scatter more than neighbours. Where they do not, it has its own
// noise.
GroupNoise NoiseOfSmoothed(const std::vector<double>& y) {
  const double near = VariancePerMean(y);
  const std::size_t stride = PointsOfSum(LikelyWidth(y, {near, kDistortion}), kStridesInWidth);
  const double far = VariancePerMean(y, stride);
  if (stride > 1 && far < kScatterOfSmoothed * near) return {std::max(near, far), 0.0};
  return {std::max(near, far), kDistortion};
}

}  // namespace

std::vector<std::int32_t> InitialEstimates(bool smooth, std::int32_t numSmoothPts,
                                           std::span<const double> y) {
  if (!GroupSamples::IsUsable(y, y) || std::ranges::max(y) <= 0.0) return {};
  const std::vector<double> raw = Scaled(y);
  const std::vector<double> places =
      smooth ? PlacesOfPeaks(raw, numSmoothPts > 1 ? Smoothed(raw, numSmoothPts) : raw,
                             {VariancePerMean(raw), 0.0})
             : PlacesOfPeaks(raw, raw, NoiseOfSmoothed(raw));
  const double last = static_cast<double>(y.size() - 1);
  std::vector<std::int32_t> points;
  points.reserve(places.size());
  for (const double place : places)
    points.push_back(static_cast<std::int32_t>(std::lround(std::clamp(place, 0.0, last))));
  points.erase(std::unique(points.begin(), points.end()), points.end());
  return points;
}

}  // namespace TslMath
