#include <tslbl/spectrum/CountRate.h>

#include <tslbl/spectrum/RawSpectrum.h>
#include <tslbl/tune/Tune.h>
#include <tslbl/tune/rules/DevTuneRules.h>
#include <numeric>

namespace TslBL {
namespace {

bool useRawAmplitudeCounts = false;

// Seconds for which a point of a spectrum counts.
double CountingTime(const Tune& tune) {
  const std::uint32_t pulses = tune.IsSimWithSpan() ? DevTuneRules::QNumPulses(tune) : 1;
  return tune.ControlData.PulseCountDelay / 1e6 * tune.ControlData.ScansPerSpec * pulses;
}

double DivideAndSum(std::vector<double>& values, double divisor) {
  double sum = 0.0;
  for (double& value : values) {
    value /= divisor;
    sum += value;
  }
  return sum;
}

}  // namespace

bool UseRawAmplitudeCounts() { return useRawAmplitudeCounts; }

void AssignCountRateAmpl(std::vector<double>& amplitudes, const Tune& tune, double* tic) {
  double sum = 0.0;
  if (UseRawAmplitudeCounts()) {
    sum = std::accumulate(amplitudes.begin(), amplitudes.end(), 0.0);
  } else if (const double seconds = CountingTime(tune); seconds != 0.0) {
    sum = DivideAndSum(amplitudes, seconds);
  }
  if (tic != nullptr) *tic = sum;
}

void ScaleRawTICs(const Tune& tune, std::vector<RawSpectrumInfo*>& infos) {
  if (UseRawAmplitudeCounts()) return;
  const double seconds = CountingTime(tune);
  for (RawSpectrumInfo* info : infos) info->TIC = seconds == 0.0 ? 0.0 : info->TIC / seconds;
}

}  // namespace TslBL
