#pragma once
// What a user may ask for who asked for scans that are not there.

#include <tool/io/SpectrumSource.h>
#include <string>

namespace TslTool {

// ": its scans are 1 to 20; its polarity is positive", or the like: for each of number, time, level and
// polarity by which scans are chosen, what the input has, if none of its scans has what is wanted. Empty if
// each is there, or there are no scans. Reads the input once more, which must be possible; no spectrum is put
// on its axis. Throws InputError.
std::string ScansInstead(const std::string& input, const SpectrumChoice& wanted);

}  // namespace TslTool
