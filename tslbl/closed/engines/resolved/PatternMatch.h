#pragma once
// Lays an isotope pattern on a peak list.
#include <tslbl/closed/engines/resolved/IsotopeList.h>
#include <tslbl/closed/engines/resolved/VisiblePatterns.h>

#include <optional>
#include <span>
#include <vector>

namespace TslMath {

struct PatternPeak {
  std::int32_t isotope;
  std::size_t peak;  // in IsotopeList
  double expected;   // intensity
};

struct Envelope {
  std::int32_t charge = 0;
  double monoMass = 0;  // Da
  double score = 0;     // 0 to 1
  double evidence = 0;  // score times the intensity explained, less of peaks that are off their places
  std::vector<PatternPeak> peaks;  // ascending isotopes
};

// Not for use by two threads at once.
class PatternMatch {
 public:
  // What a hypothesis must reach. Without, any two isotopes will do.
  enum class Demand { Significant, None };

  // All are referred to. `remaining` is what earlier patterns left of the intensities, of each peak.
  PatternMatch(const IsotopeList& list, const ResolvedPrefs& prefs, VisiblePatterns& patterns,
               const std::vector<double>& remaining);

  // The pattern of this charge in which `anchor`, of which something remains, is at this place. Other places
  // have the peak in their window that is strongest and nearest, from the anchor to both sides, up to more
  // places without a peak in a row than may be. Nothing for less than two peaks, or evidence so small that
  // chance makes as much.
  bool Lay(std::size_t anchor, std::int32_t charge, const VisiblePattern& pattern, std::size_t place,
           Envelope& envelope, Demand demand = Demand::Significant);

  // The one with most evidence that reaches the least score, over all charges, the anchor being one of the
  // five isotopes around the top.
  bool Best(std::size_t anchor, Envelope& envelope);
  // The one with most evidence over all places at which its mass is about `mass`.
  bool BestAtMass(std::size_t anchor, std::int32_t charge, double mass, double tolerance, Envelope& envelope,
                  Demand demand = Demand::Significant);

  double MassOf(std::size_t anchor, std::int32_t charge) const { return charge * list_[anchor].massAtOne; }
  const VisiblePattern& PatternOf(std::size_t anchor, std::int32_t charge);
  double HalfWindow(double mz, std::int32_t charge) const;
  // The peak in this window that is strongest and nearest.
  std::optional<std::size_t> PeakNear(double mz, std::int32_t charge) const;

 private:
  static constexpr std::size_t kNone = static_cast<std::size_t>(-1);

  bool HasNeighbour(std::size_t anchor, std::int32_t charge) const;
  std::size_t StrongestNear(double mz, double reach, std::size_t from, int step) const;
  void FindPeaks(std::size_t anchor, std::int32_t charge, const VisiblePattern& pattern, std::size_t place,
                 double reach);
  double ChanceEvidence(std::size_t anchor, std::int32_t charge, const VisiblePattern& pattern,
                        std::size_t place, double reach) const;
  bool Counts(std::size_t place) const { return found_[place] != kNone || missed_[place] != 0; }
  double MostEvidence() const;
  double Observed(std::size_t place) const;
  double Scale(const VisiblePattern& pattern);
  double BelowFirst(std::size_t anchor, std::int32_t charge, const VisiblePattern& pattern, std::size_t place,
                    double reach, double most) const;
  double SumOfDeviations(const VisiblePattern& pattern, double scale, double below) const;
  double CrossCorrelation(const VisiblePattern& pattern, double below) const;
  void Report(std::size_t anchor, const VisiblePattern& pattern, std::size_t place, double reach,
              double scale, Envelope& envelope) const;
  bool TakeTrial(bool hasOne, Envelope& envelope);

  const IsotopeList& list_;
  const ResolvedPrefs& prefs_;
  VisiblePatterns& patterns_;
  const std::vector<double>& remaining_;
  std::vector<double> logCharges_;
  std::vector<std::size_t> found_;  // peak of each place of the pattern
  std::vector<char> missed_;        // places without one that should be seen
  std::vector<std::pair<double, double>> ratios_;
  double leastChance_ = 0;    // evidence that chance does not make, of so many peaks and charges
  double leastEvidence_ = 0;  // a pattern with less is of no use
  Envelope trial_;
};

}  // namespace TslMath
