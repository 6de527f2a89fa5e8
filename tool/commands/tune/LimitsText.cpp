#include <tool/commands/tune/LimitsText.h>

#include <fmt/format.h>

#include <algorithm>

namespace TslTool {
namespace {

std::string Interval(double min, double max, double step) {
  const std::string ends = fmt::format("{} to {}", min, max);
  return step == 0.0 ? ends : fmt::format("{} by {}", ends, step);
}

}  // namespace

std::string LimitsText(const TslBL::Limits& limits, const std::optional<TslBL::Gap>& gap) {
  if (limits == TslBL::Limits{}) return "";
  if (!gap) return Interval(limits.Min, limits.Max, limits.Step);
  // A site may have moved the limits to one side of the gap.
  const double below = std::min(limits.Max, gap->from - 1.0);
  const double above = std::max(limits.Min, gap->to + 1.0);
  std::string text;
  if (limits.Min == below) text = fmt::format("{} (off)", below);
  if (limits.Min < below) text = Interval(limits.Min, below, limits.Step);
  if (above > limits.Max) return text;
  return (text.empty() ? "" : text + ", or ") + Interval(above, limits.Max, limits.Step);
}

}  // namespace TslTool
