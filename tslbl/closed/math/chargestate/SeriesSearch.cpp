#include <tslbl/closed/math/chargestate/SeriesSearch.h>

#include <tslbl/closed/math/Median.h>
#include <tslbl/closed/math/chargestate/HiddenPart.h>
#include <tslbl/closed/math/chargestate/SeriesMass.h>

#include <algorithm>
#include <cmath>

namespace TslMath {
namespace {

constexpr std::size_t kMostSeeds = 400;
constexpr std::int32_t kMostParts = 3;
constexpr std::size_t kLeastBesidesPart = 3;
constexpr double kScatterAtFirst = 1.0 / 3.0;  // of the window
constexpr double kOfMedian = 1.4826;           // standard deviations in the median size of a normal number
constexpr double kLeastRelativeScatter = 2e-5;
constexpr double kWindowInScatters = 4.0;
constexpr double kLeastWindow = 1.5e-4;
constexpr int kMostRounds = 4;
// What a close look can add: places fit better than the window allows for.
constexpr double kPromiseOfMember = 2.0;
constexpr double kMostPromise = 25.0;
// Evidence beyond what the best of all tried masses has by chance.
constexpr double kEvidence = 2.0;
constexpr double kEvidenceOfGap = 3.0;
constexpr double kEvidenceOfHighCharges = 20.0;
constexpr double kCostOfMissedSeed = 10.0;
constexpr double kWindowsOfSeeds = 2.0;  // from a whole charge
constexpr std::size_t kLeastToRefine = 3;
constexpr double kSameMass = 1.5e-4;
constexpr double kSameMassErrors = 3.0;

std::uint64_t KeyOf(std::size_t peak, std::int32_t charge) {
  return peak * (ChargeWalk::kMostCharge + 1) + static_cast<std::uint64_t>(charge);
}

}  // namespace

SeriesSearch::SeriesSearch(std::span<const IonPeak> peaks, const UnresolvedPrefs& prefs)
    : rows_(peaks),
      prefs_(prefs),
      window_(prefs.accuracy * 1e-6),
      peaks_(peaks, prefs.carrierMass, window_),
      places_(peaks_, window_),
      owned_(peaks_.Count(), 0),
      coarse_(peaks_, places_, owned_, {prefs.carrierMass, prefs.maxGaps}),
      fine_(peaks_, places_, owned_, {prefs.carrierMass, prefs.maxGaps}) {
  coarse_.SetToleranceOfMany({kScatterAtFirst * window_, window_});
}

SeriesSearch::ChargeRange SeriesSearch::ChargesOf(double mz) const {
  const double massAtOne = mz - prefs_.carrierMass;
  const double least = std::ceil(prefs_.minMass / massAtOne);
  const double most = std::floor(prefs_.maxMass / massAtOne);
  const double limit = ChargeWalk::MostCharge(window_);
  return {static_cast<std::int32_t>(std::clamp(least, 1.0, limit + 1.0)),
          static_cast<std::int32_t>(std::min(most, limit))};
}

double SeriesSearch::NeutralMass(std::size_t peak, std::int32_t charge) const {
  return charge * (peaks_[peak].mz - prefs_.carrierMass);
}

bool SeriesSearch::IsLargeEnough(const ChargeRun& run) const {
  return run.unowned >= static_cast<std::size_t>(prefs_.minSeriesSize) &&
         2 * run.unowned >= run.members.size();
}

// A complex of two or three of what was found shares every second or third charge with it.
bool SeriesSearch::IsSharedWithPart(const ChargeSeries& series, const ChargeRun& run) const {
  for (std::int32_t parts = 2; parts <= kMostParts; ++parts) {
    const bool isShared = std::ranges::all_of(run.members, [&](const ChargedPeak& member) {
      return owned_[member.peak] == 0 || member.charge % parts == 0;
    });
    const double part = series.mass / parts;
    if (isShared && std::ranges::any_of(accepted_, [&](const ChargeSeries& other) {
          return std::abs(other.mass - part) < kSameMass * part;
        }))
      return true;
  }
  return false;
}

bool SeriesSearch::IsLargeEnough(const Candidate& candidate) const {
  const ChargeRun& run = candidate.run;
  return IsLargeEnough(run) || (run.members.size() >= static_cast<std::size_t>(prefs_.minSeriesSize) &&
                                run.unowned >= kLeastBesidesPart && IsSharedWithPart(candidate.series, run));
}

void SeriesSearch::CollectHypotheses() {
  ChargeRun run;
  const auto least = static_cast<std::size_t>(prefs_.minSeriesSize);
  for (const std::size_t peak : peaks_.Strongest(kMostSeeds)) {
    const ChargeRange charges = ChargesOf(peaks_[peak].mz);
    for (std::int32_t charge = charges.first; charge <= charges.last; ++charge) {
      ++tried_;
      const double mass = NeutralMass(peak, charge);
      if (!coarse_.MayHave(least, mass, charge)) continue;
      if (!coarse_.Follow(mass, charge, run) || !IsLargeEnough(run)) continue;
      const auto members = static_cast<double>(run.members.size());
      hypotheses_.push_back({run.score + std::min(kMostPromise, kPromiseOfMember * members), peak, charge});
    }
  }
  std::ranges::stable_sort(hypotheses_, std::greater{}, &Hypothesis::promise);
}

double SeriesSearch::Threshold() const {
  return std::log(std::max(tried_, 1.0)) + kEvidence + kEvidenceOfGap * prefs_.maxGaps;
}

ChargeSeries SeriesSearch::SeriesOf(const ChargeRun& run) const {
  ChargeSeries series;
  series.score = run.score;
  for (const ChargedPeak& member : run.members)
    series.members.push_back({member.charge, peaks_[member.peak].row, 0.0, 0.0});
  UpdateMass(rows_, prefs_.carrierMass, series);
  return series;
}

// As the members scatter around their mass.
Tolerance SeriesSearch::CloserTolerance(const ChargeSeries& series) const {
  std::vector<double> sizes;
  for (const SeriesMember& member : series.members) sizes.push_back(std::abs(member.deviation) / member.mass);
  const auto n = static_cast<double>(sizes.size());
  const double found = kOfMedian * Median(std::move(sizes)) * std::sqrt((n + 1.0) / std::max(1.0, n - 1.0));
  const double most = 0.5 * window_;
  const double scatter = std::clamp(found, std::min(kLeastRelativeScatter, most), most);
  return {scatter, std::min(window_, std::max(kWindowInScatters * scatter, kLeastWindow))};
}

// With the tolerance that follows from the run, until it stays the same.
bool SeriesSearch::Refine(Candidate& candidate) {
  for (int round = 0; round < kMostRounds; ++round) {
    candidate.series = SeriesOf(candidate.run);
    fine_.SetTolerance(CloserTolerance(candidate.series));
    const std::vector<ChargedPeak> members = candidate.run.members;
    if (!fine_.Follow(candidate.series.mass, candidate.seedCharge, candidate.run)) return false;
    if (round > 0 && candidate.run.members == members) break;
  }
  candidate.series = SeriesOf(candidate.run);
  candidate.accepted = accepted_.size();
  return candidate.series.mass >= prefs_.minMass && candidate.series.mass <= prefs_.maxMass;
}

bool SeriesSearch::LookAt(double mass, std::int32_t charge, Candidate& candidate) {
  candidate.seedCharge = charge;
  return coarse_.Follow(mass, charge, candidate.run) &&
         candidate.run.members.size() >= static_cast<std::size_t>(prefs_.minSeriesSize) &&
         Refine(candidate) && IsLargeEnough(candidate);
}

// How many times the mass is what the peaks fit; 0 if it is right itself.
std::int32_t SeriesSearch::PartOf(const Candidate& candidate) {
  fine_.SetTolerance(CloserTolerance(candidate.series));
  for (std::int32_t parts = 2; parts <= kMostParts; ++parts)
    if (fine_.IsPartOf(parts, candidate.series.mass, candidate.run)) return parts;
  return 0;
}

// Its charges may be too high for the wide window of the first look. Where places lie so close chance fits
// more.
void SeriesSearch::LookAtMultiple(Candidate candidate, std::int32_t parts) {
  candidate.seedCharge *= parts;
  if (candidate.seedCharge <= ChargeWalk::MostCharge(window_)) return;
  fine_.SetTolerance(CloserTolerance(candidate.series));
  if (fine_.Follow(parts * candidate.series.mass, candidate.seedCharge, candidate.run) && Refine(candidate) &&
      IsLargeEnough(candidate) && candidate.run.score > Threshold() + kEvidenceOfHighCharges)
    candidates_.push(std::move(candidate));
}

// A member of a run that was looked at leads to the same run again.
void SeriesSearch::LookAtPromising() {
  while (next_ < hypotheses_.size()) {
    const Hypothesis& hypothesis = hypotheses_[next_];
    const double best = candidates_.empty() ? Threshold() : candidates_.top().run.score;
    if (hypothesis.promise < std::max(best, Threshold())) return;
    ++next_;
    if (covered_.contains(KeyOf(hypothesis.peak, hypothesis.charge))) continue;
    Candidate candidate;
    const double mass = NeutralMass(hypothesis.peak, hypothesis.charge);
    if (!LookAt(mass, hypothesis.charge, candidate)) continue;
    for (const ChargedPeak& member : candidate.run.members)
      covered_.insert(KeyOf(member.peak, member.charge));
    candidates_.push(std::move(candidate));
  }
}

// One whose peaks went to another series since is looked at once more.
std::optional<SeriesSearch::Candidate> SeriesSearch::Best() {
  for (LookAtPromising(); !candidates_.empty(); LookAtPromising()) {
    Candidate candidate = candidates_.top();
    candidates_.pop();
    const bool isCurrent = candidate.accepted == accepted_.size();
    const bool isUntouched = std::ranges::none_of(
        candidate.run.members, [&](const ChargedPeak& member) { return owned_[member.peak] != 0; });
    if (isCurrent || isUntouched) {
      const std::int32_t parts = PartOf(candidate);
      if (parts == 0) return candidate;
      LookAtMultiple(std::move(candidate), parts);
      continue;
    }
    if (LookAt(candidate.series.mass, candidate.seedCharge, candidate))
      candidates_.push(std::move(candidate));
  }
  return std::nullopt;
}

void SeriesSearch::Accept(Candidate candidate) {
  for (const ChargedPeak& member : candidate.run.members) owned_[member.peak] = 1;
  accepted_.push_back(std::move(candidate.series));
}

bool SeriesSearch::AreOne(const ChargeSeries& a, const ChargeSeries& b) const {
  const double apart =
      std::max(kSameMass * a.mass, kSameMassErrors * std::max(a.standardError, b.standardError));
  if (!(std::abs(a.mass - b.mass) < apart)) return false;
  return std::ranges::none_of(a.members, [&](const SeriesMember& member) {
    return std::ranges::find(b.members, member.charge, &SeriesMember::charge) != b.members.end();
  });
}

// Runs that a gap parted.
void SeriesSearch::JoinSameMasses() {
  for (std::size_t i = 0; i < accepted_.size(); ++i) {
    for (std::size_t k = i + 1; k < accepted_.size();) {
      ChargeSeries& series = accepted_[i];
      if (!AreOne(series, accepted_[k])) {
        ++k;
        continue;
      }
      series.score += accepted_[k].score;
      series.members.insert(series.members.end(), accepted_[k].members.begin(), accepted_[k].members.end());
      std::ranges::sort(series.members, {}, &SeriesMember::charge);
      UpdateMass(rows_, prefs_.carrierMass, series);
      accepted_.erase(accepted_.begin() + static_cast<std::ptrdiff_t>(k));
    }
  }
}

bool SeriesSearch::IsNew(double mass) const {
  return std::ranges::none_of(accepted_, [mass](const ChargeSeries& series) {
    return std::abs(series.mass - mass) < kSameMass * mass;
  });
}

void SeriesSearch::AddHiddenParts() {
  const std::size_t found = accepted_.size();
  const auto least = static_cast<std::size_t>(prefs_.minSeriesSize);
  for (std::size_t i = 0; i < found; ++i)
    for (std::int32_t parts = 2; parts <= kMostParts; ++parts) {
      if (accepted_.size() >= static_cast<std::size_t>(prefs_.maxSeries)) return;
      std::optional<ChargeSeries> part = HiddenPart(accepted_[i], rows_, parts, least, prefs_.carrierMass);
      if (part && part->mass >= prefs_.minMass && IsNew(part->mass)) accepted_.push_back(std::move(*part));
    }
}

std::vector<ChargeSeries> SeriesSearch::All() {
  if (peaks_.Count() < static_cast<std::size_t>(prefs_.minSeriesSize)) return {};
  CollectHypotheses();
  while (accepted_.size() < static_cast<std::size_t>(prefs_.maxSeries)) {
    std::optional<Candidate> best = Best();
    if (!best || best->run.score < Threshold()) break;
    Accept(std::move(*best));
  }
  JoinSameMasses();
  AddHiddenParts();
  return std::move(accepted_);
}

// The mean mass if the first seed has this charge. None if another one is then far from every whole charge,
// or at one that is taken.
std::optional<double> SeriesSearch::CommonMass(std::span<const std::size_t> seeds,
                                               std::int32_t charge) const {
  const double first = NeutralMass(seeds.front(), charge);
  std::vector<std::int32_t> charges = {charge};
  double sum = first;
  for (const std::size_t seed : seeds.subspan(1)) {
    const double nearest = std::round(first / NeutralMass(seed, 1));
    if (!(nearest >= 1.0 && nearest <= ChargeWalk::kMostCharge)) return std::nullopt;
    const auto other = static_cast<std::int32_t>(nearest);
    const double mass = NeutralMass(seed, other);
    if (std::abs(mass / first - 1.0) > kWindowsOfSeeds * window_) return std::nullopt;
    if (std::ranges::find(charges, other) != charges.end()) return std::nullopt;
    charges.push_back(other);
    sum += mass;
  }
  return sum / static_cast<double>(seeds.size());
}

bool SeriesSearch::LookFrom(double mass, std::int32_t charge, Candidate& candidate) {
  candidate.seedCharge = charge;
  if (!coarse_.Follow(mass, charge, candidate.run)) return false;
  if (candidate.run.members.size() >= kLeastToRefine) return Refine(candidate);
  candidate.series = SeriesOf(candidate.run);
  return candidate.series.mass >= prefs_.minMass && candidate.series.mass <= prefs_.maxMass;
}

std::vector<std::size_t> SeriesSearch::PlacesOf(std::span<const std::size_t> rows) const {
  std::vector<std::size_t> places;
  for (const std::size_t row : rows) {
    const std::size_t place = peaks_.PlaceOf(row);
    if (place < peaks_.Count() && std::ranges::find(places, place) == places.end()) places.push_back(place);
  }
  return places;
}

std::optional<ChargeSeries> SeriesSearch::Of(std::span<const std::size_t> rows) {
  const std::vector<std::size_t> seeds = PlacesOf(rows);
  if (seeds.empty()) return std::nullopt;
  std::optional<ChargeSeries> best;
  double most = 0.0;
  const ChargeRange charges = ChargesOf(peaks_[seeds.front()].mz);
  for (std::int32_t charge = charges.first; charge <= charges.last; ++charge) {
    const std::optional<double> mass = CommonMass(seeds, charge);
    Candidate candidate;
    if (!mass || !LookFrom(*mass, charge, candidate)) continue;
    double evidence = candidate.run.score;
    for (const std::size_t seed : seeds)
      if (std::ranges::find(candidate.run.members, seed, &ChargedPeak::peak) == candidate.run.members.end())
        evidence -= kCostOfMissedSeed;
    if (best && evidence <= most) continue;
    most = evidence;
    best = std::move(candidate.series);
  }
  return best;
}

}  // namespace TslMath
