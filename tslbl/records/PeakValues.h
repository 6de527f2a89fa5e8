#pragma once
// The values that a peak of any curve has: where it lies, how high and how wide it is, and
// what lies under it. A row of a peak table derives from this and adds what its kind of
// curve knows of a peak. x is in the units of the curve's x axis.

#include <tslbl/Export.h>

namespace TslBL {

class Archive;

struct PeakValues {
  double CentroidX = 0.0;
  double CentroidAmpl = 0.0;
  double RelCentroidAmpl = 0.0;  // percent of the curve's largest
  double MaxX = 0.0;
  double MaxAmpl = 0.0;
  double RelMaxAmpl = 0.0;  // percent of the curve's largest
  double Area = 0.0;        // amplitude times x
  double Width = 0.0;       // full width at half maximum, in x
  double Resolution = 0.0;  // CentroidX / Width
  double Baseline = 0.0;
  double Signal2Noise = 0.0;
  double Noise = 0.0;
  double PkStartX = 0.0;
  double PkStartAmpl = 0.0;
  double PkEndX = 0.0;
  double PkEndAmpl = 0.0;
  double PkAreaStartX = 0.0;
  double PkAreaEndX = 0.0;
  double PkAreaIntercept = 0.0;  // the level above which the area is taken
};

// The fields in two runs, as a row may have values of its own between them: first the
// centroid and the maximum, then all others. A document keeps x in full.
void DescribePeakTop(Archive& ar, PeakValues& peak);
void DescribePeakShape(Archive& ar, PeakValues& peak);

}  // namespace TslBL
