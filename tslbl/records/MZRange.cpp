#include <tslbl/records/MZRange.h>

#include <tslbl/closed/common/Text.h>
#include <tslbl/records/Archive.h>

namespace TslBL {
namespace {

constexpr Codes kTypes{
    .toText = [](std::uint32_t type) { return MZRange::CvtType(static_cast<MZRange::Types>(type)); },
    .fromText = [](const std::wstring& text) -> std::uint32_t { return MZRange::CvtType(text); }};

}  // namespace

std::wstring MZRange::CvtType(Types type) { return type == Full ? L"Full" : L"Partial"; }

MZRange::Types MZRange::CvtType(const std::wstring& text) {
  return EqualsIgnoreCase(text, L"Full") ? Full : Partial;
}

void Describe(Archive& ar, MZRange& range) {
  ar.Version(1, "Unknown MZRange version.");
  if (const auto element = ar.Element(L"MZRange")) {
    ar.EnumAttribute(L"Type", range.Type, kTypes);
    // The limits of a full range are the instrument's, which a document does not freeze.
    if (ar.Xml() && range.Type != MZRange::Partial) return;
    ar.Attribute(L"Start", range.Start);
    ar.Attribute(L"End", range.End);
  }
}

void LoadMZRange(XMLParser& parser, std::vector<MZRange>& ranges) { ranges.emplace_back().Serialize(parser); }

}  // namespace TslBL
