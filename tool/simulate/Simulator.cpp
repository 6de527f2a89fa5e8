#include <tool/simulate/Simulator.h>

#include <tool/simulate/CountIons.h>
#include <tslbl/closed/common/Truncate.h>
#include <tslbl/tune/rules/DevTuneRules.h>

namespace TslTool {

Simulator::Simulator(std::uint32_t scans, std::uint64_t seed, const Sample& sample,
                     const Instrument& instrument)
    : scans_(scans), seed_(seed), tune_(TuneOf(instrument)), expected_(sample, tune_, instrument.width) {}

TslBL::RawSpectrum Simulator::MakeScan(std::uint32_t index) const {
  TslBL::RawSpectrum raw = CountIons(expected_.At(Fraction(index)), seed_, index);
  raw.info.Id = index + 1;
  raw.info.TuneId = kTuneId;
  raw.info.TimeStamp = TimeStamp(index);
  return raw;
}

std::uint32_t Simulator::TimeStamp(std::uint32_t index) const {
  const double milliseconds = TslBL::DevTuneRules::QDuration(tune_) / 1000.0;
  return TslCommon::Truncate<std::uint32_t>(milliseconds * index + 0.5);
}

}  // namespace TslTool
