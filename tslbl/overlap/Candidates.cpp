#include <tslbl/overlap/Candidates.h>

#include <tslbl/closed/common/Truncate.h>
#include <tslbl/curve/PeakLevels.h>
#include <tslbl/spectrum/PeakTable.h>
#include <algorithm>
#include <cmath>
#include <stdexcept>

namespace TslBL {
namespace {

constexpr double kWidestGap = 0.25;  // m/z between two peaks that are joined

bool IsAskedFor(const OPDParams& params, const MZPeak& peak) {
  return params.FullRange || std::ranges::any_of(params.Ranges, [&](const OPDRange& range) {
           return range.Enable && range.LowMZ <= peak.PkEndX && range.HighMZ >= peak.PkStartX;
         });
}

bool LooksClean(const OPDParams& params, const OPDCandidate& candidate) {
  return candidate.Resolution >= params.ResolutionThreshold &&
         std::abs(candidate.MaxX - candidate.CentroidX) < params.MinDeltaCentroidPkMax;
}

}  // namespace

OPDCandidate MakeCandidate(const Spectrum& spectrum, std::uint32_t row, const MZPeak& peak) {
  if (peak.PeakId != row) throw std::logic_error("Bad peak index.");
  const PeakInfo& info = spectrum.peaks.at(row);
  OPDCandidate candidate;
  candidate.DataPeakId = row;
  candidate.StartIdx = info.startIdx;
  candidate.ApexIdx = Truncate<std::uint32_t>(info.centroidIdx);
  candidate.EndIdx = info.endIdx;
  candidate.Baseline = info.baselineAmpl;
  candidate.Ampl = info.centroidAmpl;
  candidate.HalfWidth = (static_cast<double>(info.endIdx) - info.startIdx + 1) * 0.5;
  candidate.Resolution = peak.Resolution;
  candidate.CentroidX = peak.CentroidX;
  candidate.MaxX = peak.MaxX;
  candidate.EndAmpl = ValueAt(spectrum.yAxis, info.endIdx);
  candidate.EndBaseline = ValueAt(spectrum.baseline, info.endIdx);
  return candidate;
}

std::vector<OPDCandidate> BuildCandidates(const Spectrum& spectrum) {
  std::vector<OPDCandidate> candidates;
  for (std::uint32_t row = 0; row < spectrum.QNumPeaks(); ++row) {
    const MZPeak peak = TranslateMZPeak(spectrum, row);
    if (IsAskedFor(spectrum.opdParams, peak)) candidates.push_back(MakeCandidate(spectrum, row, peak));
  }
  std::ranges::stable_sort(candidates, {}, &OPDCandidate::ApexIdx);
  return candidates;
}

bool AreJoined(const Spectrum& spectrum, const OPDCandidate& left, const OPDCandidate& right) {
  const double reach = ValueAt(spectrum.xAxis, left.EndIdx) + kWidestGap;
  if (reach < ValueAt(spectrum.xAxis, right.StartIdx)) return false;
  const double height = std::min(left.Ampl, right.Ampl) - std::max(left.Baseline, right.Baseline);
  if (!(height > 0.0)) throw std::logic_error("Amplitude less than baseline.");
  const auto percent = Truncate<std::int32_t>((left.EndAmpl - left.EndBaseline) / height * 100);
  // Unsigned, so that an end point below the baseline counts as a very high one.
  return static_cast<std::uint32_t>(percent) >= spectrum.opdParams.MinAmplPercentCmnEndPt;
}

void FilterCandidates(const Spectrum& spectrum, std::vector<OPDCandidate>& candidates) {
  std::size_t kept = 0;
  for (std::size_t i = 0; i < candidates.size(); ++i) {
    OPDCandidate& candidate = candidates[i];
    candidate.NeedsFit = !LooksClean(spectrum.opdParams, candidate);
    const auto joinsPrevious = [&] {
      return kept > 0 && AreJoined(spectrum, candidates[kept - 1], candidate);
    };
    const auto joinsNext = [&] {
      return i + 1 < candidates.size() && AreJoined(spectrum, candidate, candidates[i + 1]);
    };
    if (candidate.NeedsFit || joinsPrevious() || joinsNext()) candidates[kept++] = candidate;
  }
  candidates.resize(kept);
}

void NumberGroups(const Spectrum& spectrum, std::vector<OPDCandidate>& candidates) {
  std::uint32_t group = 1;
  for (std::size_t i = 0; i < candidates.size(); ++i) {
    if (i > 0 && !AreJoined(spectrum, candidates[i - 1], candidates[i])) ++group;
    candidates[i].GroupId = group;
  }
}

}  // namespace TslBL
