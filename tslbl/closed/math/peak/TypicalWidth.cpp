#include <tslbl/closed/math/peak/TypicalWidth.h>

#include <tslbl/closed/math/peak/BumpNoise.h>
#include <tslbl/closed/math/peak/ProminentBumps.h>
#include <tslbl/closed/math/peak/TypicalOfKinds.h>
#include <tslbl/closed/math/smooth/Smoothing.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <optional>
#include <utility>
#include <vector>

namespace TslMath {
namespace {

constexpr int kFilters = 8;
constexpr double kWidest = 512.0;  // points
// By how much the next filters may change a width: one, and two together.
constexpr double kNextChange = 0.15;
constexpr double kSecondChange = 0.35;
// From this strength of a single peak on no bump of noise on it matters.
constexpr double kClear = 20.0;
constexpr double kWideFilter = 0.6;  // widths
constexpr double kLeastStrength = 2.5;
// Of the weight, from which on narrow peaks decide.
constexpr double kNarrowShare = 0.25;
// Of the prominence of the largest; of strength; of points; and of the width that filters agree on.
constexpr double kMain = 0.5;
constexpr double kPlain = 4.0;
constexpr double kLeastLine = 2.0;
constexpr double kGroup = 0.6;
constexpr double kMostStrength = 100.0;  // of a peak
// Of a Gaussian filter of one point across.
constexpr double kTopWeight = 0.94;
// How much more variance noise may have than neighbours tell: they differ by little in a curve that was
// smoothed before. Beyond that it is peaks, which stand side by side.
constexpr double kSmoothedBefore = 100.0;

// A curve through Gaussian filters of 0, 2, 4, and then about 8, 16 .. 128 points: the last are made of 7 of
// the points that are there, of which every second is left out afterwards.
class Widening {
 public:
  explicit Widening(std::vector<double> samples) : samples_(std::move(samples)), curve_(samples_) {}

  void Widen() {
    if (filter_ < kNarrow) {
      filter_ = std::max(2.0 * filter_, 2.0);
      curve_ = Through(samples_, static_cast<std::uint32_t>(filter_));
      return;
    }
    if (filter_ > kNarrow) Thin();
    curve_ = Through(curve_, kSteps);
    filter_ = std::hypot(filter_, kSteps * spacing_);
  }

  const std::vector<double>& Samples() const { return samples_; }
  double Filter() const { return filter_; }    // in samples
  double Spacing() const { return spacing_; }  // likewise
  // The ends, where the filter is not yet as wide, are left out; in points of the curve.
  std::size_t Ends() const { return static_cast<std::size_t>(std::ceil(filter_ / spacing_)); }
  std::vector<double> Inner() const {
    const auto ends = static_cast<std::ptrdiff_t>(Ends());
    if (std::ssize(curve_) <= 2 * ends) return {};
    return {curve_.begin() + ends, curve_.end() - ends};
  }

 private:
  static constexpr double kNarrow = 4.0;
  static constexpr std::uint32_t kSteps = 7;

  static std::vector<double> Through(const std::vector<double>& y, std::uint32_t filter) {
    const auto n = static_cast<std::uint32_t>(y.size());
    std::vector<double> filtered(n);
    SmoothGaussian(y.data(), n, 0, n, filter, filtered.data());
    return filtered;
  }

  void Thin() {
    for (std::size_t i = 0; 2 * i < curve_.size(); ++i) curve_[i] = curve_[2 * i];
    curve_.resize((curve_.size() + 1) / 2);
    spacing_ *= 2.0;
  }

  std::vector<double> samples_;
  std::vector<double> curve_;
  double filter_ = 0.0;
  double spacing_ = 1.0;
};

// What one filter shows of the peaks that stand out of the noise through it.
struct View {
  double filter = 0.0;
  double width = 0.0;  // without the filter's share; 0: no peak
  double strength = 0.0;
  bool isClear = false;
  double mainWidth = 0.0;  // of the peaks at least half as prominent as the largest, if they are plain
};

struct SeenPeak {
  double width;
  double weight;
  double strength;
};

struct RawNoise {
  explicit RawNoise(const std::vector<double>& samples)
      : ion(LikelyIon(samples)), variance(samples, 1, ion) {}

  double ion;
  NoiseVariance variance;
};

class Viewer {
 public:
  Viewer(const Widening& curve, const RawNoise& raw)
      : curve_(curve),
        raw_(raw),
        y_(curve.Inner()),
        ion_(curve.Filter() > 0.0 ? kTopWeight * raw.ion / curve.Filter() : raw.ion),
        places_(static_cast<double>(y_.size()) * curve.Spacing() / std::max(curve.Filter(), 1.0)),
        variance_(y_, std::max<std::size_t>(1, static_cast<std::size_t>(curve.Filter() / curve.Spacing())),
                  ion_) {}

  std::vector<SeenPeak> Peaks() const {
    std::vector<SeenPeak> peaks;
    for (const Bump& bump : ProminentBumps(y_))
      if (const auto peak = PeakOf(bump)) peaks.push_back(*peak);
    return peaks;
  }

 private:
  BumpNoise NoiseOf(double variance, double ofRaw) const {
    const double ofOneIon = ion_ * ion_ / places_;
    return {std::max(std::min(variance, kSmoothedBefore * ofRaw), ofOneIon), ion_, places_};
  }

  BumpNoise NoiseAt(std::size_t at) const {
    const auto sample = static_cast<std::size_t>(curve_.Spacing() * static_cast<double>(at + curve_.Ends()));
    return NoiseOf(variance_.At(at), raw_.variance.At(sample));
  }

  // The lows that a bump's prominence is measured from are lows of the noise.
  static double HeightOf(const Bump& bump, const BumpNoise& noise) { return bump.prominence - noise.Depth(); }
  static bool StandsOut(const Bump& bump, const BumpNoise& noise) {
    return HeightOf(bump, noise) > noise.Height();
  }

  std::optional<SeenPeak> PeakOf(const Bump& bump) const {
    // Most bumps do not stand out of the noise anywhere.
    if (!StandsOut(bump, NoiseOf(variance_.Everywhere(), raw_.variance.Everywhere()))) return std::nullopt;
    const BumpNoise noise = NoiseAt(bump.at);
    if (!StandsOut(bump, noise)) return std::nullopt;
    const double height = HeightOf(bump, noise);
    const double width = curve_.Spacing() * WidthAtLevel(y_, bump.at, y_[bump.at] - 0.5 * height);
    if (width > kWidest) return std::nullopt;
    const double strength = std::min(height / noise.With(height).Height(), kMostStrength);
    if (!bump.isProminent && strength < kPlain) return std::nullopt;
    return SeenPeak{width, std::sqrt(bump.prominence), strength};
  }

  const Widening& curve_;
  const RawNoise& raw_;
  std::vector<double> y_;
  double ion_;
  double places_;  // that are independent of each other
  NoiseVariance variance_;
};

double TypicalOf(const std::vector<SeenPeak>& peaks) {
  std::vector<WeightedWidth> widths;
  widths.reserve(peaks.size());
  for (const SeenPeak& peak : peaks) widths.push_back({peak.width, peak.weight});
  return TypicalOfKinds(std::move(widths), kNarrowShare);
}

double WithoutFilter(double width, double filter) {
  return std::sqrt(std::max(width * width - filter * filter, 0.0));
}

// Of peaks that no noise makes.
double MainWidth(std::vector<SeenPeak> peaks, double filter) {
  const double most = std::ranges::max(peaks, {}, &SeenPeak::weight).weight;
  std::erase_if(peaks, [&](const SeenPeak& p) { return p.weight * p.weight < kMain * most * most; });
  for (const SeenPeak& peak : peaks)
    if (peak.strength < kPlain) return 0.0;
  return WithoutFilter(TypicalOf(peaks), filter);
}

View ViewOf(const Widening& curve, const RawNoise& raw) {
  const std::vector<SeenPeak> peaks = Viewer(curve, raw).Peaks();
  const double filter = curve.Filter();
  if (peaks.empty()) return {.filter = filter};
  double squares = 0.0;
  for (const SeenPeak& peak : peaks) squares += peak.strength * peak.strength;
  return {.filter = filter,
          .width = WithoutFilter(TypicalOf(peaks), filter),
          .strength = std::sqrt(squares),
          .isClear = squares >= kClear * kClear * static_cast<double>(peaks.size()),
          .mainWidth = MainWidth(peaks, filter)};
}

bool Agree(const View& a, const View& b, double change) {
  return std::abs(b.width - a.width) <= change * a.width;
}

bool IsConfirmed(const std::vector<View>& views, std::size_t k) {
  return k + 2 < views.size() && views[k].width > 0.0 && Agree(views[k], views[k + 1], kNextChange) &&
         Agree(views[k], views[k + 2], kSecondChange);
}

// From a confirmed view on, the one that shows the width best: bumps of noise on weak peaks need a wider
// filter.
std::size_t BestFrom(const std::vector<View>& views, std::size_t first) {
  const auto isBetter = [&](const View& next) {
    return next.filter <= kWideFilter * views[first].width && Agree(views[first], next, kSecondChange);
  };
  std::size_t k = first;
  while (!views[k].isClear && k + 1 < views.size() && isBetter(views[k + 1])) ++k;
  return k;
}

// Filters merge lines that stand close, as isotopes do, and then agree on the width of the group: so plain
// lines that a narrower filter shows, with valleys between them, decide.
View WithoutMerging(const std::vector<View>& views, std::size_t best) {
  View settled = views[best];
  for (std::size_t k = 0; k < best; ++k) {
    if (views[k].mainWidth < kLeastLine || views[k].mainWidth > kGroup * settled.width) continue;
    settled.width = views[k].mainWidth;
    settled.strength = views[k].strength;
    break;
  }
  return settled;
}

// Nothing while it takes more views to tell.
std::optional<View> Settled(const std::vector<View>& views) {
  for (std::size_t k = 0; k < views.size(); ++k) {
    if (!IsConfirmed(views, k)) continue;
    const std::size_t best = BestFrom(views, k);
    if (best + 1 == views.size() && views.size() < kFilters) return std::nullopt;
    if (views[best].strength >= kLeastStrength) return WithoutMerging(views, best);
  }
  return std::nullopt;
}

std::vector<double> FiniteSamples(const double* y, std::uint32_t n) {
  std::vector<double> samples(y, y + n);
  double lowest = std::numeric_limits<double>::infinity();
  for (const double value : samples)
    if (std::isfinite(value)) lowest = std::min(lowest, value);
  for (double& value : samples)
    if (!std::isfinite(value)) value = lowest;
  return samples;
}

}  // namespace

PeakWidth MeasurePeakWidth(const double* y, std::uint32_t n) {
  Widening curve(FiniteSamples(y, n));
  const RawNoise raw(curve.Samples());
  std::vector<View> views;
  for (;;) {
    views.push_back(ViewOf(curve, raw));
    if (const auto settled = Settled(views)) return {settled->width, settled->strength};
    if (views.size() == kFilters) return {};
    curve.Widen();
  }
}

double TypicalPeakWidth(const double* y, std::uint32_t n) { return MeasurePeakWidth(y, n).points; }

}  // namespace TslMath
