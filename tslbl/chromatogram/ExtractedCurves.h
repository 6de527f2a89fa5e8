#pragma once
// The points that a spectrum gives to extracted ion chromatograms.
//
// A curve definition is a short formula. Letters A to J, in either case, are ranges of m/z; digits 1 to 8 are
// curves defined before it; a sign holds for all that follows up to the next one. "A+B-C" adds two ranges and
// takes a third away, and so does "A+B-c"; "A-BC" takes away B and C; "1-2" is the difference of two curves.

#include <tslbl/Export.h>
#include <tslbl/records/MZRange.h>
#include <tslbl/spectrum/Spectrum.h>
#include <string>
#include <vector>

namespace TslBL {

// The mean amplitude of the points in each range, both ends included, whatever the range's type. A range
// beside the axis gives no value: those of later ranges move up, and zeros stand at the end. One that lies
// between two points gives NaN. As many values as ranges. Takes time linear in the points inside the ranges.
TSLBL_API std::vector<double> CalcSpectrumEICRanges(const Spectrum& spectrum,
                                                    const std::vector<MZRange>& ranges);

// A point for each definition; one below 0 becomes 0, for later definitions too. False at the first
// definition that is not valid, with `error` naming it and whether a character, a letter or a number is not;
// points before it stand.
TSLBL_API bool CalcEICPoints(const std::vector<double>& rangeValues,
                             const std::vector<std::wstring>& curveDefs, std::vector<double>& points,
                             std::wstring& error);

}  // namespace TslBL
