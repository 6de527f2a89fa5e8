#include <tslbl/method/DDEvent.h>

#include <tslbl/closed/common/Text.h>
#include <tslbl/closed/common/XMLBuilder.h>
#include <tslbl/records/Archive.h>

namespace TslBL {
namespace {

constexpr const wchar_t* kStart = L"Start";
constexpr Codes kBoundaries = {
    .toText =
        [](std::uint32_t value) { return DDEvent::CvtBoundary(static_cast<DDEvent::Boundaries>(value)); },
    .fromText = [](const std::wstring& text) { return std::uint32_t{DDEvent::CvtBoundary(text)}; }};

}  // namespace

std::wstring DDEvent::CvtBoundary(Boundaries boundary) { return boundary == Start ? kStart : L"Stop"; }

DDEvent::Boundaries DDEvent::CvtBoundary(const std::wstring& text) {
  return EqualsIgnoreCase(text, kStart) ? Start : Stop;
}

void Describe(Archive& ar, DDEvent& event) {
  ar.Version(1, "Unknown DDEvent version.");
  ar.Enum(L"Boundary", event.Boundary, kBoundaries);
  ar(L"TimeStamp", event.TimeStamp);
  ar(L"SpecId", event.SpecId);
  ar(L"MZPeaks", event.MZPeaks);
}

void AddEvent(XMLBuilder& builder, std::uint32_t id, DDInfo::Types type, const DDEvent& event) {
  std::wstring peaks;
  for (const double mz : event.MZPeaks) peaks.append(peaks.empty() ? L"" : L" ").append(ToText(mz));
  builder.StartNode(L"Event");
  builder.WAttribute(L"Id", ToText(id));
  builder.WAttribute(L"Boundary", DDEvent::CvtBoundary(event.Boundary));
  builder.WAttribute(L"Type", DDInfo::CvtType(type));
  builder.WAttribute(L"TimeStamp", ToText(event.TimeStamp));
  builder.WAttribute(L"SpecId", ToText(event.SpecId));
  builder.WNode(L"MZPeaks", peaks);
  builder.EndNode();
}

}  // namespace TslBL
