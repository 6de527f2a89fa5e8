#include <tslbl/tune/ramp/RampStep.h>

#include <tslbl/records/Archive.h>
#include <algorithm>

namespace TslBL {

bool RampStep::IsSameStepType() const {
  return std::ranges::all_of(Lenses, [this](const RampLens& lens) {
    return TuneField::IsFieldSteppable(lens.Field) == TuneField::IsFieldSteppable(Lenses.front().Field);
  });
}

void Describe(Archive& ar, RampStep& step) {
  ar.Version(1, "Unknown RampStep version.");
  ar.List(L"Lenses", step.Lenses);
  ar(L"Records", step.Records);
}

}  // namespace TslBL
