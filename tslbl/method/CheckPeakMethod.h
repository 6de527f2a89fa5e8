#pragma once
// The short method that looks whether known peaks are where they should be.

#include <tslbl/Export.h>
#include <tslbl/method/Method.h>
#include <set>

namespace TslBL {

// One time period without end and with a sequence item for each m/z, in ascending order: a scan of
// 20 m/z around it in steps of 0.1, and all else as in `tune`. What the rules of a tune refuse there
// stays as it is in `tune`, such as an end beyond the m/z that the instrument reaches.
//
// Throws std::invalid_argument without m/z, and as DevTuneRules::QDuration does.
TSLBL_API Method CheckPeakMethod(const std::set<double>& mzs, const Tune& tune);

}  // namespace TslBL
