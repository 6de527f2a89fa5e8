#include <tslbl/chromatogram/ICRange.h>

#include <tslbl/closed/common/Text.h>
#include <tslbl/records/Archive.h>

namespace TslBL {
namespace {

constexpr Codes kTypes{
    .toText = [](std::uint32_t type) { return ICRange::CvtType(static_cast<ICRange::Types>(type)); },
    .fromText = [](const std::wstring& text) -> std::uint32_t { return ICRange::CvtType(text); }};

}  // namespace

std::wstring ICRange::CvtType(Types type) {
  if (type == Full) return L"Full";
  return type == Time ? L"Time" : L"SpecId";
}

ICRange::Types ICRange::CvtType(const std::wstring& text) {
  if (EqualsIgnoreCase(text, L"Full")) return Full;
  return EqualsIgnoreCase(text, L"Time") ? Time : SpecId;
}

void Describe(Archive& ar, ICRange& range) {
  ar.Version(1, "Unknown ICRange version.");
  if (const auto element = ar.Element(L"ICRange")) {
    ar.EnumAttribute(L"Type", range.Type, kTypes);
    // The whole of a run has no ends that a document could freeze.
    if (ar.Xml() && range.Type == ICRange::Full) return;
    ar.Attribute(L"Start", range.Start);
    ar.Attribute(L"End", range.End);
  }
}

void LoadICRange(XMLParser& parser, std::vector<ICRange>& ranges) { ranges.emplace_back().Serialize(parser); }

}  // namespace TslBL
