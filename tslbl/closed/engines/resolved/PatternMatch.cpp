#include <tslbl/closed/engines/resolved/PatternMatch.h>

#include <algorithm>
#include <cmath>
#include <limits>

namespace TslMath {
namespace {

constexpr double kWindowInSpacing = 0.25;
constexpr double kIsotopeSpacing = 1.00286;  // Da, of the average molecule
constexpr double kSpacingVaries = 0.006;     // Da
constexpr double kSurelySeen = 1.5;          // times the least intensity that is seen
constexpr double kScatterInWindow = 0.35;
constexpr double kLeastChanceEvidence = 4.0;
constexpr double kLogTrialsAtLeast = 3.3;  // logarithm of trials less of evidence
constexpr double kLogRootTwoPiOfMatch = 0.91893853320467274;
constexpr double kLeastMass = 50.0;
constexpr std::size_t kAroundTop = 2;
constexpr double kClearlyMore = 1.0 + 1e-12;

// How much a peak counts that is off by this share of half a window: nearly a Gaussian of half its width.
double Nearness(double off) {
  const double square = off * off;
  return 1.0 / (1.0 + 2.0 * square * (1.0 + square));
}

// What such a peak explains: less only where it is nearly outside, as all outer ones are of a wrong charge.
double ExplainedShare(double off) {
  const double square = off * off;
  return 1.0 / (1.0 + 3.0 * square * square);
}

}  // namespace

PatternMatch::PatternMatch(const IsotopeList& list, const ResolvedPrefs& prefs, VisiblePatterns& patterns,
                           const std::vector<double>& remaining)
    : list_(list), prefs_(prefs), patterns_(patterns), remaining_(remaining) {
  const double trials = static_cast<double>(list.Count()) * prefs.maxCharge;
  leastChance_ = std::max(kLeastChanceEvidence, std::log(std::max(trials, 1.0)) - kLogTrialsAtLeast);
  for (std::int32_t charge = 0; charge <= prefs.maxCharge; ++charge)
    logCharges_.push_back(std::log(std::max(charge, 1)));
}

double PatternMatch::HalfWindow(double mz, std::int32_t charge) const {
  return std::min(prefs_.accuracy * 1e-6 * mz, kWindowInSpacing / charge);
}

const VisiblePattern& PatternMatch::PatternOf(std::size_t anchor, std::int32_t charge) {
  const auto known = static_cast<std::size_t>(charge);
  const double logCharge = known < logCharges_.size() ? logCharges_[known] : std::log(charge);
  return patterns_.At(list_[anchor].logMassAtOne + logCharge);
}

// From the peak `from` on in one direction, as far as the window reaches.
std::size_t PatternMatch::StrongestNear(double mz, double reach, std::size_t from, int step) const {
  std::size_t best = kNone;
  double most = 0.0;
  for (std::size_t i = from; i < list_.Count(); i += static_cast<std::size_t>(step)) {
    const double distance = list_[i].mz - mz;
    if (step * distance > reach) break;
    if (step * distance < -reach || remaining_[i] <= 0.0) continue;
    const double weight = remaining_[i] * Nearness(distance / reach);
    if (weight <= most) continue;
    most = weight;
    best = i;
  }
  return best;
}

std::optional<std::size_t> PatternMatch::PeakNear(double mz, std::int32_t charge) const {
  const double reach = HalfWindow(mz, charge);
  const std::size_t peak = StrongestNear(mz, reach, list_.FirstFrom(mz - reach), +1);
  return peak == kNone ? std::nullopt : std::optional(peak);
}

// Whether a second isotope may be there at all; quicker than laying a pattern.
bool PatternMatch::HasNeighbour(std::size_t anchor, std::int32_t charge) const {
  const double mz = list_[anchor].mz;
  const double steps = prefs_.maxIsotopeGaps + 1.0;
  const double reach = HalfWindow(mz, charge) + steps * kSpacingVaries / charge;
  const double farthest = steps * kIsotopeSpacing / charge + reach;
  const double nearest = kIsotopeSpacing / charge - reach;
  const auto isThere = [&](std::size_t i, double distance) {
    if (distance < nearest || remaining_[i] <= 0.0) return false;
    const double off = std::remainder(distance * charge, kIsotopeSpacing) / charge;
    return std::abs(off) <= reach;
  };
  for (std::size_t i = anchor + 1; i < list_.Count() && list_[i].mz - mz <= farthest; ++i)
    if (isThere(i, list_[i].mz - mz)) return true;
  for (std::size_t i = anchor; i-- > 0 && mz - list_[i].mz <= farthest;)
    if (isThere(i, mz - list_[i].mz)) return true;
  return false;
}

void PatternMatch::FindPeaks(std::size_t anchor, std::int32_t charge, const VisiblePattern& pattern,
                             std::size_t place, double reach) {
  found_.assign(pattern.Size(), kNone);
  found_[place] = anchor;
  const double mz = list_[anchor].mz;
  const auto placeOf = [&](std::size_t k) { return mz + (pattern.mass[k] - pattern.mass[place]) / charge; };
  std::size_t from = anchor;
  std::int32_t gaps = 0;
  for (std::size_t k = place + 1; k < pattern.Size() && gaps <= prefs_.maxIsotopeGaps; ++k) {
    found_[k] = StrongestNear(placeOf(k), reach, from + 1, +1);
    gaps = found_[k] == kNone ? gaps + 1 : 0;
    if (found_[k] != kNone) from = found_[k];
  }
  from = anchor;
  gaps = 0;
  for (std::size_t k = place; k-- > 0 && gaps <= prefs_.maxIsotopeGaps;) {
    found_[k] = StrongestNear(placeOf(k), reach, from - 1, -1);
    gaps = found_[k] == kNone ? gaps + 1 : 0;
    if (found_[k] != kNone) from = found_[k];
  }
}

// That peaks as strong as these stand at such places by chance.
double PatternMatch::ChanceEvidence(std::size_t anchor, std::int32_t charge, const VisiblePattern& pattern,
                                    std::size_t place, double reach) const {
  const double scatter = kScatterInWindow * reach;
  const double atPlace = -kLogRootTwoPiOfMatch - std::log(scatter);
  double evidence = 0.0;
  for (std::size_t k = 0; k < pattern.Size(); ++k) {
    if (k == place || found_[k] == kNone) continue;
    const double expected = list_[anchor].mz + (pattern.mass[k] - pattern.mass[place]) / charge;
    const double off = (list_[found_[k]].mz - expected) / scatter;
    evidence += atPlace - list_[found_[k]].logRivals - 0.5 * off * off;
  }
  return evidence;
}

// More than all that was found cannot be explained.
double PatternMatch::MostEvidence() const {
  double sum = 0.0;
  for (std::size_t k = 0; k < found_.size(); ++k) sum += Observed(k);
  return sum;
}

double PatternMatch::Observed(std::size_t place) const {
  return found_[place] == kNone ? 0.0 : remaining_[found_[place]];
}

// Intensity by probability: the weighed median, which one peak that holds another species too does not move.
double PatternMatch::Scale(const VisiblePattern& pattern) {
  ratios_.clear();
  double whole = 0.0;
  double observed = 0.0;
  for (std::size_t k = 0; k < pattern.Size(); ++k) {
    if (!Counts(k)) continue;
    ratios_.emplace_back(Observed(k) / pattern.probability[k], pattern.probability[k]);
    whole += pattern.probability[k];
    observed += Observed(k);
  }
  std::ranges::sort(ratios_);
  double below = 0.0;
  for (const auto& [ratio, weight] : ratios_) {
    below += weight;
    if (below >= 0.5 * whole) return ratio > 0.0 ? ratio : observed / whole;
  }
  return observed / whole;
}

// What stands one isotope below the monoisotopic place, where this molecule has nothing.
double PatternMatch::BelowFirst(std::size_t anchor, std::int32_t charge, const VisiblePattern& pattern,
                                std::size_t place, double reach, double most) const {
  if (pattern.firstIsotope != 0) return 0.0;
  const double mz = list_[anchor].mz - (pattern.mass[place] - pattern.mass[0] + kIsotopeSpacing) / charge;
  const std::size_t peak = StrongestNear(mz, reach, list_.FirstFrom(mz - reach), +1);
  return peak == kNone ? 0.0 : std::min(remaining_[peak], most);
}

double PatternMatch::SumOfDeviations(const VisiblePattern& pattern, double scale, double below) const {
  double deviations = below;
  double whole = below;
  for (std::size_t k = 0; k < pattern.Size(); ++k) {
    if (!Counts(k)) continue;
    const double expected = scale * pattern.probability[k];
    deviations += std::abs(Observed(k) - expected);
    whole += std::max(Observed(k), expected);
  }
  return 1.0 - deviations / whole;
}

double PatternMatch::CrossCorrelation(const VisiblePattern& pattern, double below) const {
  double product = 0.0;
  double observed = below * below;
  double expected = 0.0;
  for (std::size_t k = 0; k < pattern.Size(); ++k) {
    if (!Counts(k)) continue;
    product += Observed(k) * pattern.probability[k];
    observed += Observed(k) * Observed(k);
    expected += pattern.probability[k] * pattern.probability[k];
  }
  return product / std::sqrt(observed * expected);
}

// Its mass is the mean over the isotopes. What is added is small beside the anchor's, so that digits are
// kept.
void PatternMatch::Report(std::size_t anchor, const VisiblePattern& pattern, std::size_t place, double reach,
                          double scale, Envelope& envelope) const {
  envelope.peaks.clear();
  double weights = 0.0;
  double masses = 0.0;
  double explained = 0.0;
  const double reference = MassOf(anchor, envelope.charge);
  for (std::size_t k = 0; k < pattern.Size(); ++k) {
    if (found_[k] == kNone) continue;
    const double expected = scale * pattern.probability[k];
    envelope.peaks.push_back({pattern.firstIsotope + static_cast<std::int32_t>(k), found_[k], expected});
    const double expectedMz = list_[anchor].mz + (pattern.mass[k] - pattern.mass[place]) / envelope.charge;
    explained += std::min(Observed(k), expected) * ExplainedShare((list_[found_[k]].mz - expectedMz) / reach);
    const double weight = prefs_.mean == MassMean::Weighted ? Observed(k) : 1.0;
    weights += weight;
    masses += weight * (MassOf(found_[k], envelope.charge) - pattern.mass[k] - reference);
  }
  envelope.monoMass = reference + masses / weights;
  envelope.evidence = envelope.score * explained;
}

bool PatternMatch::Lay(std::size_t anchor, std::int32_t charge, const VisiblePattern& pattern,
                       std::size_t place, Envelope& envelope, Demand demand) {
  const double reach = HalfWindow(list_[anchor].mz, charge);
  FindPeaks(anchor, charge, pattern, place, reach);
  if (pattern.Size() - static_cast<std::size_t>(std::ranges::count(found_, kNone)) < 2) return false;
  if (MostEvidence() <= leastEvidence_) return false;
  if (demand == Demand::Significant && ChanceEvidence(anchor, charge, pattern, place, reach) < leastChance_)
    return false;
  const double surelySeen = kSurelySeen * list_[anchor].leastSeen;
  const double roughScale = remaining_[anchor] / pattern.probability[place];
  missed_.assign(pattern.Size(), 0);
  for (std::size_t k = 0; k < pattern.Size(); ++k)
    missed_[k] = found_[k] == kNone && roughScale * pattern.probability[k] >= surelySeen;
  const double scale = Scale(pattern);
  const double below =
      BelowFirst(anchor, charge, pattern, place, reach, scale * pattern.probability[pattern.top]);
  envelope.charge = charge;
  envelope.score = prefs_.score == PatternScore::CrossCorrelation ? CrossCorrelation(pattern, below)
                                                                  : SumOfDeviations(pattern, scale, below);
  Report(anchor, pattern, place, reach, scale, envelope);
  return true;
}

// Keeps the better one of the envelope and the trial.
bool PatternMatch::TakeTrial(bool hasOne, Envelope& envelope) {
  if (hasOne && !(trial_.evidence > envelope.evidence * kClearlyMore)) return false;
  std::swap(envelope, trial_);
  return true;
}

bool PatternMatch::Best(std::size_t anchor, Envelope& envelope) {
  bool isFound = false;
  leastEvidence_ = 0.0;
  for (std::int32_t charge = 1; charge <= prefs_.maxCharge; ++charge) {
    if (MassOf(anchor, charge) < kLeastMass || !HasNeighbour(anchor, charge)) continue;
    const VisiblePattern& pattern = PatternOf(anchor, charge);
    const std::size_t first = pattern.top - std::min(pattern.top, kAroundTop);
    const std::size_t last = std::min(pattern.top + kAroundTop, pattern.Size() - 1);
    for (std::size_t place = first; place <= last; ++place) {
      if (!Lay(anchor, charge, pattern, place, trial_) || trial_.score < prefs_.leastScore) continue;
      isFound = TakeTrial(isFound, envelope) || isFound;
      leastEvidence_ = envelope.evidence;
    }
  }
  leastEvidence_ = 0.0;
  return isFound;
}

bool PatternMatch::BestAtMass(std::size_t anchor, std::int32_t charge, double mass, double tolerance,
                              Envelope& envelope, Demand demand) {
  const VisiblePattern& pattern = PatternOf(anchor, charge);
  bool isFound = false;
  for (std::size_t place = 0; place < pattern.Size(); ++place) {
    if (std::abs(MassOf(anchor, charge) - pattern.mass[place] - mass) > tolerance) continue;
    if (Lay(anchor, charge, pattern, place, trial_, demand))
      isFound = TakeTrial(isFound, envelope) || isFound;
  }
  return isFound;
}

}  // namespace TslMath
