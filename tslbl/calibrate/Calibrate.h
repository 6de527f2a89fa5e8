#pragma once
// Calibrating the m/z axis by hand: a spectrum of known calibrants is evaluated, each calibrant is assigned
// to a peak, the user moves and switches what he finds wrong, and the axis is laid through what is left.
//
// It works on a copy of the spectrum. AutoCalibrate begins anew each time; CalPointToggle and CalPointMoved
// only prepare what Apply brings to the axis. Whoever wants the result takes it from QCalSpectrum, mostly its
// appliedMZCalPts, and saves it (CalFile.h) or puts it on other spectra (ApplyCalibration.h).
//
// Operations that fail return false with a text for QLastError. Where two calibrants have one m/z, all that
// convert may throw std::runtime_error "Divide by zero error"; the axis is never left half made, and
// AutoCalibrate begins anew afterwards. A value; one thread at a time.

#include <tslbl/Export.h>
#include <tslbl/calibrate/CalibrateParams.h>
#include <tslbl/curve/CurveEval.h>
#include <tslbl/spectrum/Spectrum.h>
#include <tslbl/tune/MZConvert.h>
#include <cstdint>
#include <string>
#include <vector>

namespace TslBL {

class TSLBL_API Calibrate {
 public:
  enum Status : std::uint32_t { Off = 0, NoPeak = 1, Active = 2 };

  // A calibrant and the peak that it is assigned to.
  struct CalPt {
    std::wstring Name;
    double MZ = 0.0;            // known
    double PeakMZ = 0.0;        // where its peak stands before Apply; afterwards MZ
    double MassDAC = 0.0;       // of that peak
    std::int32_t PeakIdx = -1;  // in the peak table of the calibrated spectrum, -1 for none
    double DeltaMZ = 0.0;       // of the peak minus what is known
    std::uint32_t Status = Off;
  };

  explicit Calibrate(const Spectrum& spectrum);

  // Runs `evals` on the spectrum as it came, assigns to each calibrant the tallest peak within the tolerance,
  // of equally tall ones the nearest, and applies that. A calibrant without a peak, or whose peak an earlier
  // one has, takes no part. `failed` is set where it came to no assignment: the evaluation failed, or found
  // no peak.
  bool AutoCalibrate(const CalibrateParams& params, std::vector<CurveEval>& evals, bool& failed);

  // Ascending by m/z.
  std::uint32_t QNumCalPoints() const { return static_cast<std::uint32_t>(calPts_.size()); }
  // The three that take an index throw std::out_of_range for one that no point has.
  CalPt QCalPoint(std::uint32_t idx) const { return calPts_.at(idx); }

  // An active point is switched off, one that is off loses its peak. Returns whether it was active.
  bool CalPointToggle(std::uint32_t idx);
  // The mass DAC value of a place that the user drags a point over.
  double CalPointMoving(double mz) const { return convert_.MZToDAC(mz); }
  // Assigns a point to the peak at a place, or to the nearest one within the tolerance. It cannot pass its
  // neighbours or take an active point's peak. DeltaMZ is from `mz` until the next Apply.
  bool CalPointMoved(std::uint32_t idx, double mz);

  // Lays the axis through the active points, of which there must be two.
  bool Apply();

  bool IsModified() const { return modified_; }
  const Spectrum& QCalSpectrum() const { return calSpectrum_; }
  // Hands the text over and forgets it.
  std::wstring QLastError();

 private:
  bool Fail(std::wstring text);
  double PositionOf(std::int32_t peakIdx) const;
  bool IsCalPtAtLocation(double dac) const;
  bool FindMaxPeak(double mz, double& peakMZ, double& dac, std::int32_t& peakIdx, double& delta) const;
  std::int32_t FindClosestPeakInRange(double mz) const;
  std::int32_t PeakAt(double mz) const;
  bool HasPeaksOfAllPoints() const;
  bool IsBetweenNeighbours(std::uint32_t idx, double mz) const;
  CalPt Assigned(const Calibrant& calibrant) const;
  template <class Visit>
  void ForEachPeakAround(double mz, Visit visit) const;

  Spectrum calSpectrum_;
  std::vector<MZCalPt> origMZCalPts_;
  bool modified_ = false;
  std::wstring lastError_;
  MZConvert convert_;
  std::vector<CalPt> calPts_;
  double tolerance_ = 0.0;
};

}  // namespace TslBL
