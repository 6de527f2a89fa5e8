#include <tslbl/tune/Syringe.h>

#include <tslbl/records/Archive.h>

namespace TslBL {

void Describe(Archive& ar, SyringeModel& model) {
  ar.Version(2, "Unknown SyringeModel version.");
  if (const auto element = ar.Element(L"Model")) {
    ar.Attribute(L"Name", model.Name);
    if (ar.Since(2)) {
      ar.Attribute(L"Diameter", model.Diameter);
    } else {
      std::int32_t whole = 0;
      ar.Attribute(L"Diameter", whole);
      model.Diameter = whole;
    }
  }
}

void Describe(Archive& ar, Syringe& syringe) {
  ar.Version(1, "Unknown Syringe version.");
  if (const auto element = ar.Element(L"Syringe")) {
    ar(L"Manufacturer", syringe.Manufacturer);
    ar.Nested(syringe.Model);
    ar(L"FlowRate", syringe.FlowRate);
  }
}

}  // namespace TslBL
