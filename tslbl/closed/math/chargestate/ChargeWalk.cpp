#include <tslbl/closed/math/chargestate/ChargeWalk.h>

#include <algorithm>
#include <cmath>

namespace TslMath {
namespace {

constexpr double kLeastScatter = 0.03;  // m/z
constexpr double kScatterInWindow = 0.5;
constexpr double kLogRootTwoPi = 0.91893853320467274;
constexpr double kMostGain = 8.5;
constexpr double kWindowsBetweenPlaces = 5.0;

// Densities over the logarithm of the intensity, as logarithms: of any intensity for the first peak; for
// others of what a series does most often, of what it may do, and of leaps, where peaks of others lie in the
// place.
constexpr double kLogDensity = -1.1;
constexpr double kFreeSlope = 1.0;
constexpr double kSlopeScatter = 1.5;
constexpr double kLogDensityOfSlope = -1.25;
constexpr double kUsualBend = -0.2;
constexpr double kUsualScatter = 0.6;
constexpr double kLogDensityOfUsualBend = -0.6;
constexpr double kMostUpwardBend = 0.3;
constexpr double kUpwardScatter = 0.7;
constexpr double kMostDownwardBend = 2.5;
constexpr double kDownwardScatter = 1.5;
constexpr double kLogDensityOfBend = -1.9;
constexpr double kLogDensityBetween = 0.1;
constexpr double kLogDensityOfLeap = -3.4;
constexpr double kLogDensityOfLeapInBend = -4.1;

constexpr double kGapCost = 2.0;
constexpr double kGapCostBetween = 1.0;
constexpr double kMostGapCost = 6.0;
constexpr double kEndCostShare = 0.5;
constexpr double kMostEndCost = 4.0;
constexpr double kHopeless = 8.0;  // so far below its best a walk ends
// Between the charges of a run: what is so much weaker than its neighbours counts as missing, and what a
// stretch without peaks may cost.
constexpr double kTooWeakBetween = 1.5;
constexpr double kMostCostBetween = 15.0;

double HalfSquare(double size) { return 0.5 * size * size; }

double BendTerm(double bend) {
  double u = 0.0;
  if (bend > kMostUpwardBend) u = (bend - kMostUpwardBend) / kUpwardScatter;
  if (bend < -kMostDownwardBend) u = (bend + kMostDownwardBend) / kDownwardScatter;
  return std::max({kLogDensityOfUsualBend - HalfSquare((bend - kUsualBend) / kUsualScatter),
                   kLogDensityOfBend - HalfSquare(u), kLogDensityOfLeapInBend});
}

double SlopeTerm(double slope) {
  const double u = std::max(0.0, std::abs(slope) - kFreeSlope) / kSlopeScatter;
  return std::max(kLogDensityOfSlope - HalfSquare(u), kLogDensityOfLeap);
}

double GapCost(double strength) { return std::min(kMostGapCost, kGapCost + strength); }

double CostBetween(double strength) { return std::min(kMostGapCost, kGapCostBetween + strength); }

}  // namespace

ChargeWalk::ChargeWalk(const RankedPeaks& peaks, const PlaceMap& places, const std::vector<char>& owned,
                       const WalkRules& rules)
    : peaks_(peaks), places_(places), owned_(owned), rules_(rules) {}

std::int32_t ChargeWalk::MostCharge(double window) {
  return static_cast<std::int32_t>(
      std::clamp<double>(1.0 / (kWindowsBetweenPlaces * window) - 1.0, 1.0, kMostCharge));
}

void ChargeWalk::SetTolerance(const Tolerance& tolerance) {
  tolerance_ = tolerance;
  maxCharge_ = MostCharge(tolerance.window);
  logScatter_ = std::log(tolerance.scatter);
  terms_.clear();
}

void ChargeWalk::SetToleranceOfMany(const Tolerance& tolerance) {
  SetTolerance(tolerance);
  std::vector<PlaceTerms> terms;
  terms.reserve(peaks_.Count());
  for (std::size_t i = 0; i < peaks_.Count(); ++i) terms.push_back(TermsOf(i));
  terms_ = std::move(terms);
}

ChargeWalk::PlaceTerms ChargeWalk::TermsOf(std::size_t i) const {
  if (!terms_.empty()) return terms_[i];
  const RankedPeak& peak = peaks_[i];
  const double least = std::min(kLeastScatter, kScatterInWindow * tolerance_.window * peak.mz);
  const double scatter = tolerance_.scatter * peak.mz;
  const double logScatter = scatter > least ? logScatter_ + peak.logMz : std::log(least);
  const double taken = std::max(scatter, least);
  return {-peak.logAlike - kLogRootTwoPi - logScatter, 0.5 / (taken * taken)};
}

bool ChargeWalk::FindAt(double mz, std::int32_t charge, Found& found) const {
  const double reach = tolerance_.window * mz;
  bool isFound = false;
  const std::int32_t first = places_.FirstNear(mz);
  if (first == PlaceMap::kNone) return false;
  auto i = static_cast<std::size_t>(first);
  if (peaks_[i].mz < mz - reach) i = peaks_.FirstFrom(mz - reach);
  for (; i < peaks_.Count(); ++i) {
    const double distance = peaks_[i].mz - mz;
    if (distance > reach) break;
    const PlaceTerms terms = TermsOf(i);
    const double loss = distance * distance * terms.curvature;
    if (isFound && terms.ceiling - loss <= found.gain) continue;
    found = {charge, i, terms.ceiling - loss};
    isFound = true;
  }
  if (isFound) found.gain = std::min(kMostGain, found.gain);
  return isFound;
}

double ChargeWalk::AboveFaint(double logIntensity) const {
  return std::max(0.0, logIntensity - peaks_.LogFaint());
}

double ChargeWalk::Gain(const Found& found, const Found& before, const Found* beforeThat) const {
  if (owned_[found.peak] != 0) return 0.0;
  const double now = peaks_[found.peak].logIntensity;
  const double last = peaks_[before.peak].logIntensity;
  const std::int32_t step = found.charge - before.charge;
  if (beforeThat != nullptr && before.charge - beforeThat->charge == step)
    return found.gain + BendTerm(now - 2.0 * last + peaks_[beforeThat->peak].logIntensity);
  const double wide = step * step == 1 ? 1.0 : std::sqrt(static_cast<double>(std::abs(step)));
  return found.gain + SlopeTerm((now - last) / wide);
}

std::size_t ChargeWalk::CountPlaces(double mass, std::int32_t seedCharge, std::int32_t step,
                                    std::size_t enough) const {
  std::size_t count = 0;
  std::int32_t gaps = 0;
  for (std::int32_t charge = seedCharge + step; charge >= 1 && charge <= maxCharge_; charge += step) {
    const double mz = mass / charge + rules_.carrierMass;
    if (count >= enough) break;
    if (places_.FirstNear(mz) != PlaceMap::kNone) {
      gaps = 0;
      ++count;
    } else if (++gaps > rules_.maxGaps) {
      break;
    }
  }
  return count;
}

bool ChargeWalk::MayHave(std::size_t members, double mass, std::int32_t seedCharge) const {
  const std::size_t below = 1 + CountPlaces(mass, seedCharge, -1, members);
  return below >= members || below + CountPlaces(mass, seedCharge, +1, members) >= members;
}

// Leaves in `side` what the best run has there, and gives what that adds.
double ChargeWalk::Walk(double mass, std::int32_t step, const Found& seed, const Found* behindSeed,
                        std::vector<Found>& side) const {
  side.clear();
  double sum = 0.0;
  double best = 0.0;
  std::size_t size = 0;
  std::int32_t gaps = 0;
  Found found{};
  for (std::int32_t charge = seed.charge + step; charge >= 1 && charge <= maxCharge_; charge += step) {
    const double mz = mass / charge + rules_.carrierMass;
    const std::size_t count = side.size();
    const Found& before = count == 0 ? seed : side.back();
    if (!FindAt(mz, charge, found)) {
      if (++gaps > rules_.maxGaps) break;
      sum -= GapCost(AboveFaint(peaks_[before.peak].logIntensity));
      continue;
    }
    gaps = 0;
    sum += Gain(found, before, count > 1 ? &side[count - 2] : count == 1 ? &seed : behindSeed);
    side.push_back(found);
    if (sum > best) {
      best = sum;
      size = side.size();
    }
    if (sum < best - kHopeless) break;
  }
  side.resize(size);
  return best;
}

double ChargeWalk::EndCost(double mass, const Found& end, std::int32_t next) const {
  if (next < 1 || next > maxCharge_) return 0.0;
  const double mz = mass / next + rules_.carrierMass;
  if (mz < peaks_.LowestMz() || mz > peaks_.HighestMz()) return 0.0;
  return std::min(kMostEndCost, kEndCostShare * AboveFaint(peaks_[end.peak].logIntensity));
}

bool ChargeWalk::Follow(double mass, std::int32_t seedCharge, ChargeRun& run) {
  Found seed{};
  if (seedCharge < 1 || seedCharge > maxCharge_) return false;
  if (!FindAt(mass / seedCharge + rules_.carrierMass, seedCharge, seed)) return false;
  run.score = owned_[seed.peak] != 0 ? 0.0 : seed.gain + kLogDensity;
  run.score += Walk(mass, -1, seed, nullptr, down_);
  run.score += Walk(mass, +1, seed, down_.empty() ? nullptr : &down_.front(), up_);
  if (down_.empty() && up_.empty()) return false;
  const Found& lowest = down_.empty() ? seed : down_.back();
  const Found& highest = up_.empty() ? seed : up_.back();
  run.score -= EndCost(mass, lowest, lowest.charge - 1) + EndCost(mass, highest, highest.charge + 1);
  Gather(seed, run);
  return true;
}

// What the place of this charge tells of the mass, where the neighbours' intensities let one expect this one.
double ChargeWalk::GainBetween(double mass, std::int32_t charge, double expected) const {
  Found found{};
  if (!FindAt(mass / charge + rules_.carrierMass, charge, found)) return -CostBetween(AboveFaint(expected));
  if (owned_[found.peak] != 0) return 0.0;
  const double off = peaks_[found.peak].logIntensity - expected;
  if (off < -kTooWeakBetween) return -CostBetween(-off);
  return found.gain + std::max(kLogDensityBetween - HalfSquare(off / kUsualScatter), kLogDensityOfLeap);
}

// A stretch without peaks between tells that the run stands on its own, even if the multiple is there as
// well.
bool ChargeWalk::IsPartOf(std::int32_t parts, double mass, const ChargeRun& run) const {
  double sum = 0.0;
  double stretch = 0.0;
  for (std::size_t k = 1; k < run.members.size(); ++k) {
    const ChargedPeak& low = run.members[k - 1];
    const ChargedPeak& high = run.members[k];
    const double logLow = peaks_[low.peak].logIntensity;
    const double rise = (peaks_[high.peak].logIntensity - logLow) / (parts * (high.charge - low.charge));
    for (std::int32_t charge = parts * low.charge + 1; charge < parts * high.charge; ++charge) {
      if (charge % parts == 0) continue;
      const double gain = GainBetween(parts * mass, charge, logLow + rise * (charge - parts * low.charge));
      sum += gain;
      stretch = std::min(0.0, stretch + gain);
      if (stretch < -kMostCostBetween) return false;
    }
  }
  return sum > 0.0;
}

void ChargeWalk::Gather(const Found& seed, ChargeRun& run) const {
  run.members.clear();
  for (std::size_t k = down_.size(); k-- > 0;) run.members.push_back({down_[k].charge, down_[k].peak});
  run.members.push_back({seed.charge, seed.peak});
  for (const Found& found : up_) run.members.push_back({found.charge, found.peak});
  run.unowned = static_cast<std::size_t>(std::ranges::count_if(
      run.members, [&](const ChargedPeak& member) { return owned_[member.peak] == 0; }));
}

}  // namespace TslMath
