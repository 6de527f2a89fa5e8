#include <tool/io/TextHead.h>

#include <tool/frame/InputError.h>
#include <tool/io/Fields.h>
#include <tool/io/TextNumber.h>

#include <algorithm>
#include <optional>
#include <utility>

namespace TslTool {

namespace {

constexpr std::size_t kSampleLines = 1000;
constexpr std::size_t kSampleBytes = std::size_t{1} << 20;
// Between blanks, prose has names and numbers too.
constexpr std::string_view kCellSeparators = "\t;,";
constexpr std::size_t kLastLines = 3;
constexpr std::uint64_t kMostLines = 100'000;

bool IsControl(char c) {
  return static_cast<unsigned char>(c) < 0x20 && kBlanks.find(c) == std::string_view::npos;
}

bool IsNumberOfAnyKind(std::string_view text) { return IsNumber(text, '.') || IsNumber(text, ','); }

// Whatever the separators are.
bool HasOnlyNumbers(std::string_view line) {
  constexpr std::string_view kBetween = " \t\v\f,;\"";
  bool isAny = false;
  for (std::size_t at = line.find_first_not_of(kBetween); at != std::string_view::npos;) {
    const std::size_t end = std::min(line.find_first_of(kBetween, at), line.size());
    const std::string_view field = line.substr(at, end - at);
    if (!LooksLikeNumber(field)) return false;
    isAny = isAny || IsNumberOfAnyKind(field);
    at = line.find_first_not_of(kBetween, end);
  }
  return isAny;
}

// A separator and the places of two columns, if the line has them.
struct Table {
  char separator = ' ';
  ColumnPair pair;
};

// How many of the two columns have a number.
int CountNumbers(std::string_view line, const Table& table) {
  std::vector<std::string_view> fields;
  SplitFields(line, table.separator, fields);
  const auto isNumber = [&](std::size_t i) { return i < fields.size() && IsNumberOfAnyKind(fields[i]); };
  return isNumber(table.pair.mz) + isNumber(table.pair.amplitude);
}

class HeadReader {
 public:
  HeadReader(LineReader& lines, const ColumnChoice& choice, const FindNames& find)
      : lines_(lines), choice_(choice), find_(find) {}

  TextHead Read() {
    for (std::string_view line; lines_.Next(line);) {
      if (IsEmptyRow(line)) continue;
      if (IsStart(line)) {
        TakeSample(line);
        break;
      }
      TakeWords(line);
    }
    return std::move(head_);
  }

 private:
  bool IsStart(std::string_view line) const {
    if (IsComment(line, ' ')) return false;
    const std::string_view content = WithoutComment(line);
    if (HasOnlyNumbers(content)) return true;
    if (named_ && CountNumbers(content, *named_) > 0) return true;
    if (!choice_.IsByNumber()) return false;
    const ColumnPair chosen{ColumnNumber(choice_.mz) - 1, ColumnNumber(choice_.amplitude) - 1};
    return std::ranges::any_of(kCellSeparators, [&](char separator) {
      return CountNumbers(content, {separator, chosen}) == 2;
    });
  }

  void TakeWords(std::string_view line) {
    if (std::ranges::any_of(line, IsControl))
      throw InputError(lines_.File(), lines_.Place(), "holds bytes that no text has");
    if (lines_.Number() > kMostLines)
      throw InputError(lines_.File(), lines_.Place(), "no line with m/z and amplitude up to here");
    if (!IsComment(line, ' ') && head_.words++ == 0) head_.first = {lines_.Number(), std::string(line)};
    if (head_.last.size() == kLastLines) head_.last.erase(head_.last.begin());
    head_.last.push_back({lines_.Number(), std::string(line)});
    NoteNames(line);
    NoteMultiplier(line);
  }

  // Amplitudes may be written as whole multiples of it.
  void NoteMultiplier(std::string_view line) {
    constexpr std::string_view kName = "Intensity Multiplier";
    if (!line.starts_with(kName)) return;
    line.remove_prefix(std::min(line.find_first_not_of(" \t,;:=", kName.size()), line.size()));
    const std::string_view value = Trim(line);
    for (const char decimal : {'.', ','})
      if (IsNumber(value, decimal)) head_.multiplier = ToNumber(value, decimal);
  }

  // Names are good for the next lines only.
  void NoteNames(std::string_view line) {
    if (named_ && ++namedAge_ == kLastLines) named_.reset();
    if (choice_.IsByNumber()) return;
    std::vector<std::string_view> fields;
    for (const char separator : kCellSeparators) {
      SplitFields(line, separator, fields);
      const auto pair = find_(fields);
      if (!pair) continue;
      named_ = Table{separator, *pair};
      namedAge_ = 0;
      return;
    }
  }

  void TakeSample(std::string_view line) {
    std::size_t bytes = 0;
    do {
      head_.sample.push_back({lines_.Number(), std::string(line)});
      bytes += line.size();
    } while (head_.sample.size() < kSampleLines && bytes < kSampleBytes && lines_.Next(line));
  }

  LineReader& lines_;
  const ColumnChoice& choice_;
  const FindNames& find_;
  TextHead head_;
  std::optional<Table> named_;
  std::size_t namedAge_ = 0;
};

}  // namespace

bool IsComment(std::string_view line, char separator) {
  const std::size_t at = line.find_first_not_of(kBlanks);
  if (at == std::string_view::npos) return false;
  const char c = line[at];
  return c == '#' || c == '%' || (c == ';' && separator != ';') || line.substr(at).starts_with("//");
}

std::string_view WithoutComment(std::string_view line) { return line.substr(0, line.find('#')); }

TextHead ReadHead(LineReader& lines, const ColumnChoice& choice, const FindNames& find) {
  return HeadReader(lines, choice, find).Read();
}

TextHead ReadHead(LineReader& lines, const ColumnChoice& choice) {
  return ReadHead(lines, choice,
                  [&](const std::vector<std::string_view>& names) { return FindColumns(names, choice); });
}

}  // namespace TslTool
