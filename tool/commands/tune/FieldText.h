#pragma once
// The values of fields as a user reads and types them.

#include <fmt/format.h>
#include <fmt/ranges.h>

#include <tool/frame/UsageError.h>
#include <tslbl/tune/rules/DevTuneRules.h>
#include <algorithm>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <type_traits>

namespace TslTool {

// Names and values are typed in any case.
bool SameText(std::string_view a, std::string_view b);

// Text from a file as it may stand on a terminal or in a line.
std::string OnOneLine(std::string text);

// The names of the values of an enumeration; the index is the value.
template <class E>
std::span<const std::string> NamesOf();
template <>
std::span<const std::string> NamesOf<TslBL::Probes::ProbeTypes>();
template <>
std::span<const std::string> NamesOf<TslBL::PolarityTypes>();
template <>
std::span<const std::string> NamesOf<TslBL::IonSource::TempLevels>();
template <>
std::span<const std::string> NamesOf<TslBL::Control::Types>();
template <>
std::span<const std::string> NamesOf<TslBL::Control::Q1MZTypes>();
template <>
std::span<const std::string> NamesOf<TslBL::Control::SimWithSpanTypes>();

// As text that Parse takes again, but for a lens that is a function.
std::string Shown(double value);
std::string Shown(std::int32_t value);
std::string Shown(std::uint32_t value);
std::string Shown(bool value);
std::string Shown(const std::wstring& value);
std::string Shown(const TslBL::IOPoint& lens);
template <class E>
requires std::is_enum_v<E> std::string Shown(E value) {
  const auto index = static_cast<std::uint32_t>(value);
  const auto names = NamesOf<E>();
  return index < names.size() ? names[index] : fmt::format("unknown {}", index);
}

// All throw UsageError, with the name of the field, for a text that is no such value. What a
// text leaves open, such as the other settings of a lens, stays as it is.
//
// A whole number beyond its type becomes the end of the type that no field reaches, so that
// it meets the limits of its field.
void Parse(const std::string& name, const std::string& text, double& value);
void Parse(const std::string& name, const std::string& text, std::int32_t& value);
void Parse(const std::string& name, const std::string& text, std::uint32_t& value);
void Parse(const std::string& name, const std::string& text, bool& value);
void Parse(const std::string& name, const std::string& text, std::wstring& value);
void Parse(const std::string& name, const std::string& text, TslBL::IOPoint& lens);
template <class E>
requires std::is_enum_v<E>
void Parse(const std::string& name, const std::string& text, E& value) {
  const auto names = NamesOf<E>();
  const auto found = std::ranges::find_if(names, [&](const auto& known) { return SameText(text, known); });
  if (found == names.end())
    throw UsageError(fmt::format("{}: \"{}\" is not one of {}", name, text, fmt::join(names, ", ")));
  value = static_cast<E>(found - names.begin());
}

// The values that such a field takes, if they have names.
template <class T>
std::string ValueNamesOf() {
  if constexpr (std::is_same_v<T, bool>) {
    return "on, off";
  } else if constexpr (std::is_enum_v<T>) {
    return fmt::format("{}", fmt::join(NamesOf<T>(), ", "));
  } else {
    return "";
  }
}

}  // namespace TslTool
