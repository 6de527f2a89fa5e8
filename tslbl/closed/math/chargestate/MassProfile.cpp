#include <tslbl/closed/math/chargestate/MassProfile.h>

#include <tslbl/closed/math/Median.h>

#include <algorithm>
#include <cmath>
#include <utility>

namespace TslMath {
namespace {

constexpr double kMostMass = 1e12;  // Da
constexpr double kMostDensity = 1e100;

using Points = std::vector<std::pair<double, double>>;

bool IsUsable(const Points& points) {
  return std::ranges::all_of(points, [](const auto& point) {
    return std::abs(point.first) <= kMostMass && std::abs(point.second) <= kMostDensity;
  });
}

// Ascending; of points at one place the mean.
Points Ordered(Points points) {
  std::ranges::stable_sort(points, {}, [](const auto& point) { return point.first; });
  Points ordered;
  for (std::size_t i = 0; i < points.size();) {
    double sum = 0.0;
    std::size_t end = i;
    for (; end < points.size() && points[end].first == points[i].first; ++end) sum += points[end].second;
    ordered.emplace_back(points[i].first, sum / static_cast<double>(end - i));
    i = end;
  }
  return ordered;
}

}  // namespace

std::optional<MassProfile> MassProfile::Of(const ChargedProfile& profile) {
  if (profile.charge < 1 || profile.mz.size() != profile.amplitude.size()) return std::nullopt;
  const auto charge = static_cast<double>(profile.charge);
  Points points;
  for (std::size_t i = 0; i < profile.mz.size(); ++i)
    points.emplace_back(charge * (profile.mz[i] - profile.carrierMass), profile.amplitude[i] / charge);
  if (!IsUsable(points)) return std::nullopt;
  points = Ordered(std::move(points));
  if (points.size() < 2) return std::nullopt;
  MassProfile made;
  made.origin_ = points.front().first;
  for (const auto& [mass, density] : points) {
    made.offset_.push_back(mass - made.origin_);
    made.density_.push_back(density);
  }
  made.Integrate();
  return made;
}

double MassProfile::MedianStep() const {
  std::vector<double> steps;
  for (std::size_t i = 1; i < offset_.size(); ++i) steps.push_back(offset_[i] - offset_[i - 1]);
  return Median(std::move(steps));
}

void MassProfile::Integrate() {
  integral_.assign(1, 0.0);
  secondIntegral_.assign(1, 0.0);
  for (std::size_t i = 1; i < offset_.size(); ++i) {
    const double step = offset_[i] - offset_[i - 1];
    const double left = density_[i - 1];
    const double right = density_[i];
    secondIntegral_.push_back(secondIntegral_.back() + integral_.back() * step +
                              step * step * (2.0 * left + right) / 6.0);
    integral_.push_back(integral_.back() + 0.5 * step * (left + right));
  }
}

// `segment` is where the last offset was; offsets ascend from call to call.
double MassProfile::SecondIntegral(double offset, std::size_t& segment) const {
  if (offset <= 0.0) return 0.0;
  if (offset >= offset_.back()) return secondIntegral_.back() + integral_.back() * (offset - offset_.back());
  while (offset_[segment + 1] <= offset) ++segment;
  const double t = offset - offset_[segment];
  const double slope =
      (density_[segment + 1] - density_[segment]) / (offset_[segment + 1] - offset_[segment]);
  return secondIntegral_[segment] +
         t * (integral_[segment] + t * (0.5 * density_[segment] + t * slope / 6.0));
}

void MassProfile::AddTo(std::span<double> density, double first, double step) const {
  const double begin = std::floor(First() / step);
  const auto count = static_cast<std::size_t>(std::ceil(Last() / step) - begin) + 1;
  const auto start = static_cast<std::size_t>(begin - first);
  std::size_t segment = 0;
  double before = 0.0;
  double here = SecondIntegral(begin * step - origin_, segment);
  for (std::size_t k = 0; k < count; ++k) {
    const double next = SecondIntegral((begin + static_cast<double>(k) + 1.0) * step - origin_, segment);
    density[start + k] += ((next - here) - (here - before)) / (step * step);
    before = here;
    here = next;
  }
}

}  // namespace TslMath
