#include <tslbl/curve/PeakArea.h>

#include <tslbl/curve/Curve.h>
#include <tslbl/curve/PeakLevels.h>

namespace TslBL {

double QWholePeakArea(const Curve& curve, std::uint32_t peakIdx) {
  const PeakInfo& peak = curve.peaks.at(peakIdx);
  if (peak.endIdx >= curve.yAxis.size() || peak.endIdx >= curve.xAxis.size()) return 0.0;
  const auto above = [&](std::uint32_t i) { return curve.yAxis[i] - ValueAt(curve.baseline, i); };
  double area = 0.0;
  for (std::uint32_t i = peak.startIdx; i < peak.endIdx; ++i)
    area += 0.5 * (above(i) + above(i + 1)) * (curve.xAxis[i + 1] - curve.xAxis[i]);
  return area;
}

}  // namespace TslBL
