#pragma once
// A stretch of a method in which one sequence of tune runs goes round and round.
//
// A sequence item is a list of ids of tune runs. It is timed by the first; a further one is the
// run to change to, behind a run whose data-dependent type is TuneChange.

#include <tslbl/Export.h>
#include <tslbl/records/Record.h>
#include <cstdint>
#include <vector>

namespace TslBL {

struct TSLBL_API TimePeriod : Record<TimePeriod> {
  bool Save = true;               // whether its data are kept
  std::uint32_t Loops = 0;        // of the sequence
  std::uint32_t Timeout = 0;      // length in milliseconds; MethodRules::FreeRun is without end
  std::uint32_t SettleDelay = 0;  // microseconds before it begins, while the polarity changes
  std::vector<std::vector<std::uint32_t>> Sequence;
};
TSLBL_API void Describe(Archive& ar, TimePeriod& period);

}  // namespace TslBL
