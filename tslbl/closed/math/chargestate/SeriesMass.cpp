#include <tslbl/closed/math/chargestate/SeriesMass.h>

#include <tslbl/closed/math/Median.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>
#include <utility>

namespace TslMath {
namespace {

// Of the variance of a typical peak, what does not come from counting.
constexpr std::array kCommonShares = {0.0, 0.02, 0.1, 0.3, 0.6, 1.0};
constexpr std::size_t kLeastToScatter = 3;
constexpr int kMassRounds = 5;
constexpr double kFar = 2.5;                // standard deviations
constexpr double kOfMedianSize = 1.4826;    // standard deviations in the median size of a normal number
constexpr double kLeastMzScatter = 1e-8;    // of m/z
constexpr double kMostVarianceRatio = 1e4;  // of a peak and the typical one

// What the places tell if their errors have this share in common.
struct MassEstimate {
  double mass;
  double variance;
  double logLikelihood;
};

double Precision(const IonPeak& peak) {
  const double area = peak.area > 0.0 ? peak.area : peak.intensity;
  const double width = peak.resolution > 0.0 ? peak.mz / peak.resolution : 1.0;
  return area / (width * width);
}

// Variance of each place from counting, of the typical one's.
std::vector<double> CountingVariances(std::span<const IonPeak> peaks,
                                      const std::vector<SeriesMember>& members) {
  std::vector<double> precisions;
  precisions.reserve(members.size());
  for (const SeriesMember& member : members) precisions.push_back(Precision(peaks[member.peak]));
  const double typical = Median(precisions);
  for (double& value : precisions) {
    const double ratio = typical / value;
    value = ratio > 0.0 ? std::clamp(ratio, 1.0 / kMostVarianceRatio, kMostVarianceRatio) : 1.0;
  }
  return precisions;
}

// Half of all weight lies on either side.
double WeighedMedian(const std::vector<SeriesMember>& members, const std::vector<double>& variances) {
  std::vector<std::pair<double, double>> masses;
  double whole = 0.0;
  for (std::size_t k = 0; k < members.size(); ++k) {
    const double weight = 1.0 / (std::sqrt(variances[k]) * members[k].charge);
    masses.emplace_back(members[k].mass, weight);
    whole += weight;
  }
  std::ranges::sort(masses);
  double below = 0.0;
  for (const auto& [mass, weight] : masses) {
    below += weight;
    if (below >= 0.5 * whole) return mass;
  }
  return masses.back().first;
}

class MassFit {
 public:
  MassFit(const std::vector<SeriesMember>& members, const std::vector<double>& counting)
      : members_(members), counting_(counting) {}

  MassEstimate At(double commonShare) const {
    std::vector<double> variances;
    double logVariances = 0.0;
    for (std::size_t k = 0; k < members_.size(); ++k) {
      variances.push_back(commonShare + (1.0 - commonShare) * counting_[k]);
      logVariances += std::log(variances.back());
    }
    Sums sums{0.0, 0.0, 0.0, 0.0};
    double mass = WeighedMedian(members_, variances);
    const double scatter = Scatter(mass, variances);
    for (int round = 0; round < kMassRounds; ++round) {
      sums = SumsAround(mass, scatter, variances);
      mass = sums.masses / sums.weights;
    }
    const double freedom = std::max(sums.trust - 1.0, 1.0);
    const double variance = std::max(sums.squares, freedom * LeastVariance()) / freedom;
    return {mass, variance / sums.weights,
            -0.5 * (freedom * std::log(variance) + logVariances + std::log(sums.weights))};
  }

 private:
  struct Sums {
    double weights;
    double masses;
    double squares;
    double trust;
  };

  double PlaceError(const SeriesMember& member, double mass) const {
    return (member.mass - mass) / member.charge;
  }

  double LeastVariance() const {
    const double least = kLeastMzScatter * members_.front().mass / members_.front().charge;
    return least * least;
  }

  // Of the places around `mass`, robustly.
  double Scatter(double mass, const std::vector<double>& variances) const {
    std::vector<double> sizes;
    for (std::size_t k = 0; k < members_.size(); ++k)
      sizes.push_back(std::abs(PlaceError(members_[k], mass)) / std::sqrt(variances[k]));
    const auto n = static_cast<double>(members_.size());
    const double scatter = kOfMedianSize * Median(std::move(sizes)) * std::sqrt((n + 1.0) / (n - 1.0));
    return std::max(scatter, std::sqrt(LeastVariance()));
  }

  Sums SumsAround(double mass, double scatter, const std::vector<double>& variances) const {
    Sums sums{0.0, 0.0, 0.0, 0.0};
    for (std::size_t k = 0; k < members_.size(); ++k) {
      const double error = PlaceError(members_[k], mass);
      const double size = std::abs(error) / (scatter * std::sqrt(variances[k]));
      const double trust = size > kFar ? (kFar / size) * (kFar / size) : 1.0;
      const auto charge = static_cast<double>(members_[k].charge);
      const double weight = trust / (variances[k] * charge * charge);
      sums.weights += weight;
      sums.masses += weight * members_[k].mass;
      sums.squares += trust * error * error / variances[k];
      sums.trust += trust;
    }
    return sums;
  }

  const std::vector<SeriesMember>& members_;
  const std::vector<double>& counting_;
};

// Each estimate counts as much as it is likely. The variance takes in that they differ, and that a scatter of
// few members is known poorly: so much wider than a normal distribution is Student's.
void Combine(const std::vector<MassEstimate>& estimates, ChargeSeries& series) {
  double best = -std::numeric_limits<double>::infinity();
  for (const MassEstimate& estimate : estimates) best = std::max(best, estimate.logLikelihood);
  double shares = 0.0;
  double mass = 0.0;
  const double reference = estimates.front().mass;
  for (const MassEstimate& estimate : estimates) {
    const double share = std::exp(estimate.logLikelihood - best);
    shares += share;
    mass += share * (estimate.mass - reference);
  }
  series.mass = reference + mass / shares;
  double variance = 0.0;
  for (const MassEstimate& estimate : estimates) {
    const double off = estimate.mass - series.mass;
    variance += std::exp(estimate.logLikelihood - best) / shares * (estimate.variance + off * off);
  }
  const auto n = static_cast<double>(series.members.size());
  series.standardError = std::sqrt(variance * (n - 1.0) / std::max(n - 3.0, 0.5));
}

void SetDeviations(ChargeSeries& series) {
  double squares = 0.0;
  for (SeriesMember& member : series.members) {
    member.deviation = member.mass - series.mass;
    squares += member.deviation * member.deviation;
  }
  const auto n = static_cast<double>(series.members.size());
  series.standardDeviation = n > 1.0 ? std::sqrt(squares / (n - 1.0)) : 0.0;
}

// Of so few members that their scatter tells nothing: places are equally good.
void TakePlainMean(ChargeSeries& series) {
  double weights = 0.0;
  double masses = 0.0;
  for (const SeriesMember& member : series.members) {
    const double weight = 1.0 / (static_cast<double>(member.charge) * member.charge);
    masses += weight * member.mass;
    weights += weight;
  }
  series.mass = masses / weights;
  series.standardError = 0.0;
}

void TakeLikelyMean(std::span<const IonPeak> peaks, ChargeSeries& series) {
  const std::vector<double> counting = CountingVariances(peaks, series.members);
  const MassFit fit(series.members, counting);
  std::vector<MassEstimate> estimates;
  estimates.reserve(kCommonShares.size());
  for (const double share : kCommonShares) estimates.push_back(fit.At(share));
  Combine(estimates, series);
}

}  // namespace

void UpdateMass(std::span<const IonPeak> peaks, double carrierMass, ChargeSeries& series) {
  for (SeriesMember& member : series.members)
    member.mass = member.charge * (peaks[member.peak].mz - carrierMass);
  if (series.members.size() < kLeastToScatter)
    TakePlainMean(series);
  else
    TakeLikelyMean(peaks, series);
  SetDeviations(series);
}

}  // namespace TslMath
