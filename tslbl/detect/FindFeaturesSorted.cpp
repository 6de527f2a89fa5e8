// The Sorted route of peak detection: local maxima, tallest first, each with the span that
// it commands.

#include <tslbl/closed/math/peak/Features.h>
#include <tslbl/curve/Execute.h>
#include <tslbl/detect/FeatureRows.h>
#include <tslbl/detect/FindPeak.h>
#include <tslbl/detect/PeakDetectLog.h>
#include <tslbl/detect/PeakWalks.h>
#include <algorithm>

namespace TslBL {
namespace {

constexpr std::size_t kMostCandidates = 5000;

std::vector<TslMath::CurvePt> CandidatesTallestFirst(const Curve& curve, const SearchRange& range) {
  std::vector<TslMath::CurvePt> found;
  TslMath::FindFeatures(curve.yAxis.data(), curve.QNumPoints(), range.first, range.last - range.first + 1,
                        found);
  std::ranges::sort(found, [](const TslMath::CurvePt& a, const TslMath::CurvePt& b) {
    return a.second > b.second || (a.second == b.second && a.first < b.first);
  });
  return found;
}

PeakInfo MakeRow(const Curve& curve, const TslMath::CurvePt& apex) {
  const CurveView view{curve.yAxis.data(), curve.baseline.data(),
                       static_cast<std::ptrdiff_t>(curve.yAxis.size())};
  const double valley =
      CalcPeakValleyAmplitude(apex.second, curve.baseline[apex.first], curve.peakDetectParams.MaxValley);
  PeakInfo row;
  row.apexIdx = apex.first;
  row.apexAmpl = apex.second;
  row.useMax = curve.peakDetectParams.RetentionType == PeakDetectParams::PeakTop;
  row.startIdx = static_cast<std::uint32_t>(WalkLeft(view, apex.first, valley));
  row.endIdx = static_cast<std::uint32_t>(WalkRight(view, apex.first, valley));
  return row;
}

// Leaves an overlapping stretch to neither of two neighbours.
void Exchange(std::uint32_t& a, std::uint32_t& b) {
  LogPartialOverlap(a, b);
  std::swap(a, b);
}

void InsertRow(std::vector<PeakInfo*>& list, PeakInfo& row) {
  const auto byApex = [](const PeakInfo* a, const PeakInfo* b) { return *a < *b; };
  const auto place = list.insert(std::ranges::lower_bound(list, &row, byApex), &row);
  if (place != list.begin()) {
    PeakInfo& prev = **(place - 1);
    if (row.startIdx < prev.apexIdx) {
      row.startIdx = prev.endIdx;
    } else if (row.startIdx < prev.endIdx) {
      Exchange(row.startIdx, prev.endIdx);
    }
  }
  if (place + 1 != list.end()) {
    PeakInfo& next = **(place + 1);
    if (row.endIdx > next.apexIdx) {
      row.endIdx = next.startIdx;
    } else if (next.startIdx < row.endIdx) {
      Exchange(row.endIdx, next.startIdx);
    }
  }
}

}  // namespace

FeatureRows FindFeaturesSorted(const Curve& curve, const SearchRange& range, PeakCntLimit limit,
                               double floor) {
  FeatureRows found;
  if (curve.QNumPoints() < 2 || range.last < range.first + 2) return found;
  const auto candidates = CandidatesTallestFirst(curve, range);
  const std::size_t most = std::min(candidates.size(), kMostCandidates);
  found.rows.reserve(most);  // the list points into the rows
  const PeakDetectParams& p = curve.peakDetectParams;
  const bool stopsAtPeakCnt = p.PeakCntInUse && limit == PeakCntLimit::Obeyed;
  for (std::size_t i = 0; i < most; ++i) {
    const auto& [index, amplitude] = candidates[i];
    if (floor > amplitude) break;
    if (!(amplitude > curve.baseline[index])) continue;
    if (FindPeakIdxByCurveIdx(found.list, index) >= 0) continue;
    InsertRow(found.list, found.rows.emplace_back(MakeRow(curve, candidates[i])));
    if (stopsAtPeakCnt && found.rows.size() >= p.PeakCnt) break;
  }
  return found;
}

}  // namespace TslBL
