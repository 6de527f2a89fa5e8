#include <tslbl/closed/math/chargestate/MassPlot.h>

#include <tslbl/closed/math/chargestate/MassProfile.h>

#include <algorithm>
#include <cmath>

namespace TslMath {
namespace {

constexpr double kMostPlaces = 32768.0;
constexpr double kLeastRelativeStep = 0x1p-22;  // a quarter of the width of the sharpest peaks that there are
constexpr double kStepRounding = 1.0 + 1e-9;    // of steps that are meant to be a power of two

double LatticeStep(const std::vector<MassProfile>& profiles, double lowest, double highest) {
  double least = profiles.front().MedianStep();
  for (const MassProfile& profile : profiles) least = std::min(least, profile.MedianStep());
  const double farthest = std::max(std::abs(lowest), std::abs(highest));
  least = std::max({least, (highest - lowest) / kMostPlaces, farthest * kLeastRelativeStep});
  return std::exp2(std::floor(std::log2(least * kStepRounding)));
}

// A curve at ascending masses.
class Reader {
 public:
  explicit Reader(const MassCurve& curve) : curve_(curve) {}

  double At(double mass) {
    while (next_ < curve_.mass.size() && curve_.mass[next_] < mass) ++next_;
    if (next_ == curve_.mass.size()) return 0.0;
    if (curve_.mass[next_] == mass) return curve_.density[next_];
    if (next_ == 0) return 0.0;
    const double share = (mass - curve_.mass[next_ - 1]) / (curve_.mass[next_] - curve_.mass[next_ - 1]);
    return curve_.density[next_ - 1] + share * (curve_.density[next_] - curve_.density[next_ - 1]);
  }

 private:
  const MassCurve& curve_;
  std::size_t next_ = 0;
};

std::vector<double> AllMasses(std::span<const MassCurve> curves) {
  std::vector<double> masses;
  for (const MassCurve& curve : curves) masses.insert(masses.end(), curve.mass.begin(), curve.mass.end());
  std::ranges::sort(masses);
  masses.erase(std::unique(masses.begin(), masses.end()), masses.end());
  return masses;
}

}  // namespace

MassCurve SumOfPeaks(std::span<const ChargedProfile> peaks) {
  std::vector<MassProfile> profiles;
  for (const ChargedProfile& peak : peaks)
    if (std::optional<MassProfile> profile = MassProfile::Of(peak)) profiles.push_back(std::move(*profile));
  if (profiles.empty()) return {};
  double lowest = profiles.front().First();
  double highest = profiles.front().Last();
  for (const MassProfile& profile : profiles) {
    lowest = std::min(lowest, profile.First());
    highest = std::max(highest, profile.Last());
  }
  const double step = LatticeStep(profiles, lowest, highest);
  const double first = std::floor(lowest / step) - 1.0;
  const auto places = static_cast<std::size_t>(std::ceil(highest / step) + 1.0 - first) + 1;
  MassCurve sum{std::vector<double>(places), std::vector<double>(places, 0.0)};
  for (std::size_t k = 0; k < places; ++k) sum.mass[k] = (first + static_cast<double>(k)) * step;
  for (const MassProfile& profile : profiles) profile.AddTo(sum.density, first, step);
  return sum;
}

MassCurve SumOfCurves(std::span<const MassCurve> curves) {
  MassCurve sum{AllMasses(curves), {}};
  sum.density.assign(sum.mass.size(), 0.0);
  for (const MassCurve& curve : curves) {
    if (curve.mass.empty()) continue;
    Reader reader(curve);
    auto k =
        static_cast<std::size_t>(std::ranges::lower_bound(sum.mass, curve.mass.front()) - sum.mass.begin());
    for (; k < sum.mass.size() && sum.mass[k] <= curve.mass.back(); ++k)
      sum.density[k] += reader.At(sum.mass[k]);
  }
  return sum;
}

}  // namespace TslMath
