#include <tslbl/chromatogram/ExtractedCurves.h>

#include <tslbl/chromatogram/CurveDefinition.h>
#include <algorithm>
#include <numeric>

namespace TslBL {
namespace {

double MeanOf(const Spectrum& spectrum, const MZRange& range) {
  const std::vector<double>& x = spectrum.xAxis;
  const auto points = std::min(std::ssize(x), std::ssize(spectrum.yAxis));
  const auto first = std::ranges::lower_bound(x, range.Start) - x.begin();
  const auto end = std::min(std::ranges::upper_bound(x, range.End) - x.begin(), points);
  const auto count = std::max<std::ptrdiff_t>(end - first, 0);
  const auto begin = spectrum.yAxis.begin() + std::min(first, points);
  return std::accumulate(begin, begin + count, 0.0) / static_cast<double>(count);
}

bool Overlaps(const MZRange& range, const std::vector<double>& x) {
  return !x.empty() && x.front() <= range.End && x.back() >= range.Start;
}

}  // namespace

std::vector<double> CalcSpectrumEICRanges(const Spectrum& spectrum, const std::vector<MZRange>& ranges) {
  std::vector<double> values(ranges.size());
  auto next = values.begin();
  for (const MZRange& range : ranges)
    if (Overlaps(range, spectrum.xAxis)) *next++ = MeanOf(spectrum, range);
  return values;
}

bool CalcEICPoints(const std::vector<double>& rangeValues, const std::vector<std::wstring>& curveDefs,
                   std::vector<double>& points, std::wstring& error) {
  points.resize(curveDefs.size());
  for (std::size_t i = 0; i < curveDefs.size(); ++i) {
    double& point = points[i] = 0.0;
    bool isMinus = false;
    const auto onSign = [&](bool minus) { isMinus = minus; };
    const auto onOperand = [&](const CurveOperand& operand) {
      const double value = operand.isRange ? rangeValues[operand.index] : points[operand.index];
      point += isMinus ? -value : value;
    };
    const CurveOperandCounts counts = {rangeValues.size(), i};
    if (const auto fault = WalkDefinition(curveDefs[i], counts, onSign, onOperand)) {
      error = DefinitionError(i, *fault);
      return false;
    }
    if (point < 0.0) point = 0.0;
  }
  return true;
}

}  // namespace TslBL
