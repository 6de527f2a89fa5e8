#pragma once
// The m/z range that a tune covers.

#include <tslbl/Export.h>
#include <tslbl/tune/Tune.h>
#include <utility>

namespace TslBL {

// Low and high m/z. A SIM covers its span around the centre, or just the centre.
TSLBL_API std::pair<double, double> QMassRange(const Tune& tune);
// Of a tune with these settings.
TSLBL_API std::pair<double, double> QMassRange(Control::Types type, double mzLow, double mzHi);

}  // namespace TslBL
