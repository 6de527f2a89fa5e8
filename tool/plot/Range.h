#pragma once
// The values that an axis shows.

#include <limits>
#include <span>

namespace TslTool {

// From low to high; a new range is empty, which is how a search for the ends of data begins.
struct Range {
  double low = std::numeric_limits<double>::infinity();
  double high = -std::numeric_limits<double>::infinity();

  bool IsEmpty() const { return !(low <= high); }
  // Grows to hold the value; one that is not finite changes nothing.
  void Include(double value);
  void Include(std::span<const double> values);
  // Where a value lies: 0 at low, 1 at high, and beyond these outside.
  double Part(double value) const { return (value - low) / (high - low); }
  // The range with `share` of its size added at both ends. A range of one value, or so narrow that an axis
  // could not tell its ends apart, gets room of a tenth of that value, 1 at least. An empty range becomes 0
  // to 1, and ends beyond 1e300 are cut there, so that an axis can show the result whatever it came from.
  Range Padded(double share) const;
};

}  // namespace TslTool
