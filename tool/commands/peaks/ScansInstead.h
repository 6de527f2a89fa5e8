#pragma once
// What a user may ask for who asked for scans that are not there.

#include <tool/io/SpectrumSource.h>
#include <string>

namespace TslTool {

// ": its scans are 1 to 20", or the like, if the input has scans and none of the numbers that are wanted;
// else empty. Reads the input once more, which must be possible; no spectrum is put on its axis. Throws
// InputError.
std::string ScansInstead(const std::string& input, const SpectrumChoice& wanted);

}  // namespace TslTool
