#include <tool/io/Trace.h>

#include <algorithm>
#include <iterator>

namespace TslTool {
namespace {

struct Unit {
  double seconds;
  std::string_view words;  // between blanks
};
constexpr Unit kUnits[] = {
    {1.0, " s sec secs second seconds sekunde sekunden seconde secondes "},
    {60.0, " min mins minute minutes minuten "},
    {1e-3, " ms msec millisecond milliseconds millisekunden "},
    {3600.0, " h hr hrs hour hours stunde stunden "},
};

char Small(char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c | 0x20) : c; }
bool IsLetter(char c) { return (c >= 'a' && c <= 'z') || static_cast<unsigned char>(c) >= 0x80; }

std::string InSmall(std::string_view text) {
  std::string small(text);
  std::ranges::transform(small, small.begin(), Small);
  return small;
}

}  // namespace

std::string_view UnitOfSeconds(double seconds) {
  const auto unit = std::ranges::find(kUnits, seconds, &Unit::seconds);
  if (unit == std::end(kUnits)) return {};
  const std::string_view words = unit->words.substr(1);
  return words.substr(0, words.find(' '));
}

std::optional<double> SecondsInWord(std::string_view word) {
  if (word.empty()) return std::nullopt;
  const std::string key = " " + InSmall(word) + " ";
  for (const Unit& unit : kUnits)
    if (unit.words.find(key) != std::string_view::npos) return unit.seconds;
  return std::nullopt;
}

std::optional<double> SecondsInName(std::string_view name) {
  const std::string text = InSmall(name);
  for (auto at = text.begin(); at != text.end();) {
    const auto begin = std::find_if(at, text.end(), IsLetter);
    at = std::find_if_not(begin, text.end(), IsLetter);
    if (const auto seconds = SecondsInWord(std::string_view(begin, at))) return seconds;
  }
  return std::nullopt;
}

}  // namespace TslTool
