#pragma once
// The filter behind which the peaks of a spectrum were found.

#include <tslbl/curve/Curve.h>
#include <tslbl/curve/FilterGain.h>
#include <memory>
#include <vector>

namespace TslTool {

struct SmoothFilter {
  explicit SmoothFilter(std::vector<double> filter) : weights(std::move(filter)), gain(weights) {}

  std::vector<double> weights;  // as QFilterWeights gives them; {1} without smoothing
  TslBL::FilterGain gain;
};

// That of a spectrum's chain; null where it has no weights: behind a median, two smoothings, or windows that
// change along the axis. The spectra of a file share one chain, and its filter takes longer than a spectrum:
// the last 16 are kept. For any number of threads.
std::shared_ptr<const SmoothFilter> FilterOf(const TslBL::Curve& curve);

// Whether a curve's chain did nothing to the amplitudes but smooth them: took off no spikes, no baseline and
// no threshold.
bool OnlySmooths(const TslBL::Curve& curve);

}  // namespace TslTool
