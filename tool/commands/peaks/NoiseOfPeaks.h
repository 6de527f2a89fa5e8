#pragma once
// Whether the noise that an evaluation found is noise.

#include <tool/io/SpectrumSource.h>

namespace TslTool {

// Noise lets neighbouring points scatter as much. Where it is three times as large as they do and no peak is
// found, or ten times and only windows were measured, it is that of peaks: they leave no background. Weak
// ones are missed then. Of single ions most neighbours are alike, which tells nothing.
bool IsNoiseOfPeaks(const LoadedSpectrum& loaded);

}  // namespace TslTool
