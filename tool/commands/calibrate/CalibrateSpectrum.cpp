#include <tool/commands/calibrate/CalibrateSpectrum.h>

#include <fmt/format.h>

#include <tool/frame/InputError.h>
#include <tool/frame/UsageError.h>
#include <tool/io/InputPath.h>
#include <tslbl/calibrate/Calibrate.h>
#include <tslbl/closed/common/Text.h>
#include <tslbl/tune/MZConvert.h>
#include <stdexcept>

namespace TslTool {
namespace {

using TslBL::Calibrate;

std::string LastErrorOf(Calibrate& calibrate) { return TslCommon::ToUtf8(calibrate.QLastError()); }

std::uint32_t PointNamed(const Calibrate& calibrate, const char* option, const std::string& name) {
  for (std::uint32_t i = 0; i < calibrate.QNumCalPoints(); ++i)
    if (TslCommon::ToUtf8(calibrate.QCalPoint(i).Name) == name) return i;
  throw UsageError(fmt::format("{}: there is no calibrant \"{}\"", option, name));
}

// Where a place of the axis as it came stands on the present one.
double PresentMz(const Calibrate& calibrate, const MassScale& scale, double mzBefore) {
  const TslBL::MZConvert present(calibrate.QCalSpectrum().appliedMZCalPts);
  return present.DACToMZ(scale.LibraryDac(scale.IndexOf(mzBefore)));
}

void SwitchOff(Calibrate& calibrate, const std::string& name) {
  const std::uint32_t idx = PointNamed(calibrate, "--off", name);
  if (calibrate.QCalPoint(idx).Status != Calibrate::Off) calibrate.CalPointToggle(idx);
}

void Move(Calibrate& calibrate, const MassScale& scale, const CalibrantMove& move) {
  const std::uint32_t idx = PointNamed(calibrate, "--move", move.name);
  if (!calibrate.CalPointMoved(idx, PresentMz(calibrate, scale, move.mz)))
    throw UsageError(fmt::format("--move: {} to m/z {}: {}", move.name, move.mz, LastErrorOf(calibrate)));
}

// Of the peak that a calibrant has, if it has one.
std::optional<double> PeakIndexOf(const Calibrate& calibrate, const Calibrate::CalPt& point) {
  if (point.PeakIdx < 0) return std::nullopt;
  return calibrate.QCalSpectrum().peaks.at(static_cast<std::size_t>(point.PeakIdx)).centroidIdx;
}

// Straight from the places of the peaks: on its way over the library's axis a point that was applied before
// would move by the bend that the axis has there.
std::vector<TslBL::MZCalPt> TableOf(const Calibrate& calibrate, const MassScale& scale) {
  std::vector<TslBL::MZCalPt> table;
  for (std::uint32_t i = 0; i < calibrate.QNumCalPoints(); ++i) {
    const Calibrate::CalPt point = calibrate.QCalPoint(i);
    const std::optional<double> index = PeakIndexOf(calibrate, point);
    if (point.Status == Calibrate::Active && index)
      table.emplace_back(point.Name, point.MZ, scale.FileDac(*index));
  }
  return table;
}

std::vector<CalibratedPoint> PointsOf(const Calibrate& calibrate, const MassScale& scale,
                                      const std::vector<TslBL::MZCalPt>& table) {
  const TslBL::MZConvert convert(table);
  std::vector<CalibratedPoint> points;
  for (std::uint32_t i = 0; i < calibrate.QNumCalPoints(); ++i) {
    const Calibrate::CalPt from = calibrate.QCalPoint(i);
    CalibratedPoint point{TslCommon::ToUtf8(from.Name), from.MZ, {}, {}, from.Status};
    const std::optional<double> index = PeakIndexOf(calibrate, from);
    if (index) point.before = scale.MzBefore(*index);
    if (index && !table.empty()) point.after = convert.DACToMZ(scale.FileDac(*index));
    points.push_back(point);
  }
  return points;
}

CalibrationResult Run(Calibrate& calibrate, const std::string& input, const MassScale& scale,
                      const TslBL::CalibrateParams& params, std::vector<TslBL::CurveEval>& chain,
                      const Corrections& corrections) {
  bool failed = false;
  bool isApplied = calibrate.AutoCalibrate(params, chain, failed);
  CalibrationResult result;
  if (!isApplied) result.error = LastErrorOf(calibrate);
  if (failed) throw InputError(InputName(input), "", result.error);
  for (const std::string& name : corrections.off) SwitchOff(calibrate, name);
  for (const CalibrantMove& move : corrections.moves) Move(calibrate, scale, move);
  if (!corrections.off.empty() || !corrections.moves.empty()) {
    isApplied = calibrate.Apply();
    result.error = isApplied ? "" : LastErrorOf(calibrate);
  }
  if (isApplied) result.table = TableOf(calibrate, scale);
  result.points = PointsOf(calibrate, scale, result.table);
  return result;
}

}  // namespace

CalibrationResult CalibrateSpectrum(const std::string& input, const TslBL::Spectrum& spectrum,
                                    const MassScale& scale, const TslBL::CalibrateParams& params,
                                    std::vector<TslBL::CurveEval> chain, const Corrections& corrections) {
  try {
    Calibrate calibrate(spectrum);
    return Run(calibrate, input, scale, params, chain, corrections);
  } catch (const InputError&) {
    throw;
  } catch (const UsageError&) {
    throw;
  } catch (const std::runtime_error& error) {
    throw InputError(InputName(input), "", error.what());
  }
}

}  // namespace TslTool
