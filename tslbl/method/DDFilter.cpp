#include <tslbl/method/DDFilter.h>

#include <tslbl/records/Archive.h>

namespace TslBL {

void Describe(Archive& ar, DDFilter& filter) {
  ar.Version(1, "Unknown DDFilter version.");
  if (ar.Dumping()) return;
  if (const auto element = ar.Element(L"DDFilter")) {
    ar.Attribute(L"MZStart", filter.MZStart);
    ar.Attribute(L"MZEnd", filter.MZEnd);
    ar.Attribute(L"TimeStart", filter.TimeStart);
    ar.Attribute(L"TimeEnd", filter.TimeEnd);
  }
}

}  // namespace TslBL
