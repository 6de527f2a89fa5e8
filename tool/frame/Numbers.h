#pragma once
// Numbers and ranges as a user types them; the whole text must be one.

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace TslTool {

// All throw UsageError with the option's name and the text that is wrong.
double ParseReal(const std::string& option, std::string_view text);
std::uint32_t ParseCount(const std::string& option, std::string_view text);
std::uint64_t ParseLongCount(const std::string& option, std::string_view text);

struct RealRange {
  double from;
  double to;
};
// "A-B", or "A" for both ends.
RealRange ParseRealRange(const std::string& option, std::string_view text);
// Of such a text, whether it is the first form.
bool HasTwoEnds(std::string_view text);

struct CountRange {
  std::uint32_t from;
  std::uint32_t to;

  bool operator==(const CountRange&) const = default;
};
CountRange ParseCountRange(const std::string& option, std::string_view text);
// Ranges and numbers between commas, such as "1,3,5-9,20-": the last has no end.
std::vector<CountRange> ParseCountList(const std::string& option, std::string_view text);

// The same number; a NaN loses its sign, which would be printed.
double WithoutNaNSign(double value);

// The parts between colons.
std::vector<std::string> SplitColons(std::string_view text);

}  // namespace TslTool
