#pragma once
// What an mzML spectrum says of itself.

#include <tool/io/MzMLElement.h>
#include <tool/io/Scan.h>
#include <charconv>
#include <cstdint>
#include <optional>
#include <string_view>

namespace TslTool {

// The number that the whole text is.
template <class Number>
std::optional<Number> ToNumber(std::string_view text) {
  Number value{};
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
  if (error != std::errc() || end != text.data() + text.size()) return std::nullopt;
  return value;
}

// N of "... scan=N ..." in an id, if it fits the type.
std::optional<std::uint32_t> NumberInId(std::string_view id);

// N of "function=N" or "experiment=N", which count the kinds of scans that an instrument takes in turn; 0
// without one.
std::uint32_t FunctionInId(std::string_view id);

Scan::Representation RepresentationOf(const MzMLTerms& terms);

// 0 if none is told. Throws std::runtime_error for what is no level.
int LevelOf(const MzMLTerms& terms);

// +1 or -1; 0 if none is told.
int PolarityOf(const MzMLTerms& terms);

// How many seconds a unit of the vocabulary has; nothing for one that is none of time.
std::optional<double> SecondsIn(std::string_view unit);

}  // namespace TslTool
