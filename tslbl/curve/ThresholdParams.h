#pragma once
// The one amplitude that a user names as a floor for peaks.

#include <tslbl/records/Record.h>

namespace TslBL {

struct TSLBL_API ThresholdParams : Record<ThresholdParams> {
  double Value = 0.0;
};
TSLBL_API void Describe(Archive& ar, ThresholdParams& p);

}  // namespace TslBL
