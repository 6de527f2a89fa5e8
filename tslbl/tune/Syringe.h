#pragma once
// The syringe of the infusion pump, as a tune keeps it.

#include <tslbl/Export.h>
#include <tslbl/records/Record.h>
#include <cstdint>
#include <string>

namespace TslBL {

struct TSLBL_API SyringeModel : Record<SyringeModel> {
  std::wstring Name;
  double Diameter = 0.0;  // mm; the first files held whole ones

  bool operator==(const std::wstring& name) const { return Name == name; }
};
TSLBL_API void Describe(Archive& ar, SyringeModel& model);

struct TSLBL_API Syringe : Record<Syringe> {
  std::wstring Manufacturer;
  SyringeModel Model;
  std::uint32_t FlowRate = 0;
};
TSLBL_API void Describe(Archive& ar, Syringe& syringe);

}  // namespace TslBL
