#pragma once
// How long a tune takes, in words.

#include <tslbl/tune/Tune.h>
#include <string>

namespace TslTool {

// A section of the sheet: the steps, what a spectrum's time is made of, the scan speed and, where
// that is not the speed of the steps, why; the settling. What cannot be worked out says why.
std::string TuneTiming(const TslBL::Tune& tune);

}  // namespace TslTool
