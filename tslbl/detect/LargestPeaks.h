#pragma once
// The peaks with the largest area, maximum and centroid amplitude.

#include <tslbl/curve/PeakInfo.h>
#include <cmath>

namespace TslBL {

// Of rows with equal values the one that comes first on the curve stays, so that the result
// depends neither on the order in which rows are found nor on that in which parallel bodies
// finish. Owns nothing.
struct LargestPeaks {
  const PeakInfo* area = nullptr;
  const PeakInfo* maxAmpl = nullptr;
  const PeakInfo* centroidAmpl = nullptr;

  void Offer(const PeakInfo& row) {
    Offer(area, &row, &PeakInfo::area);
    Offer(maxAmpl, &row, &PeakInfo::maxAmpl);
    Offer(centroidAmpl, &row, &PeakInfo::centroidAmpl);
  }

  // Each pointer is offered for its own value.
  void Join(const LargestPeaks& other) {
    Offer(area, other.area, &PeakInfo::area);
    Offer(maxAmpl, other.maxAmpl, &PeakInfo::maxAmpl);
    Offer(centroidAmpl, other.centroidAmpl, &PeakInfo::centroidAmpl);
  }

 private:
  static void Offer(const PeakInfo*& holder, const PeakInfo* row, double PeakInfo::*value) {
    if (row == nullptr) return;
    if (holder == nullptr || Outranks(row->*value, holder->*value) ||
        (*row < *holder && !Outranks(holder->*value, row->*value)))
      holder = row;
  }
  // A total order: a NaN, as odd data give, is below every number.
  static bool Outranks(double a, double b) { return a > b || (std::isnan(b) && !std::isnan(a)); }
};

}  // namespace TslBL
