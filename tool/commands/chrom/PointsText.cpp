#include <tool/commands/chrom/PointsText.h>

#include <fmt/format.h>

#include <tool/frame/Printable.h>
#include <algorithm>
#include <iterator>

namespace TslTool {
namespace {

std::vector<double> AllTimes(const std::vector<EvaluatedCurve>& curves) {
  std::vector<double> times;
  const std::vector<double>* last = nullptr;
  for (const EvaluatedCurve& curve : curves) {
    const std::vector<double>& own = curve.measured.seconds;
    if (last && *last == own) continue;
    times.insert(times.end(), own.begin(), own.end());
    last = &own;
  }
  std::ranges::sort(times);
  times.erase(std::unique(times.begin(), times.end()), times.end());
  return times;
}

}  // namespace

std::string PointsText(const std::vector<EvaluatedCurve>& curves) {
  std::string text = "rt_s";
  for (const EvaluatedCurve& curve : curves)
    text += '\t' + Printable(curve.measured.name, curve.measured.name.size());
  text += '\n';
  std::vector<std::size_t> next(curves.size());
  for (const double time : AllTimes(curves)) {
    fmt::format_to(std::back_inserter(text), "{}", time);
    for (std::size_t i = 0; i < curves.size(); ++i) {
      const Chromatogram& measured = curves[i].measured;
      const bool isHere = next[i] < measured.seconds.size() && measured.seconds[next[i]] == time;
      text += '\t';
      if (isHere) fmt::format_to(std::back_inserter(text), "{}", measured.values[next[i]++]);
    }
    text += '\n';
  }
  return text;
}

}  // namespace TslTool
