#pragma once
// Data peaks that run into a group without a fitted peak of their own.

#include <tslbl/spectrum/Spectrum.h>

namespace TslTool {

// Adds each to the group that it runs into, or makes a group of two that run into each other, where the two
// meet at least as high as the spectrum's parameters ask of peaks that are joined, and fits the group anew.
// The engine counts the peaks of a group by its points alone, and leaves out low ones beside tall ones; that
// the chain found them is reason enough to fit them, as what lies under them is not theirs. Ranges, the least
// amplitude and the most peaks of a group, as the parameters have them, hold here too. One that cannot be
// fitted stays as it is.
void FitTouchingPeaks(TslBL::Spectrum& spectrum);

}  // namespace TslTool
