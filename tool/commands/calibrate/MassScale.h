#pragma once
// What the m/z axis of an input is made of: the mass DAC of a run, or the m/z that a foreign file brings.

#include <tool/commands/average/AverageOf.h>
#include <tslbl/spectrum/Spectrum.h>
#include <string>
#include <vector>

namespace TslTool {

// A spectrum made ready to be calibrated by the library, whose axes are even grids of DAC values. The place
// of a point is told on two scales: that of the library, on which a foreign spectrum has the numbers of its
// points, so that its own spacing stays; and that of calibration files, on which it has its m/z as it came.
class MassScale {
 public:
  // Throws InputError for scans of several tunes or lengths, which have no scale in common.
  MassScale(const std::string& input, Averaged& averaged);

  // Of a place between points, as a peak has it.
  double LibraryDac(double index) const;
  double FileDac(double index) const;
  // Of an m/z on the axis as it came.
  double IndexOf(double mz) const;
  // The m/z of a place on the axis as it came.
  double MzBefore(double index) const;

 private:
  bool isForeign_ = true;
  std::vector<double> mz_;  // of the points, as they came
  double start_ = 0.0;      // DAC value of the first point
  double step_ = 1.0;
};

}  // namespace TslTool
