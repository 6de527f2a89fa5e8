#pragma once
// A ramp: lenses that are walked through their values together, and what is measured at each.

#include <tslbl/Export.h>
#include <tslbl/records/Record.h>
#include <tslbl/tune/ramp/RampLens.h>
#include <cstdint>
#include <deque>

namespace TslBL {

struct TSLBL_API RampStep : SerialRecord<RampStep> {
  std::deque<RampLens> Lenses;  // two at most are in use
  std::uint32_t Records = 0;    // spectra at each value

  // Whether all lenses may follow m/z, or none of them.
  bool IsSameStepType() const;
};
TSLBL_API void Describe(Archive& ar, RampStep& step);

}  // namespace TslBL
