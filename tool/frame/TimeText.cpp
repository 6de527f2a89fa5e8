#include <tool/frame/TimeText.h>

#include <fmt/format.h>

#include <tool/frame/Numbers.h>
#include <tool/frame/UsageError.h>
#include <cmath>

namespace TslTool {
namespace {

struct Unit {
  std::string_view name;
  double ms;
};
// The longer of two names that end alike comes first.
constexpr Unit kUnits[] = {{"ms", 1.0}, {"s", 1000.0}, {"min", 60'000.0}, {"h", 3'600'000.0}};
constexpr double kMost = 4294967295.0;

Unit UnitOf(std::string_view text) {
  for (const Unit& unit : kUnits)
    if (text.ends_with(unit.name)) return unit;
  return {"", 1000.0};
}

}  // namespace

std::uint32_t ParseMilliseconds(const std::string& option, std::string_view text) {
  const Unit unit = UnitOf(text);
  const double ms = std::round(ParseReal(option, text.substr(0, text.size() - unit.name.size())) * unit.ms);
  if (!(ms >= 0.0 && ms <= kMost))
    throw UsageError(fmt::format("{}: \"{}\" is no time from 0 to {} ms", option, text, kMost));
  return static_cast<std::uint32_t>(ms);
}

std::string ShownMilliseconds(std::uint32_t ms) {
  for (const Unit& unit : {kUnits[3], kUnits[2], kUnits[1]})
    if (ms >= unit.ms && std::fmod(ms * 100.0, unit.ms) == 0.0)
      return fmt::format("{}{}", ms / unit.ms, unit.name);
  return fmt::format("{}ms", ms);
}

std::string ShownSeconds(double seconds) { return fmt::format("{:.6g} s", seconds); }

}  // namespace TslTool
