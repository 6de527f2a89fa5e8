#include <tool/commands/info/RunScans.h>

#include <tool/io/Axis.h>
#include <tslbl/spectrum/CreateSpectrum.h>
#include <tslbl/tune/MassRange.h>
#include <memory>
#include <stdexcept>

namespace TslTool {
namespace {

// Empty if the calibration gives none that ascends.
std::vector<double> AxisOf(const RunReader& run, const TslBL::Tune& tune, const TslBL::RawSpectrum& raw) {
  try {
    const std::unique_ptr<TslBL::Spectrum> spectrum(
        TslBL::CreateSpectrum(tune, raw, run.CalibrationOf(raw.info.TuneId)));
    if (Ascends(spectrum->xAxis)) return spectrum->xAxis;
  } catch (const std::runtime_error&) {
    // Told as the axis that does not ascend is.
  }
  return {};
}

std::vector<double> EvenAxis(double from, double to, std::size_t points) {
  std::vector<double> axis(points, from);
  for (std::size_t i = 1; i < points; ++i)
    axis[i] = from + (to - from) * static_cast<double>(i) / static_cast<double>(points - 1);
  return axis;
}

}  // namespace

void RunScans::AssignMz(const TslBL::Tune& tune, const TslBL::RawSpectrum& raw, Scan& scan) {
  scan.mz = AxisOf(reader_, tune, raw);
  if (scan.mz.size() == raw.counts.size()) return;
  const auto [from, to] = TslBL::QMassRange(tune);
  scan.mz = EvenAxis(from, to, raw.counts.size());
  warnings_.Add("whose calibration gives no ascending m/z, told by the mass range of the tune",
                "scan " + std::to_string(scan.number));
}

bool RunScans::Next(Scan& scan) {
  TslBL::RawSpectrum raw;
  scan = {};
  if (!reader_.Next(scan.number, raw)) return false;
  const TslBL::Tune& tune = reader_.TuneOf(scan.number, raw);
  scan.rtSeconds = raw.info.TimeStamp / 1000.0;
  scan.msLevel = 1;
  scan.polarity = PolarityOf(tune);
  scan.representation = Scan::Profile;
  AssignMz(tune, raw, scan);
  scan.amplitude = std::move(raw.counts);
  return true;
}

}  // namespace TslTool
