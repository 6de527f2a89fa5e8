#pragma once
// The value of one lens of the ion path: a single number, or a mark that the lens follows
// m/z by the tune's Q1 calibration points.
//
// A third type, a function of m/z, stands in old files only. A binary one is read as
// calibrated, with its step size as the value.

#include <tslbl/Export.h>
#include <tslbl/records/Record.h>
#include <cstdint>

namespace TslBL {

struct TSLBL_API IOPoint : Record<IOPoint> {
  enum Types : std::uint32_t { SingleType = 0, CalibratedType = 1, FunctionType = 2 };

  Types Type = SingleType;
  double Single = 0.0;
  double Calibrated = 0.0;
  double Start = 0.0;
  double End = 0.0;
  double StepSize = 0.0;
};
TSLBL_API void Describe(Archive& ar, IOPoint& lens);

}  // namespace TslBL
