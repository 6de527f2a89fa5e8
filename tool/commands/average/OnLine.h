#pragma once
// A value between two points.

namespace TslTool {

// On the straight line from (x0, y0) to (x1, y1), x0 < x1. The points themselves are met exactly.
inline double OnLine(double x, double x0, double y0, double x1, double y1) {
  if (x == x1) return y1;
  return (y1 - y0) / (x1 - x0) * (x - x0) + y0;
}

}  // namespace TslTool
