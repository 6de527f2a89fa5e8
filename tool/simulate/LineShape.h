#pragma once
// Gaussian lines, and what of their sum can be told apart.

#include <tool/simulate/IsotopeLines.h>
#include <cstdint>
#include <vector>

namespace TslTool {

class LineShape {
 public:
  // `width`: m/z, full at half height.
  explicit LineShape(double width);

  // 1 at the middle.
  double At(double distance) const;
  // How far from its middle a line ends, in m/z.
  double Reach() const { return 6.0 * sigma_; }
  // Lines this near to one another cannot be told from one line, not even by its width: that grows by less
  // than a thousandth.
  double Blur() const { return sigma_ / 20.0; }
  double Width() const { return width_; }

 private:
  double width_;
  double sigma_;
};

// What a quadrupole can tell apart of a charge state, ascending. Where its isotopes are further apart than a
// line is wide, these are the maxima of the summed profile, each at the m/z of its isotope. Others run
// together, and are one line at the mean position of the top quarter of the profile, as the centroid of a
// peak is measured. `lines` is not empty.
std::vector<Line> VisibleLines(const std::vector<Line>& lines, std::uint32_t charge, const LineShape& shape);

}  // namespace TslTool
