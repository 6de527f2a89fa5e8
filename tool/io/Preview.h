#pragma once
// A look at the first spectra of a source before any of them is evaluated, for what must be known of the data
// beforehand.

#include <tool/io/SpectrumSource.h>
#include <cstddef>
#include <memory>

namespace TslTool {

// How wide peaks are in the first spectra, in points: the median of what each of them shows, or 0 if none
// shows a peak.
struct Preview {
  double pointsAcross = 0.0;
  std::size_t spectra = 0;  // that show a peak
};

// Loads up to 8 spectra of `source`, which afterwards stands for the same spectra as before, in the same
// order. A spectrum that cannot be loaded fails when it is its turn.
Preview LookAhead(std::unique_ptr<SpectrumSource>& source);

}  // namespace TslTool
