#include <tslbl/tune/ramp/RampAlgorithmParams.h>

#include <tslbl/records/Archive.h>

namespace TslBL {

void Describe(Archive& ar, RampAlgorithmParams& params) {
  ar.Version(1, "Unknown RampAlgorithmParams version.");
  ar(L"Type", params.Type);
  ar(L"Percent", params.Percent);
}

}  // namespace TslBL
