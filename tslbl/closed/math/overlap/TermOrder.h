#pragma once
// Which numbers of a sum of peaks a fit may change, and in which order they stand.
#include <cstddef>

namespace TslMath {

// The numbers of a sum that a fit may change, the others are kept. Heights it always may.
struct FreeTerms {
  enum class Widths { Kept, Shared, Own };
  bool places = true;
  Widths widths = Widths::Shared;
  bool skew = false;
  bool baseline = true;
};

// Where in the array of free numbers each of them stands: heights, tops, widths, skew, baseline.
class TermOrder {
 public:
  TermOrder(std::size_t peaks, const FreeTerms& free) : peaks_(peaks), free_(free) {}

  const FreeTerms& Free() const { return free_; }
  std::size_t Peaks() const { return peaks_; }
  std::size_t Height(std::size_t peak) const { return peak; }
  std::size_t Top(std::size_t peak) const { return peaks_ + peak; }
  std::size_t Width(std::size_t peak) const { return peaks_ + TopCount() + (HasOwnWidths() ? peak : 0); }
  std::size_t Skew() const { return peaks_ + TopCount() + WidthCount(); }
  std::size_t Baseline() const { return Skew() + (free_.skew ? 1 : 0); }
  std::size_t Count() const { return Baseline() + (free_.baseline ? 1 : 0); }

  bool HasOwnWidths() const { return free_.widths == FreeTerms::Widths::Own; }
  bool HasSharedWidth() const { return free_.widths == FreeTerms::Widths::Shared; }
  std::size_t WidthCount() const { return HasOwnWidths() ? peaks_ : HasSharedWidth() ? 1 : 0; }

 private:
  std::size_t TopCount() const { return free_.places ? peaks_ : 0; }

  std::size_t peaks_;
  FreeTerms free_;
};

}  // namespace TslMath
