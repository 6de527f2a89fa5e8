#pragma once
// How well the m/z of peaks are known whose errors nothing tells, as those of a list, by their isotopes.

#include <tslbl/chargestate/DeconSpectrum.h>

namespace TslTool {

// Standard error of the m/z of one peak, relative to m/z: isotopes of one charge are evenly spaced, and what
// three and more lie off a straight line over their number tells how well they are placed, in all resolved
// series together by the median, so that some peaks of something else do not count. NaN where fewer than 6
// peaks are left when each line has had its two. An error of the m/z axis, which isotopes share, is not in
// it.
double IsotopeScatter(const TslBL::DeconSpectrum& spectrum);

}  // namespace TslTool
