#include <tool/commands/average/RunSum.h>

#include <fmt/format.h>

#include <tool/frame/InputError.h>
#include <tool/io/Axis.h>
#include <tslbl/arithmetic/SpectrumSums.h>
#include <tslbl/spectrum/CountRate.h>
#include <tslbl/spectrum/CreateSpectrum.h>
#include <tslbl/spectrum/StateSpectrum.h>
#include <tslbl/tune/MZConvert.h>
#include <stdexcept>
#include <vector>

namespace TslTool {
namespace {

constexpr std::uint64_t kMostScansPerSpectrum = 65535;

std::unique_ptr<TslBL::Spectrum> SpectrumOf(const std::string& file, const RunReader& run,
                                            const TslBL::RawSpectrum& sum) {
  const std::uint32_t id = sum.info.TuneId;
  const std::string place = fmt::format("tune {}", id);
  try {
    const TslBL::Tune& tune = run.Tunes().at(id);
    TslBL::RawSpectrum rates = sum;
    TslBL::AssignCountRateAmpl(rates.counts, tune, &rates.info.TIC);
    std::unique_ptr<TslBL::Spectrum> spectrum(TslBL::CreateSpectrum(tune, rates, run.CalibrationOf(id)));
    // The whole number that a spectrum keeps of it would begin a common axis beside all of theirs.
    spectrum->startMDAC = TslBL::MZConvert(tune.MZCalPts).MZToDAC(tune.ControlData.MZLow);
    if (!Ascends(spectrum->xAxis)) throw std::runtime_error("its calibration gives no ascending m/z");
    return spectrum;
  } catch (const std::exception& e) {
    throw InputError(file, place, e.what());
  }
}

}  // namespace

void RunSum::Add(const TslBL::RawSpectrum& raw) {
  SummedScans& part = parts_[{raw.info.TuneId, raw.counts.size()}];
  if (part.scans++ == 0) {
    part.raw = raw;
    return;
  }
  part.raw.info.TIC += raw.info.TIC;
  for (std::size_t i = 0; i < raw.counts.size(); ++i) part.raw.counts[i] += raw.counts[i];
}

std::unique_ptr<TslBL::Spectrum> RunSum::Average(const std::string& file, const RunReader& run) const {
  std::vector<std::unique_ptr<TslBL::Spectrum>> spectra;
  std::vector<TslBL::StateSpectrum> states;
  for (const auto& [key, part] : parts_) {
    spectra.push_back(SpectrumOf(file, run, part.raw));
    states.push_back({part.scans, spectra.back().get()});
  }
  try {
    return std::unique_ptr<TslBL::Spectrum>(TslBL::AverageMultiStateSpectra(states));
  } catch (const std::exception& e) {
    throw InputError(file, "", fmt::format("its tunes cannot be brought to one axis: {}", e.what()));
  }
}

TslBL::Tune TuneOfSum(const TslBL::Tune& tune, std::uint32_t scans) {
  const std::uint64_t all = std::uint64_t{tune.ControlData.ScansPerSpec} * scans;
  if (all > kMostScansPerSpectrum)
    throw std::runtime_error(fmt::format("a tune tells of {} scans a spectrum at most, and these are {}",
                                         kMostScansPerSpectrum, all));
  TslBL::Tune summed = tune;
  summed.ControlData.ScansPerSpec = static_cast<std::uint32_t>(all);
  return summed;
}

}  // namespace TslTool
