#include <tool/io/Fields.h>

namespace TslTool {

namespace {

// Where the first field may end: behind the quotes that it stands in.
std::size_t QuotedLength(std::string_view text) {
  const std::size_t begin = text.find_first_not_of(kBlanks);
  if (begin == std::string_view::npos || text[begin] != '"') return 0;
  const std::size_t end = text.find('"', begin + 1);
  return end == std::string_view::npos ? 0 : end + 1;
}

std::string_view Unquoted(std::string_view field) {
  field = Trim(field);
  const bool isQuoted = field.size() > 1 && field.front() == '"' && field.back() == '"';
  return isQuoted ? Trim(field.substr(1, field.size() - 2)) : field;
}

}  // namespace

std::string_view Trim(std::string_view text) {
  const std::size_t begin = text.find_first_not_of(kBlanks);
  if (begin == std::string_view::npos) return {};
  return text.substr(begin, text.find_last_not_of(kBlanks) - begin + 1);
}

bool IsEmptyRow(std::string_view line) {
  return line.find_first_not_of(" \t\v\f,;\"") == std::string_view::npos;
}

void SplitFields(std::string_view line, char separator, std::vector<std::string_view>& fields) {
  fields.clear();
  const bool isBlank = separator == ' ';
  std::string_view rest = isBlank ? Trim(line) : line;
  for (;;) {
    const std::size_t from = QuotedLength(rest);
    const std::size_t end = isBlank ? rest.find_first_of(kBlanks, from) : rest.find(separator, from);
    fields.push_back(Unquoted(rest.substr(0, end)));
    if (end == std::string_view::npos) break;
    rest = isBlank ? Trim(rest.substr(end)) : rest.substr(end + 1);
  }
  while (!fields.empty() && fields.back().empty()) fields.pop_back();
}

}  // namespace TslTool
