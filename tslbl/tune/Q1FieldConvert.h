#pragma once
// A lens that follows m/z: the curve of one field through the calibration points of a tune
// that carry it.
//
// Between points the curve is straight. Beyond its ends it is level for the capillary
// exit, the Q0 RF amplitude and the Q0 and Q1 offsets, and goes on along the end segment
// for the others (BeyondEnds in FieldTable.h). Values are cut to the limits of the field.
//
// A value; evaluations may run on many threads at once.

#include <tslbl/Export.h>
#include <tslbl/tune/Q1CalPt.h>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace TslBL {

class TSLBL_API Q1FieldConvert {
 public:
  // Both throw VexException "The field ... is not steppable." for a field that cannot
  // follow m/z.
  Q1FieldConvert(const std::vector<Q1CalPt>& points, TuneField::Id field) { WCalPts(points, field); }
  void WCalPts(const std::vector<Q1CalPt>& points, TuneField::Id field);

  // Whether no point carries the field.
  bool Empty() const { return points_.empty(); }
  // m/z and value, ascending in m/z.
  const std::vector<std::pair<double, double>>& QPoints() const { return points_; }
  // The lowest m/z that two points share: between them the curve is open.
  std::optional<double> QOpenMZ() const;

  // False with a text for the user, and `value` left alone, if no point carries the field.
  // Throws std::runtime_error "Divide by zero error" on a segment between two points of
  // the same m/z.
  bool MZToFieldVal(double mz, double& value, std::wstring& error) const;
  // The same value; without points, 0 cut to the limits.
  double MZToFieldVal(double mz) const;

 private:
  double Interpolate(double mz) const;

  std::vector<std::pair<double, double>> points_;
  bool level_ = false;  // beyond the ends
  double min_ = 0.0;
  double max_ = 0.0;
};

}  // namespace TslBL
