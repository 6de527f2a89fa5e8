#pragma once
// Running one evaluation step on a curve.
//
// ExecuteX runs step X with the parameters that the curve holds and then every step that
// depends on it and has run before, so that baseline, noise and peaks always belong to the
// amplitudes at hand. Each step that runs appends itself to the curve's history.
//
// All return false with a message in `error` as soon as a step fails; on success `error`
// is left alone. `changed` only ever gains flags.

#include <tslbl/Export.h>
#include <tslbl/curve/Changed.h>
#include <string>

namespace TslBL {

class Curve;

TSLBL_API bool ExecuteSmooth(Curve& curve, Changed& changed, std::wstring& error);
TSLBL_API bool ExecuteBaseline(Curve& curve, Changed& changed, std::wstring& error);
TSLBL_API bool ExecuteBaselineSubtract(Curve& curve, Changed& changed, std::wstring& error);
TSLBL_API bool ExecuteNoise(Curve& curve, Changed& changed, std::wstring& error);
TSLBL_API bool ExecuteThreshold(Curve& curve, Changed& changed, std::wstring& error);
TSLBL_API bool ExecuteThresholdSubtract(Curve& curve, Changed& changed, std::wstring& error);
// Runs baseline, noise and threshold first where they are needed and have not run.
TSLBL_API bool ExecutePeakDetect(Curve& curve, Changed& changed, std::wstring& error);

// Takes isolated tall spikes, as aerosol droplets leave them, out of the amplitudes. Needs
// no status and works on a frozen curve, too. Always true; `error` is never written.
TSLBL_API bool DoAerosolFilter(Curve& curve, Changed& changed, std::wstring& error);

// The amplitude below which a valley ends a peak: `percent` of the way from `valley` (the
// baseline) up to `peak`; the peak's own amplitude if it does not stand above the valley.
TSLBL_API double CalcPeakValleyAmplitude(double peak, double valley, double percent);

}  // namespace TslBL
