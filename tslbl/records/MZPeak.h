#pragma once
// A peak of a spectrum as the user sees it: one flat row in m/z and amplitude, whether it
// comes from the peak table or from a fit of overlapping peaks. A row holds all that it
// says; it does not refer back to its spectrum.
//
// Area, width, resolution and limits of an overlap peak are those of the fitted Gaussian
// as it is stored: its width counts points of the curve, not m/z.

#include <tslbl/Export.h>
#include <tslbl/records/CSSeries.h>
#include <tslbl/records/MZPeakField.h>
#include <tslbl/records/MZRange.h>
#include <tslbl/records/PeakValues.h>
#include <tslbl/records/Record.h>
#include <cstdint>
#include <vector>

namespace TslBL {

// The values of any peak, with x in m/z, and these.
struct TSLBL_API MZPeak : SerialRecord<MZPeak>, PeakValues {
  enum Kinds : std::uint32_t { DataPeak = 0, OverlapPeak = 1 };

  std::uint32_t Kind = DataPeak;
  std::uint32_t CurveId = 0;
  // A data peak's index in the peak table; for an overlap peak its index among the overlap
  // peaks plus the number of data peaks.
  std::uint32_t PeakId = 0;
  double Mass = 0.0;      // the m/z at which the peak is reported
  double Ampl = 0.0;      // the amplitude with which it is reported
  CSSeries CSSeriesRef;   // the charge-state series that it belongs to
  double CSValue1 = 0.0;  // monoisotopic mass
  double CSValue2 = 0.0;  // average mass of the series
  double CSValue3 = 0.0;  // deviation in mass
  std::int32_t CSCharge = 0;
  bool IsOverlapped = false;  // a data peak that overlap peaks stand for
  std::uint32_t GroupId = 0;  // overlap group, 0 for none
};

TSLBL_API void Describe(Archive& ar, MZPeak& peak);

// The peak of largest Ampl from range.Start to range.End, both inclusive, whatever the
// range's type; the first of equals. `peaks` ascend by Mass: the search ends at the first
// beyond the range. A default peak if none in the range has an Ampl above 0.
TSLBL_API MZPeak FindBasePeak(const std::vector<MZPeak>& peaks, const MZRange& range);

// The value that `field` names. Both throw std::runtime_error "Unknown MZPeakField type"
// for a number that names none.
TSLBL_API double QMZPeakField(const MZPeak& peak, const MZPeakField& field);
// Mass and Ampl also go to where the peak took them from: to the centroid if they equal
// its values, otherwise to the maximum.
TSLBL_API void WMZPeakField(MZPeak& peak, const MZPeakField& field, double value);

}  // namespace TslBL
