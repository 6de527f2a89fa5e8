#include <tool/commands/tune/FieldText.h>

#include <tool/frame/Numbers.h>
#include <tslbl/closed/common/Text.h>
#include <tslbl/closed/common/Truncate.h>
#include <cmath>
#include <limits>
#include <vector>

namespace TslTool {

using TslBL::Control;
using TslBL::IOPoint;

bool SameText(std::string_view a, std::string_view b) {
  return TslCommon::EqualsIgnoreCase(TslCommon::FromUtf8(a), TslCommon::FromUtf8(b));
}

std::string OnOneLine(std::string text) {
  std::ranges::replace_if(
      text, [](unsigned char c) { return c < 0x20 || c == 0x7F; }, '?');
  return text;
}

template <>
std::span<const std::string> NamesOf<TslBL::Probes::ProbeTypes>() {
  static const std::string kNames[] = {"ESI", "APCI", "low-flow ESI"};
  return kNames;
}
template <>
std::span<const std::string> NamesOf<TslBL::PolarityTypes>() {
  static const std::string kNames[] = {"positive", "negative"};
  return kNames;
}
template <>
std::span<const std::string> NamesOf<TslBL::IonSource::TempLevels>() {
  static const std::string kNames[] = {"off", "low", "medium", "high"};
  return kNames;
}
template <>
std::span<const std::string> NamesOf<Control::Types>() {
  static const std::string kNames[] = {"scan", "SIM"};
  return kNames;
}
template <>
std::span<const std::string> NamesOf<Control::Q1MZTypes>() {
  static const std::string kNames[] = {"RF/DC", "RF only"};
  return kNames;
}
template <>
std::span<const std::string> NamesOf<Control::SimWithSpanTypes>() {
  static const std::vector<std::string> kNames = [] {
    std::vector<std::string> names;
    for (const double span : TslBL::DevTuneRules::QSimSpans())
      names.push_back(span == 0.0 ? "none" : Shown(span));
    return names;
  }();
  return kNames;
}

// A polarity that was switched leaves zeros with a sign, which would be printed.
std::string Shown(double value) { return fmt::format("{}", value == 0.0 ? 0.0 : WithoutNaNSign(value)); }
std::string Shown(std::int32_t value) { return fmt::format("{}", value); }
std::string Shown(std::uint32_t value) { return fmt::format("{}", value); }
std::string Shown(bool value) { return value ? "on" : "off"; }
std::string Shown(const std::wstring& value) { return OnOneLine(TslCommon::ToUtf8(value)); }
std::string Shown(const IOPoint& lens) {
  switch (lens.Type) {
    case IOPoint::SingleType:
      return Shown(lens.Single);
    case IOPoint::CalibratedType:
      return "calibrated";
    case IOPoint::FunctionType:
      return "function";
  }
  return fmt::format("unknown type {}", std::uint32_t{lens.Type});
}

namespace {

template <class Int>
Int ParseWhole(const std::string& name, const std::string& text) {
  const double value = ParseReal(name, text);
  if (value != std::trunc(value)) throw UsageError(name + ": \"" + text + "\" is not a whole number");
  const bool isBelowUnsigned = std::is_unsigned_v<Int> && value < 0.0;
  return isBelowUnsigned ? std::numeric_limits<Int>::max() : TslCommon::Truncate<Int>(value);
}

}  // namespace

void Parse(const std::string& name, const std::string& text, double& value) { value = ParseReal(name, text); }
void Parse(const std::string& name, const std::string& text, std::int32_t& value) {
  value = ParseWhole<std::int32_t>(name, text);
}
void Parse(const std::string& name, const std::string& text, std::uint32_t& value) {
  value = ParseWhole<std::uint32_t>(name, text);
}
void Parse(const std::string& name, const std::string& text, bool& value) {
  if (!SameText(text, "on") && !SameText(text, "off"))
    throw UsageError(name + ": \"" + text + "\" is not one of on, off");
  value = SameText(text, "on");
}
void Parse(const std::string& name, const std::string& text, std::wstring& value) {
  value = TslCommon::FromUtf8(text);
  if (TslCommon::ToUtf8(value) != text) throw UsageError(name + ": the text is not UTF-8");
}
void Parse(const std::string& name, const std::string& text, IOPoint& lens) {
  if (SameText(text, "calibrated")) {
    lens.Type = IOPoint::CalibratedType;
  } else {
    lens.Single = ParseReal(name, text);
    lens.Type = IOPoint::SingleType;
  }
}

}  // namespace TslTool
