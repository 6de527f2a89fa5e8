#include <tslbl/method/DDInfo.h>

#include <tslbl/records/Archive.h>

namespace TslBL {
namespace {

constexpr CodeText kTypeTexts[] = {{DDInfo::None, L"None"},
                                   {DDInfo::FractionCollect, L"FractionCollect"},
                                   {DDInfo::PeakPark, L"PeakPark"},
                                   {DDInfo::TuneChange, L"TuneChange"}};
constexpr CodeText kTriggerTexts[] = {{DDInfo::StartTriggerNotDetected, L"StartTriggerNotDetected"},
                                      {DDInfo::TriggerTimeout, L"TriggerTimeout"},
                                      {DDInfo::AbsAmplAboveThres, L"AbsAmplAboveThres"},
                                      {DDInfo::SNAboveThres, L"SNAboveThres"},
                                      {DDInfo::TICAboveThres, L"TICAboveThres"}};
constexpr Codes kTypes = {.rows = kTypeTexts, .onMiss = DDInfo::None};
constexpr Codes kTriggers = {.rows = kTriggerTexts, .onMiss = DDInfo::TICAboveThres};

template <class E>
E FromText(const Codes& codes, const std::wstring& text) {
  std::uint32_t value = 0;
  codes.FromText(text, value);
  return static_cast<E>(value);
}

// The forms of an archive, where any number has a text.
constexpr Codes kStoredTypes = {
    .toText = [](std::uint32_t value) { return DDInfo::CvtType(static_cast<DDInfo::Types>(value)); },
    .fromText = [](const std::wstring& text) { return std::uint32_t{DDInfo::CvtType(text)}; }};
constexpr Codes kStoredTriggers = {
    .toText = [](std::uint32_t value) { return DDInfo::CvtTrigger(static_cast<DDInfo::Triggers>(value)); },
    .fromText = [](const std::wstring& text) { return std::uint32_t{DDInfo::CvtTrigger(text)}; }};

void DescribeTrigger(Archive& ar, const wchar_t* name, DDInfo::Triggers& trigger, double& value) {
  if (const auto element = ar.Element(name)) {
    ar.EnumAttribute(L"Type", trigger, kStoredTriggers);
    ar.Text(L"Value", value);
  }
}

}  // namespace

std::wstring DDInfo::CvtType(Types type) { return kTypes.ToText(type <= TuneChange ? type : None); }
DDInfo::Types DDInfo::CvtType(const std::wstring& text) { return FromText<Types>(kTypes, text); }
std::wstring DDInfo::CvtTrigger(Triggers trigger) {
  return kTriggers.ToText(trigger <= TICAboveThres ? trigger : TICAboveThres);
}
DDInfo::Triggers DDInfo::CvtTrigger(const std::wstring& text) { return FromText<Triggers>(kTriggers, text); }

void Describe(Archive& ar, DDInfo& info) {
  ar.Version(1, "Unknown DDInfo version.");
  if (ar.Dumping()) return;
  if (const auto element = ar.Element(L"DDInfo")) {
    ar.EnumAttribute(L"Type", info.Type, kStoredTypes);
    if (ar.Reading()) info.CurveEvals.clear();
    // Whoever writes a document of such a run leaves out what it would never use.
    if (ar.Xml() && info.Type == DDInfo::None) return;
    DescribeTrigger(ar, L"StartTrig", info.StartTrigger, info.StartTriggerValue);
    ar.List(L"CurveEvals", info.CurveEvals);
    DescribeTrigger(ar, L"EndTrig", info.EndTrigger, info.EndTriggerValue);
    ar(L"ExclDuration", info.ExclDuration);
  }
}

}  // namespace TslBL
