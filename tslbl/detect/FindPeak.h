#pragma once
// Which peak of a table spans a point.

#include <tslbl/curve/PeakInfo.h>
#include <cstdint>
#include <vector>

namespace TslBL {

// A vector of pointers with the interface of a vector of what they point to. Does not own
// the vector, which must outlive it; no pointer may be null.
template <class T>
class pointer_vector_adaptor {
 public:
  explicit pointer_vector_adaptor(const std::vector<T*>& pointers) : pointers_(pointers) {}

  std::size_t size() const { return pointers_.size(); }
  bool empty() const { return pointers_.empty(); }
  const T& operator[](std::size_t i) const { return *pointers_[i]; }
  const T& front() const { return *pointers_.front(); }
  const T& back() const { return *pointers_.back(); }

 private:
  const std::vector<T*>& pointers_;
};

namespace detail {
inline const PeakInfo& AsPeak(const PeakInfo& peak) { return peak; }
inline const PeakInfo& AsPeak(const PeakInfo* peak) { return *peak; }
}  // namespace detail

// The index of the peak that spans the point, from startIdx to endIdx inclusive; -1 for a
// point between two peaks and for an empty table. The peaks must ascend and not overlap.
// C is a vector of PeakInfo, of pointers to it, or the adaptor. Cost: O(log peaks).
template <class C>
std::int32_t FindPeakIdxByCurveIdx(const C& peaks, std::uint32_t curveIdx) {
  if (peaks.empty() || curveIdx < detail::AsPeak(peaks.front()).startIdx ||
      curveIdx > detail::AsPeak(peaks.back()).endIdx)
    return -1;
  const auto n = static_cast<std::int64_t>(peaks.size());
  std::int64_t lo = 0;
  std::int64_t hi = n;
  for (std::int64_t mid = n / 2; hi >= lo; mid = lo + (hi - lo) / 2) {
    const PeakInfo& peak = detail::AsPeak(peaks[static_cast<std::size_t>(mid)]);
    if (curveIdx < peak.startIdx) {
      hi = mid - 1;
    } else if (curveIdx <= peak.endIdx) {
      return static_cast<std::int32_t>(mid);
    } else {
      lo = mid + 1;
    }
  }
  return -1;
}

}  // namespace TslBL
