#include <tslbl/tune/TuneInfo.h>

#include <tslbl/records/Archive.h>

namespace TslBL {

void Describe(Archive& ar, TuneInfo& info) {
  ar.Version(1, "Unknown TuneInfo version.");
  if (const auto element = ar.Element(L"Info")) {
    ar(L"Name", info.Name);
    ar(L"Comment", info.Comment);
    ar(L"LastSave", info.LastSave);
  }
}

}  // namespace TslBL
