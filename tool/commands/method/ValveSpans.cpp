#include <tool/commands/method/ValveSpans.h>

#include <algorithm>

namespace TslTool {

std::vector<ValveSpan> ValveSpans(TslBL::DiverterValveMethod program, double end) {
  std::vector<ValveSpan> spans;
  if (program.IsEmpty()) return spans;
  auto entry = program.QFirstState();
  do {
    const double from = entry.first.count / 1000.0;
    if (!spans.empty()) spans.back().to = std::min(from, end);
    spans.push_back({from, end, entry.second});
  } while (program.QNextState(entry));
  std::erase_if(spans, [end](const ValveSpan& span) { return span.from >= end || span.from < 0.0; });
  return spans;
}

}  // namespace TslTool
