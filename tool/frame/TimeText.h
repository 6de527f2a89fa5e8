#pragma once
// Times as a user types and reads them.

#include <cstdint>
#include <string>
#include <string_view>

namespace TslTool {

// A number of "ms", "s", "min" or "h", or of seconds without a unit, such as "90", "1.5min" or "250ms", in
// milliseconds, rounded. Throws UsageError with the option's name for another text, and for a time below 0 or
// beyond 32 bits.
std::uint32_t ParseMilliseconds(const std::string& option, std::string_view text);

// In the largest unit that needs no more than two decimals, as ParseMilliseconds takes it: "1.5min", "90.5s",
// "250ms".
std::string ShownMilliseconds(std::uint32_t ms);

// Seconds with six significant digits and the unit: "0.0125 s".
std::string ShownSeconds(double seconds);

}  // namespace TslTool
