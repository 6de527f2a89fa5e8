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
constexpr BendLimits kSeen{4.0, 3.5, 0.03};
// In units of the likely width. Finer ones see more, and begin to part flat tops.
constexpr double kScales[] = {1.0, 0.75, 0.55};
constexpr double kLeastScale = 0.8;
constexpr double kLeastCount = 0.001;  // of the largest
// A group whose peaks are wider is looked at in sums of neighbouring points, which tell as much in less time.
constexpr double kWidestPeak = 24.0;
constexpr double kWidthOfSums = 8.0;

std::vector<double> Smoothed(std::span<const double> y, std::int32_t width) {
  std::vector<double> smoothed(y.size());
  const auto n = static_cast<std::uint32_t>(y.size());
  SmoothGaussian(y.data(), n, 0, n, static_cast<std::uint32_t>(std::min(width, kMostSmoothing)),
                 smoothed.data());
  return smoothed;
}

std::vector<double> Sums(std::span<const double> y, std::size_t count) {
  std::vector<double> sums;
  for (std::size_t i = 0; i + count <= y.size(); i += count) {
    sums.push_back(0.0);
    for (std::size_t k = i; k < i + count; ++k) sums.back() += y[k];
  }
  return sums;
}

std::vector<double> Variances(const std::vector<double>& means, double variancePerMean) {
  const double least = kLeastCount * std::ranges::max(means);
  std::vector<double> variances(means.size());
  std::ranges::transform(means, variances.begin(),
                         [&](double mean) { return variancePerMean * std::max(mean, least); });
  return variances;
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
  for (const Bend& bend : most) places.push_back(static_cast<double>(bend.at));
  return places;
}

std::vector<double> PlacesOfPeaks(std::span<const double> y) {
  const double roughWidth = WidthAtHalfHeight(y);
  if (roughWidth > kWidestPeak) {
    const auto count = static_cast<std::size_t>(roughWidth / kWidthOfSums);
    std::vector<double> places = PlacesOfPeaks(Sums(y, count));
    for (double& place : places) place = (place + 0.5) * static_cast<double>(count) - 0.5;
    return places;
  }
  const double variancePerMean = VariancePerMean(y);
  const std::vector<double> means = LocalMeans(y);
  const std::vector<double> variances = Variances(means, variancePerMean);
  const double width = WidthOfBends(y, variances, roughWidth);
  std::vector<double> places = PlacesOfBends(y, variances, width);
  if (places.empty()) places.push_back(static_cast<double>(std::ranges::max_element(means) - means.begin()));
  return ModelCheck(y, variancePerMean, width).AddMissing(places);
}

}  // namespace

std::vector<std::int32_t> InitialEstimates(bool smooth, std::int32_t numSmoothPts,
                                           std::span<const double> y) {
  if (!GroupSamples::IsUsable(y, y) || std::ranges::max(y) <= 0.0) return {};
  const std::vector<double> places =
      smooth && numSmoothPts > 1 ? PlacesOfPeaks(Smoothed(y, numSmoothPts)) : PlacesOfPeaks(y);
  const double last = static_cast<double>(y.size() - 1);
  std::vector<std::int32_t> points;
  for (const double place : places)
    points.push_back(static_cast<std::int32_t>(std::lround(std::clamp(place, 0.0, last))));
  points.erase(std::unique(points.begin(), points.end()), points.end());
  return points;
}

}  // namespace TslMath
