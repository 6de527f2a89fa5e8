#pragma once
// A peak list made ready for the search for isotope patterns.
#include <tslbl/closed/engines/resolved/ResolvedSeries.h>

#include <cstddef>
#include <span>
#include <vector>

namespace TslMath {

struct ListedPeak {
  double mz;
  double massAtOne;  // Da, neutral, if the charge were 1
  double logMassAtOne;
  double intensity;
  double leastSeen;  // the intensity that a peak here must have to be seen
  double logRivals;  // logarithm of the peaks per m/z within 60 m/z that are at least as strong
  std::size_t row;   // in the caller's list
};

// Ascending m/z.
class IsotopeList {
 public:
  IsotopeList(std::span<const IonPeak> peaks, const ResolvedPrefs& prefs);

  std::size_t Count() const { return peaks_.size(); }
  const ListedPeak& operator[](std::size_t i) const { return peaks_[i]; }
  // The first peak from there on; Count() if there is none.
  std::size_t FirstFrom(double mz) const;
  // Where a row of the caller's list went; Count() for one that was left out.
  std::size_t PlaceOf(std::size_t row) const;

 private:
  void CountRivals();

  std::vector<ListedPeak> peaks_;
};

}  // namespace TslMath
