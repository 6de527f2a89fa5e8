#include <tslbl/tune/ramp/RampLens.h>

#include <tslbl/records/Archive.h>

namespace TslBL {
namespace {

constexpr Codes kFields = {.toText = [](std::uint32_t field) {
  return TuneField::FieldToXmlTag(static_cast<TuneField::Id>(field));
}};

}  // namespace

void Describe(Archive& ar, RampLens& lens) {
  ar.Version(1, "Unknown RampLens version.");
  ar.Enum(L"Field", lens.Field, kFields);
  ar(L"Start", lens.Start);
  ar(L"End", lens.End);
  ar(L"Step", lens.Step);
}

}  // namespace TslBL
