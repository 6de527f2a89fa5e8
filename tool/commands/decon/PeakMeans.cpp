#include <tool/commands/decon/PeakMeans.h>

#include <cstddef>
#include <limits>
#include <optional>

namespace TslTool {
namespace {

using TslBL::PeakDetectParams;
using TslBL::PeakInfo;
using TslBL::Spectrum;

constexpr double kMostOfTop = 50.0;  // percent
constexpr double kUpper = 0.3;
constexpr double kMost = 0.8;
// Of what the two centroids differ by: from the lower part to the mean, for all skews, masses and charges,
// once smoothed and with the baseline taken off.
constexpr double kToMean = 1.8;

struct Point {
  double x, y;
};

// What lies between straight lines and the axis.
class Polygon {
 public:
  explicit Polygon(const Point& first) : last_(first) {}

  void Add(const Point& next) {
    const double width = next.x - last_.x;
    area_ += 0.5 * width * (last_.y + next.y);
    moment_ += width / 6.0 * (last_.x * (2.0 * last_.y + next.y) + next.x * (last_.y + 2.0 * next.y));
    last_ = next;
  }
  double Centroid() const { return moment_ / area_; }

 private:
  Point last_;
  double area_ = 0.0;
  double moment_ = 0.0;
};

class Top {
 public:
  Top(const Spectrum& spectrum, const PeakInfo& peak) : spectrum_(spectrum), peak_(peak) {}

  // Over so much of the height, between straight lines; nothing if the limits of the peak cut it off.
  std::optional<double> Centroid(double share) const {
    const double level = (1.0 - share) * Above(peak_.apexIdx);
    std::size_t left = peak_.apexIdx;
    while (left > peak_.startIdx && Above(left) > level) --left;
    std::size_t right = peak_.apexIdx;
    while (right < peak_.endIdx && Above(right) > level) ++right;
    if (!(Above(left) <= level && Above(right) <= level)) return std::nullopt;
    Polygon polygon{At(left, left + 1, level)};
    for (std::size_t i = left + 1; i < right; ++i) polygon.Add({spectrum_.xAxis[i], Above(i)});
    polygon.Add(At(right - 1, right, level));
    return polygon.Centroid();
  }

 private:
  double Above(std::size_t i) const { return spectrum_.yAxis[i] - spectrum_.baseline[i]; }

  Point At(std::size_t left, std::size_t right, double level) const {
    const double share = (level - Above(left)) / (Above(right) - Above(left));
    return {spectrum_.xAxis[left] + share * (spectrum_.xAxis[right] - spectrum_.xAxis[left]), level};
  }

  const Spectrum& spectrum_;
  const PeakInfo& peak_;
};

bool IsFromUpperHalf(const LoadedSpectrum& loaded) {
  const PeakDetectParams& params = loaded.spectrum->peakDetectParams;
  return !loaded.isPeakList && params.RetentionType == PeakDetectParams::CentroidTopPercent &&
         params.Retention <= kMostOfTop;
}

double MeanOf(const Spectrum& spectrum, const PeakInfo& peak) {
  constexpr double kUnknown = std::numeric_limits<double>::quiet_NaN();
  if (!(peak.startIdx < peak.apexIdx && peak.apexIdx < peak.endIdx)) return kUnknown;
  const auto upper = Top(spectrum, peak).Centroid(kUpper);
  const auto most = Top(spectrum, peak).Centroid(kMost);
  return upper && most ? *upper + kToMean * (*most - *upper) : kUnknown;
}

}  // namespace

std::vector<double> PeakMeans(const LoadedSpectrum& loaded) {
  const Spectrum& spectrum = *loaded.spectrum;
  const std::size_t points = spectrum.yAxis.size();
  if (!IsFromUpperHalf(loaded)) return {};
  std::vector<double> means(spectrum.peaks.size(), std::numeric_limits<double>::quiet_NaN());
  if (spectrum.xAxis.size() != points || spectrum.baseline.size() != points) return means;
  for (std::size_t i = 0; i < means.size(); ++i) {
    const PeakInfo& peak = spectrum.peaks[i];
    if (peak.overlapGroup == TslBL::NoOverlapGroupId && peak.endIdx < points)
      means[i] = MeanOf(spectrum, peak);
  }
  return means;
}

}  // namespace TslTool
