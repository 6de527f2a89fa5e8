#pragma once
// The points of a group as the engine is given them, and groups as runs of equal numbers.
//
// For the sources of the library; not part of its interface.

#include <tslbl/spectrum/Spectrum.h>
#include <algorithm>
#include <cstdint>
#include <span>
#include <vector>

namespace TslBL {

struct GroupPoints {
  std::uint32_t first;    // of the spectrum's points
  std::vector<double> x;  // 0, 1, 2 ...
  std::vector<double> y;

  std::uint32_t Count() const { return static_cast<std::uint32_t>(x.size()); }
};

// The points from `first` to `last`. Throws std::logic_error "Invalid group range." if the last lies before
// the first, and "Invalid spectrum range." if the spectrum ends before the last.
GroupPoints QGroupPoints(const Spectrum& spectrum, std::uint32_t first, std::uint32_t last);

// Calls `work(run)` with each run of peaks of equal GroupId.
template <class Peak, class Work>
void ForEachGroup(std::span<const Peak> peaks, Work work) {
  for (auto begin = peaks.begin(); begin != peaks.end();) {
    const auto end =
        std::find_if(begin, peaks.end(), [&](const Peak& p) { return p.GroupId != begin->GroupId; });
    work(std::span<const Peak>(begin, end));
    begin = end;
  }
}

}  // namespace TslBL
