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

SyringeList SyringeList::Load() {
  SyringeList list;
  XMLParser parser;
  if (!parser.LoadFile(ModuleFolder(ModuleHandle()) + L"SyringeList.xml")) return list;
  int count = 0;
  if (!parser.StartList(L"Manufacturers", count)) return list;
  for (int i = 0; i < count; ++i) {
    SyringeManufacturer manufacturer;
    manufacturer.Serialize(parser);
    // A foreign element between the manufacturers is none of them.
    if (!(manufacturer == SyringeManufacturer())) list.Manufacturers.push_back(manufacturer);
  }
  parser.EndList();
  return list;
}

}  // namespace TslBL
