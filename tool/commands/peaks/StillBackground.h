#pragma once
// Spectra whose noise is gone.

#include <tool/io/SpectrumSource.h>

namespace TslTool {

// Whether most amplitudes are equal, as where a threshold or coarse rounding has taken the noise, and the
// smallest step from them, alone, would pass the --sn of a spectrum that has peaks. Of counted ions it does
// not: one of them is their noise.
bool IsBackgroundStill(const LoadedSpectrum& loaded);

}  // namespace TslTool
