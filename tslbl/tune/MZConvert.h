#pragma once
// Between m/z and the quadrupole's mass DAC value, along a table of calibration points.
//
// Between the points both directions follow straight lines, so that each is the other's
// inverse where the DAC values rise with m/z, which nothing here checks. Outside the table
// they differ: MZToDAC goes on along the end segment, DACToMZ along the chord from the
// first point to the last. DAC values are not rounded to steps.
//
// An empty table gives 0, a table of one point that point, for any value.
//
// The conversions may run on many threads at once, but not beside WCalPts. Each takes time
// linear in the number of points.

#include <tslbl/Export.h>
#include <tslbl/tune/MZCalPt.h>
#include <utility>
#include <vector>

namespace TslBL {

class TSLBL_API MZConvert {
 public:
  MZConvert() = default;
  MZConvert(const std::vector<MZCalPt>& points) { WCalPts(points); }

  // Replaces the table. The points may come in any order; those of equal m/z end up in an
  // undefined one.
  void WCalPts(const std::vector<MZCalPt>& points);

  // Both throw std::runtime_error "Divide by zero error" on a segment whose ends have the
  // same m/z; MZToDAC does not outside the table, where it gives an infinity or a NaN. On
  // a segment whose ends have the same DAC value, DACToMZ gives the lower m/z.
  double MZToDAC(double mz) const;
  double DACToMZ(double dac) const;

  // The table: m/z and mass DAC value, ascending in m/z.
  const std::vector<std::pair<double, double>>& Points() const { return points_; }

 private:
  std::vector<std::pair<double, double>> points_;  // m/z, mass DAC value; ascending in m/z
};

}  // namespace TslBL
