#include <tool/io/TextDialect.h>

#include <fmt/format.h>

#include <tool/frame/InputError.h>
#include <tool/frame/Printable.h>
#include <tool/io/Fields.h>
#include <tool/io/TextNumber.h>
#include <tool/io/TextRow.h>
#include <tool/io/TimeNames.h>

#include <algorithm>
#include <array>
#include <map>

namespace TslTool {

namespace {

// In the order in which one of two that are as frequent is taken.
constexpr std::string_view kSeparators = "\t;, ";

using Fields = std::vector<std::string_view>;

Fields FieldsOf(std::string_view line, char separator) {
  Fields fields;
  SplitFields(line, separator, fields);
  return fields;
}

std::string PlaceOf(const TextLine& line) { return "line " + std::to_string(line.number); }

// The line with "0" for what stands in quotes, so that no separator in it counts.
std::string WithoutQuoted(std::string_view line) {
  std::string bare;
  for (std::size_t at = 0; at < line.size();) {
    const std::size_t end = line[at] == '"' ? line.find('"', at + 1) : std::string_view::npos;
    bare.push_back(end == std::string_view::npos ? line[at] : '0');
    at = end == std::string_view::npos ? at + 1 : end + 1;
  }
  return bare;
}

// Blanks, if the commas are those of numbers between them.
char SeparatorOf(std::string_view line) {
  const std::string bare = WithoutQuoted(line);
  std::string_view text = Trim(bare);
  text = text.substr(0, text.find_last_not_of(" \t,;") + 1);
  for (const char separator : {'\t', ';'}) {
    if (text.find(separator) != std::string_view::npos) return separator;
  }
  if (text.find(',') == std::string_view::npos) return ' ';
  const Fields fields = FieldsOf(text, ' ');
  const auto isNumber = [](std::string_view field) {
    return LooksLikeNumber(field) && field.front() != ',' && field.back() != ',';
  };
  return fields.size() > 1 && std::ranges::all_of(fields, isNumber) ? ' ' : ',';
}

// The rows without empty lines and comments.
std::vector<TextLine> RowsOf(const std::vector<TextLine>& sample, char separator) {
  std::vector<TextLine> rows;
  for (const TextLine& line : sample) {
    const std::string_view content = WithoutComment(line.text);
    if (!IsEmptyRow(content) && !IsComment(content, separator))
      rows.push_back({line.number, std::string(content)});
  }
  return rows;
}

char MostFrequentSeparator(const std::vector<TextLine>& rows) {
  std::array<std::size_t, kSeparators.size()> counts{};
  for (const TextLine& row : rows) ++counts[kSeparators.find(SeparatorOf(row.text))];
  return kSeparators[static_cast<std::size_t>(std::ranges::max_element(counts) - counts.begin())];
}

// Of the columns in a row. A row of one column is a damaged one, unless all are.
std::size_t MostFrequentCount(const std::vector<TextLine>& rows, char separator) {
  std::map<std::size_t, std::size_t> rowsOf;
  for (const TextLine& row : rows) ++rowsOf[FieldsOf(row.text, separator).size()];
  if (rowsOf.size() > 1) rowsOf.erase(1);
  return std::ranges::max_element(rowsOf, {}, [](const auto& entry) { return entry.second; })->first;
}

char MostFrequentMark(const std::vector<TextLine>& rows, const TextDialect& dialect) {
  std::size_t points = 0;
  std::size_t commas = 0;
  for (const TextLine& row : rows) {
    const Fields fields = FieldsOf(row.text, dialect.separator);
    for (const std::size_t i : {dialect.pair.mz, dialect.pair.amplitude}) {
      if (i >= fields.size()) continue;
      points += fields[i].find('.') != std::string_view::npos && IsNumber(fields[i], '.');
      commas += fields[i].find(',') != std::string_view::npos && IsNumber(fields[i], ',');
    }
  }
  return commas > points ? ',' : '.';
}

bool IsMark(std::string_view name) { return name.find_first_not_of("#%;/: ") == std::string_view::npos; }

// Between blanks, "(min)" belongs to the name before it.
Fields WithUnits(const Fields& words) {
  Fields names;
  for (const std::string_view word : words) {
    const bool isUnit = !names.empty() && word.size() > 1 && (word.front() == '(' || word.front() == '[');
    if (isUnit) {
      const char* begin = names.back().data();
      names.back() = std::string_view(begin, static_cast<std::size_t>(word.data() + word.size() - begin));
    } else {
      names.push_back(word);
    }
  }
  return names;
}

// The names in a line above rows of so many columns; none if it has another number of them. Empty cells at
// the end of all rows may have names.
Fields NamesIn(std::string_view line, char separator, const TextDialect& dialect) {
  Fields names = FieldsOf(line, separator);
  if (separator == ' ') names = WithUnits(names);
  const bool isMarked = names.size() == dialect.columns + 1 && IsMark(names.front());
  if (isMarked) names.erase(names.begin());
  const bool mayBeMore = separator == dialect.separator && separator != ' ';
  const bool fits =
      names.size() == dialect.columns || (mayBeMore && !isMarked && names.size() > dialect.columns);
  return fits ? names : Fields();
}

void Take(TextDialect& dialect, const ColumnPair& pair, const Fields& names) {
  dialect.pair = pair;
  dialect.columns = std::max(dialect.columns, names.size());
  dialect.scan = FindScanColumn(names);
  const auto time = std::ranges::find_if(names, IsTimeName);
  const auto place = static_cast<std::size_t>(time - names.begin());
  if (time != names.end() && place != pair.mz && place != pair.amplitude) dialect.time = place;
  if (std::max(pair.mz, pair.amplitude) >= names.size()) return;
  dialect.mzName = names[pair.mz];
  dialect.amplitudeName = names[pair.amplitude];
}

class ColumnFinder {
 public:
  ColumnFinder(const std::string& file, const TextHead& head, const TextLine& firstRow,
               const ColumnChoice& choice)
      : file_(file), head_(head), firstRow_(firstRow), choice_(choice) {}

  void Find(TextDialect& dialect) const {
    if (choice_.IsByNumber()) {
      TakeNumbers(dialect);
    } else if (!TakeNames(dialect)) {
      if (choice_.IsGiven()) RefuseChoice(dialect);
      RefuseOtherAxis(dialect);
      if (dialect.columns > 2) Refuse(dialect, FieldsListed(dialect));
      TakeTwo(dialect);
    }
  }

 private:
  void TakeNumbers(TextDialect& dialect) const {
    const auto pair = FindColumns({}, choice_);
    const std::size_t last = std::max(pair->mz, pair->amplitude) + 1;
    if (last > dialect.columns) {
      throw InputError(file_, PlaceOf(firstRow_),
                       fmt::format("there is no column {}: {}", last, FieldsListed(dialect)));
    }
    dialect.pair = *pair;
  }

  // Hands the names in the lines above the numbers to `use`, the last line first, cut at each separator,
  // until it takes one.
  template <class Use>
  bool AnyNames(const TextDialect& dialect, Use use) const {
    for (auto line = head_.last.rbegin(); line != head_.last.rend(); ++line) {
      for (const char separator : {dialect.separator, '\t', ';', ',', ' '}) {
        const Fields names = NamesIn(line->text, separator, dialect);
        if (!names.empty() && use(names)) return true;
      }
    }
    return false;
  }

  bool TakeNames(TextDialect& dialect) const {
    return AnyNames(dialect, [&](const Fields& names) {
      const auto pair = FindColumns(names, choice_);
      if (pair) Take(dialect, *pair, names);
      return pair.has_value();
    });
  }

  // Prose has such words too, but no amplitude beside them.
  void RefuseOtherAxis(const TextDialect& dialect) const {
    AnyNames(dialect, [&](const Fields& names) {
      const bool isOther = names.size() == 2 ? IsNoMz(names.front()) && FindColumnsOfTwo(names)
                                             : std::ranges::any_of(names, IsNoMz) &&
                                                   std::ranges::any_of(names, IsAmplitudeName);
      if (isOther && std::ranges::any_of(names, IsTimeName))
        throw InputError(
            file_, PlaceOf(firstRow_),
            fmt::format("{}: a table over time is no spectrum; 'tslbl chrom' reads it", ListColumns(names)));
      if (isOther) Refuse(dialect, ListColumns(names));
      return false;
    });
  }

  // One known name tells both columns; if it turns them round it must be more than a word between blanks.
  void TakeTwo(TextDialect& dialect) const {
    const Fields names = LastNames(dialect);
    if (names.size() != 2 || std::ranges::any_of(names, LooksLikeNumber)) return;
    const ColumnPair pair = FindColumnsOfTwo(names).value_or(ColumnPair());
    if (pair.mz != 0 || IsNoMz(names.front())) Refuse(dialect, ListColumns(names));
    Take(dialect, pair, names);
    dialect.isMzGuessed = !IsMzName(names[pair.mz]);
    dialect.isAmplitudeGuessed = !IsAmplitudeName(names[pair.amplitude]);
  }

  Fields LastNames(const TextDialect& dialect) const {
    if (head_.last.empty() || dialect.separator == ' ' || IsComment(head_.last.back().text, ' ')) return {};
    return NamesIn(head_.last.back().text, dialect.separator, dialect);
  }

  std::string FieldsListed(const TextDialect& dialect) const {
    const Fields names = LastNames(dialect);
    return ListColumns(names.empty() ? FieldsOf(firstRow_.text, dialect.separator) : names);
  }

  [[noreturn]] void RefuseChoice(const TextDialect& dialect) const {
    throw InputError(file_, PlaceOf(firstRow_),
                     fmt::format("the columns {} and {} are not found among {}", choice_.mz,
                                 choice_.amplitude, FieldsListed(dialect)));
  }

  [[noreturn]] void Refuse(const TextDialect& dialect, const std::string& columns) const {
    const bool mayBeDecimal = dialect.columns > 2 && dialect.separator == ',' &&
                              firstRow_.text.find_first_not_of("0123456789, ") == std::string::npos;
    throw InputError(
        file_, PlaceOf(firstRow_),
        fmt::format("{} columns, {}: tell which hold m/z and amplitude, as in --columns {}{}",
                    dialect.columns, columns, dialect.columns == 2 ? "1,2" : "2,3",
                    mayBeDecimal ? "; if the commas are decimal, separate the columns with semicolons" : ""));
  }

  const std::string& file_;
  const TextHead& head_;
  const TextLine& firstRow_;
  const ColumnChoice& choice_;
};

// Whether m/z goes on from pair to pair in a row, and from row to row.
bool HoldsPairs(const std::vector<TextLine>& rows, const TextDialect& dialect) {
  constexpr std::size_t kRows = 10;
  if (rows.size() < 2 || dialect.columns < 4 || dialect.columns % 2 != 0) return false;
  double last = -1.0;
  for (std::size_t i = 0; i < std::min(kRows, rows.size()); ++i) {
    const Fields fields = FieldsOf(rows[i].text, dialect.separator);
    if (fields.size() % 2 != 0) return false;
    for (std::size_t k = 0; k < fields.size(); k += 2) {
      const char mark = IsNumber(fields[k], '.') ? '.' : ',';
      if (!IsNumber(fields[k], mark) || !(ToNumber(fields[k], mark) > last)) return false;
      last = ToNumber(fields[k], mark);
    }
  }
  return true;
}

std::string NameOf(char separator) {
  if (separator == '\t') return "tab";
  if (separator == ';') return "semicolon";
  return separator == ',' ? "comma" : "blank";
}

std::string ColumnTold(const std::string& name, std::size_t index) {
  return name.empty() ? std::to_string(index + 1) : fmt::format("\"{}\" ({})", Printable(name), index + 1);
}

std::string MzTold(const TextDialect& dialect) { return ColumnTold(dialect.mzName, dialect.pair.mz); }

std::string AmplitudeTold(const TextDialect& dialect) {
  return ColumnTold(dialect.amplitudeName, dialect.pair.amplitude);
}

std::string ColumnsTold(const TextDialect& dialect) {
  return fmt::format("columns {} and {}", MzTold(dialect), AmplitudeTold(dialect));
}

}  // namespace

TextDialect JudgeDialect(const std::string& file, const TextHead& head, const ColumnChoice& choice) {
  TextDialect dialect;
  dialect.separator = MostFrequentSeparator(RowsOf(head.sample, ' '));
  const std::vector<TextLine> rows = RowsOf(head.sample, dialect.separator);
  dialect.isPlain = std::ranges::all_of(rows, [](const TextLine& row) { return IsPlainRow(row.text); });
  if (!dialect.isPlain) dialect.columns = MostFrequentCount(rows, dialect.separator);
  if (dialect.columns < 2) throw InputError(file, PlaceOf(rows.front()), OneColumn(rows.front().text));
  if (HoldsPairs(rows, dialect))
    throw InputError(
        file, PlaceOf(rows.front()),
        fmt::format("{} pairs of m/z and amplitude in a line; write one a line", dialect.columns / 2));
  ColumnFinder(file, head, rows.front(), choice).Find(dialect);
  if (dialect.columns > 2) dialect.isPlain = false;
  if (!dialect.isPlain) dialect.decimal = MostFrequentMark(rows, dialect);
  return dialect;
}

std::string DescribeDialect(const TextDialect& dialect, const TextHead& head) {
  const bool isUsual = dialect.columns == 2 && dialect.pair.mz == 0 && dialect.decimal == '.' &&
                       dialect.separator != ';' && head.words == 0 && dialect.mzName.empty();
  if (isUsual) return "";
  return fmt::format(
      "{}, {} separated{}{}", ColumnsTold(dialect), NameOf(dialect.separator),
      dialect.decimal == ',' ? ", decimal comma" : "",
      head.words == 0 ? "" : fmt::format(", {} line{} of head", head.words, head.words == 1 ? "" : "s"));
}

std::string DescribeGuess(const TextDialect& dialect) {
  std::string taken;
  if (dialect.isMzGuessed && dialect.isAmplitudeGuessed) {
    taken = ColumnsTold(dialect) + " taken for m/z and amplitude, which their names do not tell";
  } else if (dialect.isMzGuessed) {
    taken = fmt::format("column {} taken for m/z, which its name does not tell", MzTold(dialect));
  } else if (dialect.isAmplitudeGuessed) {
    taken = fmt::format("column {} taken for the amplitude, which its name does not tell",
                        AmplitudeTold(dialect));
  }
  return taken.empty() ? "" : taken + "; --columns 1,2 confirms it";
}

}  // namespace TslTool
