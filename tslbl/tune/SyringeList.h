#pragma once
// The catalogue of syringes: the file "SyringeList.xml", which a site keeps beside the
// library. A list "Manufacturers" of elements "Manufacturer", each with its name and a
// list "Models".

#include <tslbl/Export.h>
#include <tslbl/records/Record.h>
#include <tslbl/tune/Syringe.h>
#include <string>
#include <vector>

namespace TslBL {

struct TSLBL_API SyringeManufacturer : XmlRecord<SyringeManufacturer> {
  std::wstring Name;
  std::vector<SyringeModel> Models;

  bool operator==(const std::wstring& name) const { return Name == name; }
};
TSLBL_API void Describe(Archive& ar, SyringeManufacturer& manufacturer);

struct TSLBL_API SyringeList : XmlRecord<SyringeList> {
  std::vector<SyringeManufacturer> Manufacturers;

  // Reads the file anew. A file that is missing, unreadable or not well formed gives an
  // empty list.
  static SyringeList Load();
};
TSLBL_API void Describe(Archive& ar, SyringeList& list);

}  // namespace TslBL
