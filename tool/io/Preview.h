#pragma once
// A look at the first spectra of a source before any of them is evaluated, for what must be known of the data
// beforehand.

#include <tool/io/SpectrumSource.h>
#include <cstddef>
#include <map>
#include <memory>
#include <optional>

namespace TslTool {

struct Preview {
  // How wide peaks are, in points: the median of what each spectrum shows, weighted by the square of how far
  // its peaks stand out of noise, or the lowest tenth where that is below 0.6 of it. If none shows a peak,
  // what the counts of all tell together (PairCorrelation.h); 0 if these tell nothing, either.
  double pointsAcross = 0.0;
  std::size_t spectra = 0;  // that showed a peak
  // Points of a spectrum, the median; of those that showed a peak, if any did.
  double points = 0.0;
  // The spacing of the points in m/z where it is shortest, if it is about the same along all spectra.
  std::optional<double> evenStep;
  // What is left of the source would not change it, or nothing is left.
  bool isSettled = false;
  // The width for each MS level whose spectra are strong enough to tell it.
  std::map<int, double> pointsAcrossOfLevel = {};
  // In most spectra that showed a peak; see CorrelatedNoise.h, SmoothBumps.h.
  bool isNoiseCorrelated = false;
  bool areBumpsSmooth = false;
};

// Loads spectra of `source` until 8 of them have shown peaks that are strong enough to tell the width for
// all, up to `mostPoints` points in all, which are kept: afterwards it stands for the same spectra as before,
// in the same order. A spectrum that cannot be loaded fails when it is its turn.
//
// The width is looked for in the first 32 spectra, until 8 have shown it, and of the others in those that
// rise by a tenth higher than all before: what is lower would not count beside them.
Preview LookAhead(std::unique_ptr<SpectrumSource>& source, std::size_t mostPoints = 4'000'000);

// The same for a source of its own, which is read to its end if need be and keeps nothing.
Preview LookThrough(SpectrumSource& source);

}  // namespace TslTool
