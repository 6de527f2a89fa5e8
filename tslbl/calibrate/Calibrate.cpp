#include <tslbl/calibrate/Calibrate.h>

#include <tslbl/calibrate/PutOnAxis.h>
#include <tslbl/closed/common/MessageId.h>
#include <tslbl/closed/common/StringTable.h>
#include <tslbl/detect/FindPeak.h>
#include <algorithm>
#include <cmath>
#include <utility>

namespace TslBL {
namespace {

// Places, amplitudes and DAC values that differ by no more are equal.
constexpr double kSame = 1e-6;
constexpr std::int32_t kNone = -1;

bool AreSame(double a, double b) { return std::abs(a - b) <= kSame; }

std::wstring TextOf(MessageId id) { return TslLoadString(ModuleHandle(), id); }

// A peak that may be a calibrant's.
struct Candidate {
  std::int32_t peakIdx = kNone;
  double position = 0.0;
  double ampl = 0.0;
  double distance = 0.0;
};

// The tallest; of equally tall ones the nearest, and of equally near ones the left one.
bool IsBetter(const Candidate& peak, const Candidate& best) {
  if (best.peakIdx == kNone || peak.ampl > best.ampl) return true;
  if (!AreSame(peak.ampl, best.ampl)) return false;
  return peak.distance < best.distance ||
         (AreSame(peak.distance, best.distance) && peak.position < best.position);
}

// What is no number comes last.
bool IsLower(double a, double b) { return a < b || (std::isnan(b) && !std::isnan(a)); }

}  // namespace

Calibrate::Calibrate(const Spectrum& spectrum)
    : calSpectrum_(spectrum), origMZCalPts_(spectrum.appliedMZCalPts) {}

bool Calibrate::Fail(std::wstring text) {
  lastError_ = std::move(text);
  return false;
}

std::wstring Calibrate::QLastError() { return std::exchange(lastError_, std::wstring()); }

double Calibrate::PositionOf(std::int32_t peakIdx) const {
  const PeakInfo& peak = calSpectrum_.peaks[static_cast<std::size_t>(peakIdx)];
  return calSpectrum_.FractionalIndexToXAxisVal(peak.centroidIdx);
}

bool Calibrate::IsCalPtAtLocation(double dac) const {
  return std::ranges::any_of(
      calPts_, [&](const CalPt& point) { return point.Status == Active && AreSame(point.MassDAC, dac); });
}

template <class Visit>
void Calibrate::ForEachPeakAround(double mz, Visit visit) const {
  for (std::int32_t i = 0; i < std::ssize(calSpectrum_.peaks); ++i) {
    const double position = PositionOf(i);
    if (!(position <= mz + tolerance_)) break;
    if (position < mz - tolerance_) continue;
    visit(Candidate{i, position, calSpectrum_.peaks[static_cast<std::size_t>(i)].maxAmpl,
                    std::abs(position - mz)});
  }
}

bool Calibrate::FindMaxPeak(double mz, double& peakMZ, double& dac, std::int32_t& peakIdx,
                            double& delta) const {
  Candidate best;
  ForEachPeakAround(mz, [&](const Candidate& peak) {
    if (IsBetter(peak, best)) best = peak;
  });
  if (best.peakIdx == kNone) return false;
  const double bestDac = convert_.MZToDAC(best.position);
  if (IsCalPtAtLocation(bestDac)) return false;
  peakMZ = best.position;
  dac = bestDac;
  peakIdx = best.peakIdx;
  delta = best.position - mz;
  return true;
}

std::int32_t Calibrate::FindClosestPeakInRange(double mz) const {
  Candidate best;
  const auto takeIfFree = [&](const Candidate& peak) {
    if (!IsCalPtAtLocation(convert_.MZToDAC(peak.position))) best = peak;
  };
  ForEachPeakAround(mz, [&](const Candidate& peak) {
    const bool isNearer = best.peakIdx == kNone || peak.distance < best.distance;
    const bool isAsNear = AreSame(peak.distance, best.distance);
    if (isNearer || (isAsNear && peak.ampl > best.ampl)) {
      takeIfFree(peak);
    } else if (isAsNear && AreSame(peak.ampl, best.ampl) && best.position > peak.position) {
      best = peak;
    }
  });
  return best.peakIdx;
}

Calibrate::CalPt Calibrate::Assigned(const Calibrant& calibrant) const {
  CalPt point;
  point.Name = calibrant.Name;
  point.MZ = calibrant.MZ;
  if (FindMaxPeak(calibrant.MZ, point.PeakMZ, point.MassDAC, point.PeakIdx, point.DeltaMZ)) {
    point.Status = Active;
  } else {
    point.PeakMZ = calibrant.MZ;
    point.MassDAC = convert_.MZToDAC(calibrant.MZ);
    point.Status = NoPeak;
  }
  return point;
}

bool Calibrate::AutoCalibrate(const CalibrateParams& params, std::vector<CurveEval>& evals, bool& failed) {
  if (modified_) {
    PutOnAxis(calSpectrum_, origMZCalPts_);
    modified_ = false;
  }
  Changed changed;
  if (!ExecuteCurveEvals(calSpectrum_, evals, changed, lastError_)) {
    failed = true;
    return false;
  }
  if (calSpectrum_.peaks.empty()) {
    failed = true;
    return Fail(TextOf(kNoPeaksDetected));
  }
  convert_.WCalPts(calSpectrum_.appliedMZCalPts);
  tolerance_ = params.tolerance;
  calPts_.clear();
  calPts_.reserve(params.calibrants.size());
  for (const Calibrant& calibrant : params.calibrants) calPts_.push_back(Assigned(calibrant));
  std::ranges::stable_sort(calPts_, IsLower, &CalPt::MZ);
  return Apply();
}

bool Calibrate::CalPointToggle(std::uint32_t idx) {
  std::uint32_t& status = calPts_.at(idx).Status;
  return std::exchange(status, status == Off ? NoPeak : Off) == Active;
}

bool Calibrate::IsBetweenNeighbours(std::uint32_t idx, double mz) const {
  if (idx > 0 && !(mz > calPts_[idx - 1].MZ && mz > calPts_[idx - 1].PeakMZ)) return false;
  return idx + 1 >= calPts_.size() || (mz < calPts_[idx + 1].MZ && mz < calPts_[idx + 1].PeakMZ);
}

std::int32_t Calibrate::PeakAt(double mz) const {
  const std::vector<double>& x = calSpectrum_.xAxis;
  if (x.empty() || !(x.front() <= mz && mz <= x.back())) return kNone;
  const std::int32_t spanning =
      FindPeakIdxByCurveIdx(calSpectrum_.peaks, calSpectrum_.QXAxisToIdx(mz, ROUND_DOWN));
  return spanning == kNone ? FindClosestPeakInRange(mz) : spanning;
}

bool Calibrate::CalPointMoved(std::uint32_t idx, double mz) {
  CalPt& point = calPts_.at(idx);
  if (!IsBetweenNeighbours(idx, mz)) return Fail(TextOf(kCalibrantPassesNeighbor));
  const std::int32_t peak = PeakAt(mz);
  if (peak == kNone) return Fail(TextOf(kNoPeakAtLocation));
  const double position = PositionOf(peak);
  const double dac = convert_.MZToDAC(position);
  if (point.Status == Active && AreSame(point.MassDAC, dac)) return true;
  if (IsCalPtAtLocation(dac)) return Fail(TextOf(kCalibrantAtLocation));
  point.PeakMZ = position;
  point.MassDAC = dac;
  point.PeakIdx = peak;
  point.DeltaMZ = position - mz;
  point.Status = Active;
  return true;
}

// An evaluation that failed leaves points of an earlier one without their peaks.
bool Calibrate::HasPeaksOfAllPoints() const {
  return std::ranges::all_of(calPts_, [&](const CalPt& point) {
    return point.Status != Active || point.PeakIdx < std::ssize(calSpectrum_.peaks);
  });
}

bool Calibrate::Apply() {
  std::vector<MZCalPt> table;
  for (const CalPt& point : calPts_)
    if (point.Status == Active) table.emplace_back(point.Name, point.MZ, point.MassDAC);
  if (table.size() < 2) return Fail(L"At least two calibrant peaks must be assigned.");
  if (!HasPeaksOfAllPoints()) return Fail(TextOf(kNoPeaksDetected));
  PutOnAxis(calSpectrum_, table);
  modified_ = true;
  convert_.WCalPts(table);
  for (CalPt& point : calPts_) {
    point.PeakMZ = point.MZ;
    if (point.Status == Active) {
      const double position = PositionOf(point.PeakIdx);
      point.MassDAC = convert_.MZToDAC(position);
      point.DeltaMZ = position - point.MZ;
    } else {
      point.MassDAC = convert_.MZToDAC(point.MZ);
    }
  }
  return true;
}

}  // namespace TslBL
