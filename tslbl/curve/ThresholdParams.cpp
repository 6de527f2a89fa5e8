#include <tslbl/curve/ThresholdParams.h>

#include <tslbl/records/Archive.h>

namespace TslBL {

void Describe(Archive& ar, ThresholdParams& p) {
  ar.Version(1, "Unknown ThresholdParams version.");
  if (const auto element = ar.Element(L"Threshold")) ar.Text(L"Value", p.Value);
}

}  // namespace TslBL
