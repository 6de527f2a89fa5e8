#pragma once
// A peak list made ready for the search for series: in the order of m/z, and with how crowded it is.
#include <tslbl/closed/math/chargestate/IonPeak.h>

#include <cstddef>
#include <span>
#include <vector>

namespace TslMath {

struct RankedPeak {
  double mz;
  double logMz;
  double logIntensity;
  double logAlike;  // logarithm of the peaks near by of like strength, per m/z and per factor of e
  std::size_t row;  // in the caller's list
};

// Peaks whose intensity is not finite and above 0, or whose place is not above 0 and the carrier's mass or
// is beyond 1e6 are left out. So is one that has a stronger one within a fiftieth of the window, relative to
// m/z: nothing is lost by it, and a window never holds more than a hundred peaks. Near by is up to 12 % of
// the list's range, and at least 50 m/z; of like strength, within a factor of two. O(n log n).
class RankedPeaks {
 public:
  RankedPeaks(std::span<const IonPeak> peaks, double carrierMass, double window);

  std::size_t Count() const { return peaks_.size(); }
  const RankedPeak& operator[](std::size_t i) const { return peaks_[i]; }
  double LowestMz() const { return peaks_.front().mz; }
  double HighestMz() const { return peaks_.back().mz; }
  // One in twenty is fainter.
  double LogFaint() const { return logFaint_; }
  // Index of the first peak from there on. O(1) for peaks that spread out, O(log n) for others.
  std::size_t FirstFrom(double mz) const;
  // The strongest, at most so many, strongest first.
  std::vector<std::size_t> Strongest(std::size_t count) const;
  // Where a row of the caller's list went; Count() for one that was left out.
  std::size_t PlaceOf(std::size_t row) const;

 private:
  struct Stretch {
    std::size_t first;
    std::size_t pastLast;
    double span;  // m/z
  };

  void Take(std::span<const IonPeak> peaks, double carrierMass, double window);
  void CountAlike();
  std::vector<std::size_t> CountNearBy(const std::vector<std::size_t>& order, double strength) const;
  Stretch NearBy(std::size_t i) const;
  void BuildIndex();

  std::vector<RankedPeak> peaks_;
  double logFaint_ = 0;
  std::vector<std::size_t> cells_;
  double cellsPerMz_ = 0;
};

}  // namespace TslMath
