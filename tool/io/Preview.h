#pragma once
// A look at the first spectra of a source before any of them is evaluated, for what must be known of the data
// beforehand.

#include <tool/io/SpectrumSource.h>
#include <cstddef>
#include <memory>
#include <optional>

namespace TslTool {

struct Preview {
  // How wide peaks are, in points: the median of what each spectrum shows, or 0 if none shows a peak.
  double pointsAcross = 0.0;
  std::size_t spectra = 0;  // that show a peak
  // Points of a spectrum, the median; of those that show a peak, if any does.
  double points = 0.0;
  // The spacing of the points in m/z, if it is about the same along each spectrum.
  std::optional<double> evenStep;
};

// Loads spectra of `source` until 8 of them have shown a peak, up to `mostPoints` points in all, which are
// kept: afterwards it stands for the same spectra as before, in the same order. A spectrum that cannot be
// loaded fails when it is its turn.
Preview LookAhead(std::unique_ptr<SpectrumSource>& source, std::size_t mostPoints = 4'000'000);

// The same for a source of its own, which is read to its end if need be and keeps nothing.
Preview LookThrough(SpectrumSource& source);

}  // namespace TslTool
