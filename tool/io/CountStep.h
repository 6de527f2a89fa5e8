#pragma once
// The amplitude of one count in amplitudes that were counted.

#include <vector>

namespace TslTool {

// The largest step that all amplitudes are whole multiples of, within a fiftieth of it: counts may have been
// averaged or scaled to a rate, and rounded to a few digits. 0 if there is none, if an amplitude is negative,
// or beyond 1e9 steps, or if an eighth of the points has a larger step of its own, as where the gain or the
// time for a point was changed along the spectrum.
double CountStepOf(const std::vector<double>& amplitudes);

}  // namespace TslTool
