#include <tool/io/TimeNames.h>

#include <tool/io/Trace.h>
#include <cctype>

namespace TslTool {
namespace {

// As letters, small, without what stands in brackets.
constexpr std::string_view kTimeWords =
    " t rt tr time times zeit zeiten retentionszeit temps tiempo tempo tijd czas rtime retentiontime rettime "
    "elapsedtime timestamp ";

}  // namespace

std::string PlainName(std::string_view name) {
  std::string plain;
  for (const char c : name.substr(0, name.find_first_of("([/")))
    if (std::isalnum(static_cast<unsigned char>(c))) plain += static_cast<char>(std::tolower(c));
  return plain;
}

bool IsTimeName(std::string_view name) {
  const std::string plain = PlainName(name);
  if (plain.empty()) return false;
  if (kTimeWords.find(" " + plain + " ") != std::string_view::npos || SecondsInWord(plain)) return true;
  // "rt_s", "time_min": a word of time and then a unit.
  const std::size_t cut = name.find_last_of("_ .-");
  return cut != std::string_view::npos && SecondsInWord(name.substr(cut + 1)) &&
         kTimeWords.find(" " + PlainName(name.substr(0, cut)) + " ") != std::string_view::npos;
}

}  // namespace TslTool
