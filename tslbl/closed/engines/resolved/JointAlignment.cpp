#include <tslbl/closed/engines/resolved/JointAlignment.h>

#include <algorithm>
#include <cmath>
#include <utility>

namespace TslMath {
namespace {

constexpr int kRounds = 2;
constexpr std::int32_t kLeastTop = 3;    // isotopes; lighter molecules show their first ones
constexpr std::int32_t kBeyond = 3;      // places on both sides of the pattern
constexpr double kSameIsotope = 0.35;    // Da
constexpr double kKinMass = 0.015;       // of the mass
constexpr double kKinError = 0.15;       // isotopes
constexpr double kPatternError = 0.05;   // of the strongest peak: no protein is the average molecule
constexpr double kErrorOfOthers = 0.15;  // of what is taken off for them
constexpr double kErrorOfUnseen = 0.6;   // of the least intensity that is seen

double MassOfPlace(const VisiblePattern& pattern, std::int32_t isotope) {
  const std::int32_t place = isotope - pattern.firstIsotope;
  const std::int32_t inside = std::clamp(place, 0, static_cast<std::int32_t>(pattern.Size()) - 1);
  return pattern.mass[static_cast<std::size_t>(inside)] + (place - inside) * JointAlignment::kIsotopeStep;
}

double MeanMassOf(const JointAlignment::Family& family) {
  double sum = 0.0;
  for (const Envelope& envelope : family) sum += envelope.monoMass;
  return sum / static_cast<double>(family.size());
}

}  // namespace

JointAlignment::JointAlignment(const IsotopeList& list, const ResolvedPrefs& prefs, PatternMatch& match,
                               std::vector<double>& remaining, std::vector<Family>& families)
    : list_(list),
      prefs_(prefs),
      match_(match),
      remaining_(remaining),
      before_(remaining),
      families_(families),
      expected_(list.Count(), 0.0),
      claims_(families.size()),
      counted_(families.size()) {
  for (std::size_t i = 0; i < remaining_.size(); ++i) remaining_[i] = RestOf(i);
  for (std::size_t i = 0; i < families.size(); ++i) {
    std::vector<Claim> claims;
    for (const Envelope& envelope : families[i])
      for (const PatternPeak& peak : envelope.peaks) claims.push_back({peak.peak, peak.expected});
    Enter(i, std::move(claims));
  }
}

const VisiblePattern& JointAlignment::PatternOf(const Family& family) {
  return match_.PatternOf(family.front().peaks.front().peak, family.front().charge);
}

bool JointAlignment::IsLarge(const Family& family) { return PatternOf(family).TopIsotope() >= kLeastTop; }

double JointAlignment::RestOf(std::size_t peak) const {
  return std::max(list_[peak].intensity - expected_[peak], 0.0);
}

void JointAlignment::Enter(std::size_t family, std::vector<Claim> claims) {
  for (const Claim& claim : claims) {
    expected_[claim.peak] += claim.expected;
    remaining_[claim.peak] = RestOf(claim.peak);
  }
  claims_[family] = std::move(claims);
}

void JointAlignment::Release(std::size_t family) {
  for (const Claim& claim : claims_[family]) {
    expected_[claim.peak] -= claim.expected;
    remaining_[claim.peak] = RestOf(claim.peak);
  }
  claims_[family].clear();
}

JointAlignment::View JointAlignment::ViewOf(const Envelope& envelope, double mass,
                                            const VisiblePattern& pattern) const {
  const auto intensity = [&](const PatternPeak& peak) { return list_[peak.peak].intensity; };
  const ListedPeak& top = list_[std::ranges::max_element(envelope.peaks, {}, intensity)->peak];
  const double noise = prefs_.leastSignalToNoise > 0.0 ? top.leastSeen / prefs_.leastSignalToNoise : 0.0;
  const double ofPattern = kPatternError * top.intensity;
  View view;
  const std::int32_t end = pattern.firstIsotope + static_cast<std::int32_t>(pattern.Size()) + kBeyond;
  for (std::int32_t k = pattern.firstIsotope - kBeyond; k < end; ++k) {
    const double mz = (mass + MassOfPlace(pattern, k)) / envelope.charge + prefs_.carrierMass;
    const auto peak = match_.PeakNear(mz, envelope.charge);
    view.peaks.push_back(peak);
    if (peak)
      view.seen.push_back(
          {k, RestOf(*peak), std::hypot(noise, ofPattern, kErrorOfOthers * expected_[*peak])});
    else
      view.seen.push_back({k, 0.0, std::hypot(kErrorOfUnseen * top.leastSeen, ofPattern)});
  }
  return view;
}

JointAlignment::Fit JointAlignment::FitOf(std::size_t index) {
  const Family& family = families_[index];
  Fit fit{MeanMassOf(family), PatternOf(family), {}, {}};
  std::vector<SeenState> states;
  for (const Envelope& envelope : family) {
    fit.views.push_back(ViewOf(envelope, fit.mass, fit.pattern));
    states.push_back(fit.views.back().seen);
  }
  fit.place = PlaceOfPattern(states, fit.pattern);
  return fit;
}

// The strongest one of nearly this mass whose place is well known.
const JointAlignment::Counted* JointAlignment::KinOf(std::size_t family, double mass) const {
  for (std::size_t i = 0; i < family; ++i)
    if (std::abs(counted_[i].mass - mass) <= kKinMass * mass && counted_[i].place.error <= kKinError)
      return &counted_[i];
  return nullptr;
}

CountChances JointAlignment::ChancesOf(std::size_t family, const Fit& fit) const {
  const Counted* kin = KinOf(family, fit.mass);
  return {fit.place, fit.mass, kin != nullptr ? std::optional(kin->place) : std::nullopt};
}

void JointAlignment::Keep(std::size_t family, const Fit& fit, std::int32_t shift) {
  const Counted* kin = KinOf(family, fit.mass);
  counted_[family] = {fit.mass + shift * kIsotopeStep,
                      {fit.place.shift - shift, fit.place.error},
                      std::hypot(ChancesOf(family, fit).ErrorOf(shift), kin != nullptr ? kin->error : 0.0)};
  std::vector<Claim> claims;
  for (const View& view : fit.views) {
    const double scale = ScaleOf(view.seen, fit.pattern, shift);
    for (std::size_t k = 0; k < view.peaks.size(); ++k)
      if (view.peaks[k])
        claims.push_back({*view.peaks[k], scale * ProbabilityOf(fit.pattern, view.seen[k].isotope - shift)});
  }
  Enter(family, std::move(claims));
}

bool JointAlignment::MoveTo(Family& family, double mass) {
  Family moved;
  moved.reserve(family.size());
  for (const Envelope& envelope : family) {
    const auto rest = [&](const PatternPeak& peak) { return remaining_[peak.peak]; };
    const std::size_t anchor = std::ranges::max_element(envelope.peaks, {}, rest)->peak;
    Envelope& laid = moved.emplace_back();
    if (!(remaining_[anchor] > 0.0) ||
        !match_.BestAtMass(anchor, envelope.charge, mass, kSameIsotope, laid, PatternMatch::Demand::None) ||
        laid.score < prefs_.leastScore)
      return false;
  }
  family = std::move(moved);
  return true;
}

bool JointAlignment::AlignOne(std::size_t index) {
  Release(index);
  const Fit fit = FitOf(index);
  const std::int32_t shift = ChancesOf(index, fit).Best();
  const bool isMoved = shift != 0 && MoveTo(families_[index], fit.mass + shift * kIsotopeStep);
  Keep(index, fit, isMoved ? shift : 0);
  return isMoved;
}

bool JointAlignment::Align() {
  bool isAnyMoved = false;
  for (int round = 0; round < kRounds; ++round)
    for (std::size_t i = 0; i < families_.size(); ++i)
      if (IsLarge(families_[i])) isAnyMoved = AlignOne(i) || isAnyMoved;
  return isAnyMoved;
}

std::vector<double> JointAlignment::Errors() {
  for (int round = 0; round < kRounds; ++round)
    for (std::size_t i = 0; i < families_.size(); ++i) {
      Release(i);
      Keep(i, FitOf(i), 0);
    }
  std::vector<double> errors;
  errors.reserve(families_.size());
  for (std::size_t i = 0; i < families_.size(); ++i)
    errors.push_back(IsLarge(families_[i]) ? kIsotopeStep * counted_[i].error : 0.0);
  return errors;
}

}  // namespace TslMath
