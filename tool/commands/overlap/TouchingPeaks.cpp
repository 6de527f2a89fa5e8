#include <tool/commands/overlap/TouchingPeaks.h>

#include <tool/commands/overlap/EditGroups.h>
#include <algorithm>
#include <cstddef>
#include <initializer_list>
#include <stdexcept>
#include <vector>

namespace TslTool {
namespace {

using TslBL::PeakInfo;
using TslBL::Spectrum;

// As the library joins neighbours, in percent of the lower one's height, but for gaps between them.
bool AreJoined(const Spectrum& spectrum, const PeakInfo& left, const PeakInfo& right) {
  if (right.startIdx > left.endIdx + 1) return false;
  const double height =
      std::min(left.centroidAmpl, right.centroidAmpl) - std::max(left.baselineAmpl, right.baselineAmpl);
  const double end = spectrum.yAxis[left.endIdx] - left.baselineAmpl;
  return end > 0.0 && 100.0 * end >= spectrum.opdParams.MinAmplPercentCmnEndPt * height;
}

bool IsAlone(const PeakInfo& peak) { return peak.overlapGroup == TslBL::NoOverlapGroupId; }

// By the ranges and the least amplitude that the user asks for.
bool IsWanted(const Spectrum& spectrum, const PeakInfo& peak) {
  const TslBL::OPDParams& params = spectrum.opdParams;
  if (params.MinPeakAmplitude > spectrum.yAxis[peak.apexIdx]) return false;
  return params.FullRange || std::ranges::any_of(params.Ranges, [&](const auto& range) {
           return range.Enable && range.LowMZ <= spectrum.xAxis[peak.endIdx] &&
                  range.HighMZ >= spectrum.xAxis[peak.startIdx];
         });
}

// Whether a peak can take another one in: the user may limit how many a group has.
bool HasRoom(const Spectrum& spectrum, const PeakInfo& peak) {
  return !IsAlone(peak) &&
         spectrum.QOverlapGroupPeakIds(peak.overlapGroup).size() < spectrum.opdParams.MaxPeaks;
}

bool RunsIntoGroup(const Spectrum& spectrum, std::size_t row) {
  const std::vector<PeakInfo>& peaks = spectrum.peaks;
  if (!IsAlone(peaks[row]) || !IsWanted(spectrum, peaks[row])) return false;
  return (row > 0 && HasRoom(spectrum, peaks[row - 1]) && AreJoined(spectrum, peaks[row - 1], peaks[row])) ||
         (row + 1 < peaks.size() && HasRoom(spectrum, peaks[row + 1]) &&
          AreJoined(spectrum, peaks[row], peaks[row + 1]));
}

bool IsPairOfItsOwn(const Spectrum& spectrum, std::size_t row) {
  const std::vector<PeakInfo>& peaks = spectrum.peaks;
  return row + 1 < peaks.size() && IsAlone(peaks[row]) && IsAlone(peaks[row + 1]) &&
         IsWanted(spectrum, peaks[row]) && IsWanted(spectrum, peaks[row + 1]) &&
         AreJoined(spectrum, peaks[row], peaks[row + 1]);
}

void Fit(Spectrum& spectrum, std::initializer_list<std::size_t> rows) {
  const std::vector<PeakInfo> peaks = spectrum.peaks;
  const std::vector<TslBL::OverlapPeakInfo> fits = spectrum.overlapPeaks;
  try {
    for (const std::size_t row : rows)
      EditGroup(spectrum, {GroupEdit::Add, spectrum.xAxis[peaks[row].apexIdx]});
  } catch (const std::runtime_error&) {
    spectrum.peaks = peaks;
    spectrum.overlapPeaks = fits;
  }
}

}  // namespace

void FitTouchingPeaks(Spectrum& spectrum) {
  for (std::size_t row = 0; row < spectrum.peaks.size(); ++row)
    if (IsPairOfItsOwn(spectrum, row)) Fit(spectrum, {row, row + 1});
  // From both sides: what was added has a neighbour that may run into it.
  for (std::size_t row = 0; row < spectrum.peaks.size(); ++row)
    if (RunsIntoGroup(spectrum, row)) Fit(spectrum, {row});
  for (std::size_t row = spectrum.peaks.size(); row-- > 0;)
    if (RunsIntoGroup(spectrum, row)) Fit(spectrum, {row});
}

}  // namespace TslTool
