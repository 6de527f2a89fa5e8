#include <tool/simulate/Instrument.h>

#include <tslbl/tune/MZConvert.h>
#include <tslbl/tune/MassRange.h>
#include <tslbl/tune/rules/DevTuneRules.h>
#include <cstddef>
#include <cstdint>

namespace TslTool {

TslBL::Tune TuneOf(const Instrument& instrument) {
  TslBL::DevTuneRules tune(TslBL::Probes::ESI);
  tune.Info.Name = L"Demonstration";
  tune.Info.Comment = L"The demonstration instrument of tslbl";
  // Neither the day nor the site's catalogue of syringes makes another run.
  tune.Info.LastSave = 0;
  tune.SyringeData = {};
  TslBL::Control& control = tune.ControlData;
  control.MZLow = instrument.mzLow;
  control.MZHi = instrument.mzHigh;
  control.MZStepSize = instrument.mzStep;
  control.PulseCountDelay = 50;
  control.ScansPerSpec = 4;
  // Not quite straight, as no real scale is.
  tune.MZCalPts = {{L"Low", 5.0, 100.0},
                   {L"Calibrant 1", 322.0481, 6439.6},
                   {L"Calibrant 2", 922.0098, 18441.9},
                   {L"High", 3000.0, 60000.0}};
  tune.CalculateInitialSettlingDelay();
  return tune;
}

std::vector<double> AxisOf(const TslBL::Tune& tune) {
  const TslBL::MZConvert convert(tune.MZCalPts);
  const double start = convert.MZToDAC(TslBL::QMassRange(tune).first);
  const auto step =
      TslBL::DevTuneRules::TranslateField(TslBL::TuneField::MZStepSize, tune.ControlData.MZStepSize);
  std::vector<double> mz(TslBL::DevTuneRules::QNumPulses(tune));
  for (std::size_t i = 0; i < mz.size(); ++i) mz[i] = convert.DACToMZ(static_cast<double>(i) * step + start);
  return mz;
}

}  // namespace TslTool
