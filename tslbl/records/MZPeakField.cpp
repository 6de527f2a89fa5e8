#include <tslbl/records/MZPeakField.h>

#include <tslbl/closed/common/MessageId.h>
#include <tslbl/closed/common/StringTable.h>
#include <tslbl/closed/common/Text.h>
#include <tslbl/records/Archive.h>
#include <algorithm>
#include <iterator>

namespace TslBL {
namespace {

struct Row {
  const wchar_t* text;
  MessageId label;
};

// By number. The last row serves every number and every text that has no row of its own.
constexpr Row kRows[] = {
    {L"Ampl", kAmplitudeLabel}, {L"Mass", kMassLabel}, {L"Res", kResolutionLabel}, {L"Width", kWidthLabel}};
constexpr auto kLast = static_cast<std::uint32_t>(std::size(kRows) - 1);

const Row& RowOf(std::uint32_t type) { return kRows[std::min(type, kLast)]; }

constexpr Codes kTypes{
    .toText = [](std::uint32_t type) -> std::wstring { return RowOf(type).text; },
    .fromText = [](const std::wstring& text) -> std::uint32_t { return MZPeakField::CvtType(text); }};

}  // namespace

std::wstring MZPeakField::CvtType(Types type) { return RowOf(type).text; }

MZPeakField::Types MZPeakField::CvtType(const std::wstring& text) {
  const auto row = std::find_if(std::begin(kRows), std::end(kRows) - 1,
                                [&](const Row& candidate) { return EqualsIgnoreCase(text, candidate.text); });
  return static_cast<Types>(row - std::begin(kRows));
}

std::wstring MZPeakField::FieldToString() const { return TslLoadString(ModuleHandle(), RowOf(Type).label); }

void Describe(Archive& ar, MZPeakField& field) {
  ar.Version(1, "Unknown MZPeakField version.");
  if (const auto element = ar.Element(L"MZPkFld")) ar.EnumAttribute(L"Type", field.Type, kTypes);
}

}  // namespace TslBL
