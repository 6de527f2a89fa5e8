#pragma once
// Holds a mass against a peak list: which charges have a peak, and how much likelier a series is than chance.
#include <tslbl/closed/math/chargestate/PlaceMap.h>
#include <tslbl/closed/math/chargestate/RankedPeaks.h>

#include <cstdint>
#include <vector>

namespace TslMath {

struct WalkRules {
  double carrierMass;    // Da
  std::int32_t maxGaps;  // charges in a row that may lack a peak
};

// Both relative to m/z. Never is the scatter taken for less than 0.03 m/z, nor for more than half a window.
struct Tolerance {
  double scatter;  // standard deviation of places
  double window;   // half width of that in which a peak counts
};

struct ChargedPeak {
  std::int32_t charge;
  std::size_t peak;  // in RankedPeaks

  bool operator==(const ChargedPeak&) const = default;
};

struct ChargeRun {
  double score = 0;
  std::size_t unowned = 0;           // members that belong to no other series yet
  std::vector<ChargedPeak> members;  // ascending charge
};

// Which owner a peak has is looked up at each call. Not for use by two threads at once.
class ChargeWalk {
 public:
  // All three are referred to. No tolerance may be wider than the map's. `owned` has an entry for each peak,
  // not 0 for one that another series has: it neither speaks for a series nor against it.
  ChargeWalk(const RankedPeaks& peaks, const PlaceMap& places, const std::vector<char>& owned,
             const WalkRules& rules);

  // Places nearer to each other than five windows would fit any peaks at even distances, such as ripples:
  // the narrower the window, the higher the charges that count.
  static constexpr std::int32_t kMostCharge = 400;
  static std::int32_t MostCharge(double window);

  void SetTolerance(const Tolerance& tolerance);
  // What depends on the tolerance is worked out for all peaks at once, which pays for more than some walks.
  void SetToleranceOfMany(const Tolerance& tolerance);

  // The run through `seedCharge` in which the evidence is strongest. False if that charge has no peak, or no
  // other has one. Each peak counts with the logarithm of
  //
  //     density of the series there / density of the list's peaks there
  //
  // both over m/z and the logarithm of the intensity. What a series expects of an intensity is that over the
  // charge its logarithm bends downwards, gently or, as of native proteins, steeply. So peaks as a crowded
  // list has everywhere speak against a run as often as for it. A missing charge counts against the run the
  // more, the stronger the peak before it, and so does an end where the next place would be within the
  // list's range.
  bool Follow(double mass, std::int32_t seedCharge, ChargeRun& run);
  // Whether the run is every second charge, or every third, ... of `parts` times its mass: the charges
  // between have peaks as well, as strong as their neighbours, all along.
  bool IsPartOf(std::int32_t parts, double mass, const ChargeRun& run) const;
  // Whether the run may have as many members. Costs little, and is never wrong when it says no.
  bool MayHave(std::size_t members, double mass, std::int32_t seedCharge) const;

 private:
  struct PlaceTerms {
    double ceiling;    // what a peak at the very place counts
    double curvature;  // what the square of a distance takes off
  };
  struct Found {
    std::int32_t charge;
    std::size_t peak;
    double gain;  // of the place alone
  };

  PlaceTerms TermsOf(std::size_t peak) const;
  bool FindAt(double mz, std::int32_t charge, Found& found) const;
  std::size_t CountPlaces(double mass, std::int32_t seedCharge, std::int32_t step, std::size_t enough) const;
  double Walk(double mass, std::int32_t step, const Found& seed, const Found* behindSeed,
              std::vector<Found>& side) const;
  void Gather(const Found& seed, ChargeRun& run) const;
  double Gain(const Found& found, const Found& before, const Found* beforeThat) const;
  double AboveFaint(double logIntensity) const;
  double GainBetween(double mass, std::int32_t charge, double expected) const;
  double EndCost(double mass, const Found& end, std::int32_t next) const;

  const RankedPeaks& peaks_;
  const PlaceMap& places_;
  const std::vector<char>& owned_;
  WalkRules rules_;
  Tolerance tolerance_{};
  std::int32_t maxCharge_ = 0;
  double logScatter_ = 0;
  std::vector<PlaceTerms> terms_;  // of all peaks, or empty
  std::vector<Found> down_;        // from the seed on
  std::vector<Found> up_;
};

}  // namespace TslMath
