#pragma once
// The search for all series of a list: every charge of every strong peak is a mass to be tried; the likeliest
// are looked at closely, and the best takes its peaks, until none is left.
#include <tslbl/closed/math/chargestate/ChargeWalk.h>
#include <tslbl/closed/math/chargestate/UnresolvedSeries.h>

#include <optional>
#include <queue>
#include <unordered_set>

namespace TslMath {

class SeriesSearch {
 public:
  // `peaks` is referred to; `prefs` are such as FindAllSeries takes.
  SeriesSearch(std::span<const IonPeak> peaks, const UnresolvedPrefs& prefs);

  std::vector<ChargeSeries> All();
  std::optional<ChargeSeries> Of(std::span<const std::size_t> rows);

 private:
  struct Hypothesis {
    double promise;  // the most that a close look may make of it
    std::size_t peak;
    std::int32_t charge;
  };
  // A run after a close look.
  struct Candidate {
    ChargeRun run;
    ChargeSeries series;
    std::int32_t seedCharge;
    std::size_t accepted;  // series accepted when it was looked at

    bool operator<(const Candidate& other) const { return run.score < other.run.score; }
  };
  struct ChargeRange {
    std::int32_t first;
    std::int32_t last;
  };

  ChargeRange ChargesOf(double mz) const;
  double NeutralMass(std::size_t peak, std::int32_t charge) const;
  bool IsLargeEnough(const ChargeRun& run) const;
  bool IsLargeEnough(const Candidate& candidate) const;
  void CollectHypotheses();
  double Threshold() const;
  ChargeSeries SeriesOf(const ChargeRun& run) const;
  Tolerance CloserTolerance(const ChargeSeries& series) const;
  bool Refine(Candidate& candidate);
  bool LookAt(double mass, std::int32_t charge, Candidate& candidate);
  bool IsSharedWithPart(const ChargeSeries& series, const ChargeRun& run) const;
  std::int32_t PartOf(const Candidate& candidate);
  void LookAtMultiple(Candidate candidate, std::int32_t parts);
  bool LookFrom(double mass, std::int32_t charge, Candidate& candidate);
  void LookAtPromising();
  std::optional<Candidate> Best();
  void Accept(Candidate candidate);
  void JoinSameMasses();
  bool IsNew(double mass) const;
  void AddHiddenParts();
  std::vector<std::size_t> PlacesOf(std::span<const std::size_t> rows) const;
  std::optional<double> CommonMass(std::span<const std::size_t> seeds, std::int32_t charge) const;
  bool AreOne(const ChargeSeries& a, const ChargeSeries& b) const;

  std::span<const IonPeak> rows_;
  UnresolvedPrefs prefs_;
  double window_;  // relative to m/z
  RankedPeaks peaks_;
  PlaceMap places_;
  std::vector<char> owned_;
  ChargeWalk coarse_;
  ChargeWalk fine_;
  double tried_ = 0;  // masses
  std::vector<Hypothesis> hypotheses_;
  std::size_t next_ = 0;
  std::unordered_set<std::uint64_t> covered_;
  std::priority_queue<Candidate> candidates_;
  std::vector<ChargeSeries> accepted_;
};

}  // namespace TslMath
