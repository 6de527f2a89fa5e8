#include <tool/io/OtherAxis.h>

#include <tool/frame/Utf8.h>

#include <algorithm>
#include <iterator>
#include <string>
#include <utility>

namespace TslTool {

namespace {

// Stand anywhere in a name, as in "Retentionszeit" and "Drift time (ms)".
constexpr std::string_view kParts[] = {"time",         "zeit",
                                       "temps",        "tiempo",
                                       "tempo",        "tijd",
                                       "czas",         "\u0440\u0435\u043c\u044f",
                                       "\u65f6\u95f4", "\u6642\u9593",
                                       "retention",    "tention",
                                       "minute",       "sekunde",
                                       "wavelength",   "wellenl",
                                       "longueur",     "longitud",
                                       "lambda",       "wavenumber",
                                       "wellenzahl",   "raman",
                                       "frequen",      "fr\u00e9quen",
                                       "temperatur",   "temp\u00e9rature",
                                       "volum",        "voltage",
                                       "spannung",     "potential",
                                       "mobility",     "drift",
                                       "theta"};

// A word of a name, or what is left of it without its brackets.
constexpr std::string_view kWords =
    " t rt tr tof scan scans scannumber scanno index second seconds frequency angle pressure ";

constexpr std::string_view kUnits =
    " min mins minutes s sec secs seconds ms msec us usec ns h hr hrs hours nm um cm1 1cm ml ul degc c k f "
    "deg v mv kv ev kev hz khz mhz ghz pa kpa mbar bar torr vscm2 ";

// What stands for what; Latin-1 has some as single bytes.
constexpr std::pair<std::string_view, std::string_view> kSigns[] = {
    {"\u00b5", "u"},      {"\u03bc", "u"}, {"\u00b0", "deg"}, {"\u00ba", "deg"}, {"\u03b8", "theta"},
    {"\u03bb", "lambda"}, {"\u207b", "-"}, {"\u00b9", "1"},   {"\xb5", "u"},     {"\xb0", "deg"}};

bool IsOfWord(char c) {
  return (c >= 'a' && c <= 'z') || (c >= '0' && c <= '9') || static_cast<unsigned char>(c) >= 0x80;
}

// Small letters, and letters for signs.
std::string Spelled(std::string_view name) {
  std::string spelled;
  while (!name.empty()) {
    const std::string_view character = name.substr(0, FirstCharacter(name).bytes);
    const auto* sign =
        std::ranges::find(kSigns, character, &std::pair<std::string_view, std::string_view>::first);
    spelled += sign != std::end(kSigns) ? sign->second : character;
    name.remove_prefix(character.size());
  }
  std::ranges::transform(spelled, spelled.begin(),
                         [](char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c | 0x20) : c; });
  return spelled;
}

// Without what is neither letter nor digit: "cm1" for "cm-1".
std::string Letters(std::string_view text) {
  std::string letters;
  std::ranges::copy_if(text, std::back_inserter(letters), IsOfWord);
  return letters;
}

bool IsAmong(const std::string& word, std::string_view row) {
  return !word.empty() && row.find(" " + word + " ") != std::string_view::npos;
}

std::string_view Bracketed(std::string_view text) {
  const std::size_t begin = text.find_first_of("([");
  if (begin == std::string_view::npos) return {};
  const std::size_t end = text.find_first_of(")]", begin);
  return text.substr(begin + 1, end == std::string_view::npos ? end : end - begin - 1);
}

std::string_view BehindSlash(std::string_view text) {
  const std::size_t slash = text.rfind('/');
  return slash == std::string_view::npos ? std::string_view() : text.substr(slash + 1);
}

bool HasUnit(std::string_view text) {
  for (const std::string_view part : {text, Bracketed(text), BehindSlash(text)})
    if (IsAmong(Letters(part), kUnits)) return true;
  return false;
}

bool HasWord(std::string_view text) {
  if (IsAmong(Letters(text.substr(0, text.find_first_of("(["))), kWords)) return true;
  for (auto at = text.begin(); at != text.end();) {
    const auto begin = std::find_if(at, text.end(), IsOfWord);
    at = std::find_if_not(begin, text.end(), IsOfWord);
    if (IsAmong(std::string(begin, at), kWords)) return true;
  }
  return false;
}

}  // namespace

bool IsOtherAxis(std::string_view name) {
  const std::string text = Spelled(name);
  const auto holds = [&](std::string_view part) { return text.find(part) != std::string::npos; };
  return std::ranges::any_of(kParts, holds) || HasUnit(text) || HasWord(text);
}

}  // namespace TslTool
