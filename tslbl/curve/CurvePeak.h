#pragma once
// A peak in the units of its curve's x axis, as it is reported.

#include <tslbl/records/Record.h>

namespace TslBL {

struct TSLBL_API CurvePeak : XmlRecord<CurvePeak> {
  double CentroidX = 0.0;
  double CentroidAmpl = 0.0;
  double RelCentroidAmpl = 0.0;  // percent of the curve's largest
  double MaxX = 0.0;
  double MaxAmpl = 0.0;
  double RelMaxAmpl = 0.0;  // percent of the curve's largest
  double Area = 0.0;
  double Width = 0.0;       // full width at half maximum
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
  double PkAreaIntercept = 0.0;
};
TSLBL_API void Describe(Archive& ar, CurvePeak& p);

}  // namespace TslBL
