#include <tool/io/PeakListSpectrum.h>

#include <tslbl/closed/math/Median.h>
#include <algorithm>
#include <cstdint>
#include <vector>

namespace TslTool {
namespace {

constexpr double kRoom = 0.4;      // half a triangle, of the room that most peaks have
constexpr double kCrowded = 0.05;  // the share of peaks that have less
constexpr double kWidest = 0.1;    // half a triangle, m/z
constexpr double kJustSeen = 3.0;  // signal to noise

struct ListPeak {
  double mz;
  double intensity;
};

std::vector<ListPeak> PeaksOf(std::span<const double> mz, std::span<const double> intensity) {
  std::vector<ListPeak> peaks;
  peaks.reserve(mz.size());
  for (std::size_t i = 0; i < mz.size(); ++i) {
    if (!(mz[i] > 0.0 && intensity[i] > 0.0)) continue;
    if (!peaks.empty() && peaks.back().mz == mz[i]) {
      peaks.back().intensity += intensity[i];
    } else {
      peaks.push_back({mz[i], intensity[i]});
    }
  }
  return peaks;
}

double HalfWidthOf(const std::vector<ListPeak>& peaks) {
  std::vector<double> gaps;
  gaps.reserve(peaks.size());
  for (std::size_t i = 1; i < peaks.size(); ++i) gaps.push_back(peaks[i].mz - peaks[i - 1].mz);
  return gaps.empty() ? kWidest : std::min(kWidest, kRoom * TslMath::Quantile(std::move(gaps), kCrowded));
}

class Drawing {
 public:
  explicit Drawing(const std::vector<ListPeak>& peaks) : peaks_(peaks), halfWidth_(HalfWidthOf(peaks)) {
    spectrum_->xAxis.reserve(3 * peaks.size());
    spectrum_->yAxis.reserve(3 * peaks.size());
    spectrum_->peaks.reserve(peaks.size());
  }

  std::unique_ptr<TslBL::Spectrum> Draw() {
    for (std::size_t i = 0; i < peaks_.size(); ++i) DrawPeak(i);
    if (!peaks_.empty()) Finish();
    spectrum_->AddStatus(TslBL::Curve::STATUS_PEAKS);
    return std::move(spectrum_);
  }

 private:
  void AddPoint(double x, double y) {
    spectrum_->xAxis.push_back(x);
    spectrum_->yAxis.push_back(y);
  }

  // Where a triangle ends: half way to a neighbour that is near.
  double LeftEnd(std::size_t i) const {
    const double free = peaks_[i].mz - halfWidth_;
    return i == 0 ? free : std::max(free, 0.5 * (peaks_[i - 1].mz + peaks_[i].mz));
  }
  double RightEnd(std::size_t i) const {
    const double free = peaks_[i].mz + halfWidth_;
    return i + 1 == peaks_.size() ? free : std::min(free, 0.5 * (peaks_[i].mz + peaks_[i + 1].mz));
  }

  void DrawPeak(std::size_t i) {
    const auto [mz, intensity] = peaks_[i];
    if (const double left = LeftEnd(i); spectrum_->xAxis.empty() || left > spectrum_->xAxis.back())
      AddPoint(left, 0.0);
    const auto apex = static_cast<std::uint32_t>(spectrum_->xAxis.size());
    AddPoint(mz, intensity);
    AddPoint(RightEnd(i), 0.0);
    AddRow(apex, intensity);
  }

  void AddRow(std::uint32_t apex, double intensity) {
    TslBL::PeakInfo row;
    row.startIdx = apex - 1;
    row.apexIdx = apex;
    row.endIdx = apex + 1;
    row.maxIdx = row.centroidIdx = apex;
    row.apexAmpl = row.maxAmpl = row.centroidAmpl = row.area = intensity;
    row.halfHeightLeftIdx = apex - 0.5;
    row.halfHeightRightIdx = apex + 0.5;
    row.areaStartIdx = row.startIdx;
    row.areaEndIdx = row.endIdx;
    spectrum_->peaks.push_back(row);
  }

  void Finish() {
    const auto [weakest, strongest] = std::ranges::minmax_element(peaks_, {}, &ListPeak::intensity);
    const double noise = weakest->intensity / kJustSeen;
    spectrum_->noise.assign(spectrum_->xAxis.size(), noise);
    spectrum_->baseline.assign(spectrum_->xAxis.size(), 0.0);
    for (TslBL::PeakInfo& row : spectrum_->peaks) row.noiseAmpl = noise;
    spectrum_->largestMaxIdx = spectrum_->largestCentroidIdx =
        static_cast<std::int32_t>(strongest - peaks_.begin());
  }

  const std::vector<ListPeak>& peaks_;
  double halfWidth_;
  std::unique_ptr<TslBL::Spectrum> spectrum_ = std::make_unique<TslBL::Spectrum>();
};

}  // namespace

std::unique_ptr<TslBL::Spectrum> PeakListSpectrum(std::span<const double> mz,
                                                  std::span<const double> intensity) {
  const std::vector<ListPeak> peaks = PeaksOf(mz, intensity);
  return Drawing(peaks).Draw();
}

}  // namespace TslTool
