#include <tslbl/tune/SyringeList.h>

#include <tslbl/closed/common/ModulePath.h>
#include <tslbl/closed/common/XMLParser.h>
#include <tslbl/records/Archive.h>

namespace TslBL {

void Describe(Archive& ar, SyringeManufacturer& manufacturer) {
  if (const auto element = ar.Element(L"Manufacturer")) {
    ar.Attribute(L"Name", manufacturer.Name);
    ar.List(L"Models", manufacturer.Models);
  }
}

void Describe(Archive& ar, SyringeList& list) { ar.List(L"Manufacturers", list.Manufacturers); }

SyringeList SyringeList::Load() {
  SyringeList list;
  XMLParser parser;
  if (parser.LoadFile(ModuleFolder(ModuleHandle()) + L"SyringeList.xml")) list.Serialize(parser);
  return list;
}

}  // namespace TslBL
