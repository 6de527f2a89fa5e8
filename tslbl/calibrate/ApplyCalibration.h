#pragma once
// A finished calibration on any spectrum.

#include <tslbl/Export.h>
#include <tslbl/curve/Changed.h>
#include <tslbl/spectrum/Spectrum.h>
#include <tslbl/tune/MZCalPt.h>
#include <string>
#include <vector>

namespace TslBL {

// Makes the m/z axis anew from `calPts`, and detects the peaks anew if they were detected before. All that
// hangs on the axis counts as changed. False with a text if that detection fails; the axis is the new one all
// the same. Throws std::runtime_error "Divide by zero error" for two points at one m/z, with everything as it
// was.
TSLBL_API bool ApplyCalibration(Spectrum& spectrum, const std::vector<MZCalPt>& calPts, Changed& changed,
                                std::wstring& error);

}  // namespace TslBL
