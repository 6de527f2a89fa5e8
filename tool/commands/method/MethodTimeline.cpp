#include <tool/commands/method/MethodTimeline.h>

#include <fmt/format.h>

#include <tool/commands/method/ValveSpans.h>
#include <tool/plot/Ticks.h>
#include <algorithm>
#include <cmath>

namespace TslTool {
namespace {

using TslBL::MethodRules;

constexpr std::size_t kWidth = 72;

class Lane {
 public:
  explicit Lane(double end) : end_(end), text_(kWidth, ' ') {}

  std::size_t ColumnOf(double seconds) const {
    const double column = std::floor(seconds / end_ * kWidth + 0.5);
    return static_cast<std::size_t>(std::clamp(column, 0.0, static_cast<double>(kWidth)));
  }
  // What is shorter than a column has one all the same.
  void Fill(double from, double to, char letter) {
    const std::size_t begin = std::min(ColumnOf(from), kWidth - 1);
    const std::size_t end = std::max(ColumnOf(to), begin + 1);
    std::fill(text_.begin() + static_cast<std::ptrdiff_t>(begin),
              text_.begin() + static_cast<std::ptrdiff_t>(end), letter);
  }
  void Put(double at, const std::string& text) {
    const std::size_t column = ColumnOf(at);
    if (column + text.size() <= kWidth) text_.replace(column, text.size(), text);
  }
  std::string Line(const char* name) const {
    std::string line = fmt::format("  {:<9} {}", name, text_);
    line.erase(line.find_last_not_of(' ') + 1);
    return line + '\n';
  }

 private:
  double end_;
  std::string text_;
};

char PolarityLetter(const MethodRules& rules, std::uint32_t tp) {
  switch (rules.QTimePeriodPolarity(tp)) {
    case MethodRules::AllPositive:
      return '+';
    case MethodRules::AllNegative:
      return '-';
    default:
      return 'm';
  }
}

char ValveLetter(const TslCommon::DiverterValve& state) {
  switch (state.State()) {
    case TslCommon::DiverterValve::kToSource:
      return 'S';
    case TslCommon::DiverterValve::kToWaste:
      return 'W';
    default:
      return '?';
  }
}

std::string Scale(double end) {
  const bool isMinutes = end >= 120.0;
  const double unit = isMinutes ? 60.0 : 1.0;
  Lane lane(end);
  for (const Tick& tick : Ticks(Range{0.0, end / unit}, 8)) lane.Put(tick.value * unit, tick.text);
  return lane.Line(isMinutes ? "minutes" : "seconds");
}

}  // namespace

std::string MethodTimeline(const MethodRules& rules, const std::vector<PeriodTimes>& times) {
  double end = 0.0;
  for (const PeriodTimes& period : times) end += period.length;
  if (!(end > 0.0)) return "";
  Lane periods(end);
  Lane polarity(end);
  double from = 0.0;
  for (std::uint32_t tp = 0; tp < times.size(); ++tp) {
    const double to = from + times[tp].length;
    periods.Fill(from, to, '=');
    periods.Put(from, fmt::format("P{}", tp));
    if (!times[tp].items.empty()) polarity.Fill(from, to, PolarityLetter(rules, tp));
    from = to;
  }
  Lane valve(end);
  for (const ValveSpan& span : ValveSpans(rules.QValveMethod(), end))
    valve.Fill(span.from, span.to, ValveLetter(span.state));
  return Scale(end) + periods.Line("periods") + polarity.Line("polarity") + valve.Line("valve");
}

}  // namespace TslTool
