#pragma once
// The calibration of one spectrum, with what the user corrects by hand.

#include <tool/commands/calibrate/MassScale.h>
#include <tslbl/calibrate/CalibrateParams.h>
#include <tslbl/curve/CurveEval.h>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace TslTool {

// A calibrant that is to be seen at another peak.
struct CalibrantMove {
  std::string name;
  double mz = 0.0;  // of the peak, on the axis as it came
};

struct Corrections {
  std::vector<CalibrantMove> moves;
  std::vector<std::string> off;  // calibrants that take no part
};

struct CalibratedPoint {
  std::string name;
  double expected = 0.0;         // m/z
  std::optional<double> before;  // of its peak on the axis as it came; nothing without a peak
  std::optional<double> after;   // and on the new one; nothing without one
  std::uint32_t status = 0;      // as of TslBL::Calibrate
};

struct CalibrationResult {
  std::vector<CalibratedPoint> points;  // ascending by expected m/z
  std::vector<TslBL::MZCalPt> table;    // as a calibration file holds it; empty if there is no new axis
  std::string error;                    // why there is none
};

// Evaluates the spectrum, assigns each calibrant to a peak and lays the axis through them. Throws InputError
// where the evaluation fails or finds no peak, UsageError for corrections that cannot be made.
CalibrationResult CalibrateSpectrum(const std::string& input, const TslBL::Spectrum& spectrum,
                                    const MassScale& scale, const TslBL::CalibrateParams& params,
                                    std::vector<TslBL::CurveEval> chain, const Corrections& corrections);

}  // namespace TslTool
