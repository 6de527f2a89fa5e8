#include <tslbl/chromatogram/ICPeakTable.h>

#include <tslbl/closed/common/Truncate.h>
#include <tslbl/detect/PeakRowAt.h>
#include <algorithm>
#include <cmath>
#include <stdexcept>

namespace TslBL {
namespace {

constexpr double kHalfWay = 1e-5;

// The point that stands for a place between points.
std::int64_t ApexOf(const ICObj& obj, double place) {
  const double below = std::floor(place);
  if (!(std::abs(place - below - 0.5) <= kHalfWay)) return Truncate<std::int32_t>(std::floor(place + 0.5));
  const std::int64_t point = Truncate<std::int32_t>(below);
  const bool isBetween = point >= 0 && point + 1 < std::ssize(obj.yAxis);
  const auto at = static_cast<std::size_t>(point);
  return isBetween && obj.yAxis[at] < obj.yAxis[at + 1] ? point + 1 : point;
}

}  // namespace

ICPeak TranslateICPeak(const ICObj& obj, std::uint32_t peakIdx) {
  ICPeak peak;
  static_cast<PeakValues&>(peak) = TranslateCurvePeak(obj, peakIdx);
  const PeakInfo& row = obj.peaks[peakIdx];
  peak.CurveId = obj.id;
  peak.PeakId = peakIdx;
  peak.SpecIds = QSpectrumUnderPeak(obj, peakIdx, row.endIdx - row.startIdx + 1);
  return peak;
}

std::vector<ICPeak> CreateICPeakTable(const ICObj& obj) {
  std::vector<ICPeak> table;
  table.reserve(obj.peaks.size());
  for (std::uint32_t i = 0; i < obj.QNumPeaks(); ++i) table.push_back(TranslateICPeak(obj, i));
  return table;
}

bool DetectOnePeak(ICObj& obj, std::uint32_t curveIdx, ICPeak& peak) {
  const std::int32_t row = PeakRowAt(obj, curveIdx);
  if (row < 0) return false;
  peak = TranslateICPeak(obj, static_cast<std::uint32_t>(row));
  return true;
}

std::vector<std::uint32_t> QSpectrumUnderPeak(const ICObj& obj, std::uint32_t peakIdx,
                                              std::uint32_t halfWidth) {
  if (obj.peaks.empty()) throw std::runtime_error("Peak table is empty.");
  const PeakInfo& row = obj.peaks.at(peakIdx);
  const std::int64_t apex = ApexOf(obj, row.ReportedIdx());
  const std::int64_t first = std::max<std::int64_t>(row.startIdx, apex - halfWidth);
  const std::int64_t last = std::min<std::int64_t>(row.endIdx, apex + halfWidth);
  const std::int64_t end = std::min<std::int64_t>(last + 1, std::ssize(obj.sourceListA));
  if (first >= end) return {};
  return {obj.sourceListA.begin() + first, obj.sourceListA.begin() + end};
}

}  // namespace TslBL
