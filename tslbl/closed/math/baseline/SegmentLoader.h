#pragma once
// Brings one segment after another into arrays that stay in the processor's nearest cache.
#include <tslbl/closed/math/baseline/RobustLine.h>

#include <cstddef>
#include <vector>

namespace TslMath {

// Loads y - shape (shape null: y) and its moving mean. The mean reads beyond the segment as far as the curve
// goes; at the curve's ends its window shrinks symmetrically, so that a straight line keeps its value. The
// data of a Load stay valid until the next one.
class SegmentLoader {
 public:
  // `points` is odd and at most n; no segment is longer than `longest`, nor shorter than points/2 unless it
  // is the whole curve.
  SegmentLoader(const double* y, const double* shape, std::size_t n, std::size_t longest, std::size_t points);

  SegmentData Load(std::size_t begin, std::size_t end);

 private:
  void LoadValues(std::size_t begin, std::size_t end);
  void LoadMeans(std::size_t begin, std::size_t end);
  std::size_t LoadSamples(std::size_t length, std::size_t stride);

  const double* y_;
  const double* shape_;
  std::size_t n_;
  std::size_t half_;
  std::vector<double> values_;  // the segment and half a window on either side
  std::vector<double> sums_;    // over a power of two of values
  std::vector<double> means_;
  std::vector<double> samples_;
};

}  // namespace TslMath
