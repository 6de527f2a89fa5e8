#pragma once
// What smoothing takes of the tops of a spectrum's peaks, and adds to their widths.

#include <tool/chain/SmoothFilter.h>
#include <tool/io/SpectrumSource.h>

namespace TslTool {

// A filter takes more of a pointed top than of a flat one of the same width: of the lines of a quadrupole,
// which are often flat, next to nothing, where a Gaussian would lose a tenth. The strong peaks of the
// spectrum tell: through a filter half as wide, which takes a sixteenth as much, their measured points give
// the tops that they have. Where they are too few or too weak to tell, tops are those of Gaussians.
class TopShape {
 public:
  // Of a spectrum whose chain has run.
  TopShape(const LoadedSpectrum& loaded, const SmoothFilter& filter);

  // What the filter takes, of what it would take of Gaussians: 1 for these, about 0 for flat tops.
  double LossShare() const { return share_; }

  // The height before the filter of a peak that is so high and so many points wide behind it.
  double HeightBefore(double height, double width, const TslBL::FilterGain& gain) const {
    return height * (1.0 + share_ * (1.0 / gain.Of(width) - 1.0));
  }

  // Its width before the filter, points.
  double WidthBefore(double width, const TslBL::FilterGain& gain) const {
    return width + share_ * (gain.WidthBefore(width) - width);
  }

 private:
  double share_ = 1.0;
};

}  // namespace TslTool
