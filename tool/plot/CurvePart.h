#pragma once
// The points of a curve that a view shows.

#include <tool/plot/Range.h>
#include <cstddef>
#include <span>
#include <vector>

namespace TslTool {

// From the point before the view to the one behind it, so that what is drawn reaches its edges.
class CurvePart {
 public:
  // x ascends.
  CurvePart(const std::vector<double>& x, const Range& view);

  // The part of values that stand over x; nothing of values that are fewer.
  std::span<const double> Of(const std::vector<double>& values) const;

 private:
  std::size_t begin_;
  std::size_t end_;
};

}  // namespace TslTool
