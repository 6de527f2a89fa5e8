#pragma once
// The variance of each point of a spectrum as it was measured.

#include <tool/io/SpectrumSource.h>
#include <span>
#include <vector>

namespace TslTool {

struct PointVariance {
  std::vector<double> values;  // empty where nothing is known
  bool isOfCounts = false;     // else of the noise and of what grows with the signal, as far as that shows
};

// Of a spectrum whose chain has run, with the weights of its filter; at its peaks, and as far beside them as
// their errors depend on, 0 elsewhere.
PointVariance VarianceOf(const LoadedSpectrum& loaded, std::span<const double> filter);

// The amplitude of one count: the one that is told, or the step that all measured amplitudes are multiples
// of (CountStep.h), if the noise is that of counts so high and neighbouring points scatter no less than such
// counts do, as they would if the curve had been interpolated. 0 if there is none.
double CountAmplOf(const LoadedSpectrum& loaded, std::span<const double> filter);

}  // namespace TslTool
