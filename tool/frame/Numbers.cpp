#include <tool/frame/Numbers.h>

#include <tool/frame/UsageError.h>
#include <charconv>
#include <cmath>
#include <limits>

namespace TslTool {
namespace {

template <class T>
T Parse(const std::string& option, std::string_view text, const char* wanted) {
  T value{};
  const char* last = text.data() + text.size();
  const auto [end, error] = std::from_chars(text.data(), last, value);
  if (error != std::errc() || end != last)
    throw UsageError(option + ": \"" + std::string(text) + "\" is not " + wanted);
  return value;
}

// The dash between two numbers: not a sign, which stands first or behind an exponent.
std::size_t DashIn(std::string_view text) {
  std::size_t dash = text.find('-', 1);
  while (dash != std::string_view::npos && (text[dash - 1] == 'e' || text[dash - 1] == 'E'))
    dash = text.find('-', dash + 1);
  return dash;
}

template <class Range, class ParseOne>
Range ParseRange(const std::string& option, std::string_view text, ParseOne parse) {
  const std::size_t dash = DashIn(text);
  if (dash == std::string_view::npos) {
    const auto value = parse(option, text);
    return {value, value};
  }
  const Range range{parse(option, text.substr(0, dash)), parse(option, text.substr(dash + 1))};
  if (range.to < range.from)
    throw UsageError(option + ": \"" + std::string(text) + "\" ends before it begins");
  return range;
}

std::vector<std::string> Split(std::string_view text, char at) {
  std::vector<std::string> parts;
  for (;;) {
    const std::size_t end = text.find(at);
    parts.emplace_back(text.substr(0, end));
    if (end == std::string_view::npos) return parts;
    text.remove_prefix(end + 1);
  }
}

}  // namespace

double ParseReal(const std::string& option, std::string_view text) {
  const double value = Parse<double>(option, text, "a number");
  if (!std::isfinite(value))
    throw UsageError(option + ": \"" + std::string(text) + "\" is not a finite number");
  return value;
}

std::uint32_t ParseCount(const std::string& option, std::string_view text) {
  return Parse<std::uint32_t>(option, text, "a whole number from 0 to 4294967295");
}

std::uint64_t ParseLongCount(const std::string& option, std::string_view text) {
  return Parse<std::uint64_t>(option, text, "a whole number from 0 to 18446744073709551615");
}

bool HasTwoEnds(std::string_view text) { return DashIn(text) != std::string_view::npos; }

RealRange ParseRealRange(const std::string& option, std::string_view text) {
  return ParseRange<RealRange>(option, text, ParseReal);
}

CountRange ParseCountRange(const std::string& option, std::string_view text) {
  return ParseRange<CountRange>(option, text, ParseCount);
}

std::vector<CountRange> ParseCountList(const std::string& option, std::string_view text) {
  std::vector<CountRange> ranges;
  for (const std::string& part : Split(text, ',')) {
    const bool isOpen = part.size() > 1 && part.back() == '-';
    if (isOpen) {
      ranges.push_back({ParseCount(option, std::string_view(part).substr(0, part.size() - 1)),
                        std::numeric_limits<std::uint32_t>::max()});
    } else {
      ranges.push_back(ParseCountRange(option, part));
    }
  }
  return ranges;
}

double WithoutNaNSign(double value) {
  return std::isnan(value) ? std::numeric_limits<double>::quiet_NaN() : value;
}

std::vector<std::string> SplitColons(std::string_view text) { return Split(text, ':'); }

}  // namespace TslTool
