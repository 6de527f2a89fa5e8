#include <tool/io/TraceFile.h>

#include <fmt/format.h>

#include <tool/frame/InputError.h>
#include <tool/frame/Printable.h>
#include <tool/io/Fields.h>
#include <tool/io/LineReader.h>
#include <tool/io/TextDialect.h>
#include <tool/io/TextHead.h>
#include <tool/io/TextNumber.h>
#include <tool/io/TextRow.h>
#include <tool/io/TimeNames.h>
#include <tool/io/TraceAxis.h>
#include <algorithm>
#include <stdexcept>
#include <utility>

namespace TslTool {
namespace {

using Fields = std::vector<std::string_view>;

constexpr const char* kTell = "--columns tells which hold time and signal, as in --columns 1,2";

constexpr std::size_t kNone = static_cast<std::size_t>(-1);

std::string PlaceOf(std::uint64_t line) { return "line " + std::to_string(line); }

class TraceParser {
 public:
  TraceParser(ByteSource& source, const TraceChoice& choice)
      : file_(source.File()), lines_(source), choice_(choice) {}

  Traces Read(std::vector<std::string> warnings) {
    traces_.warnings = std::move(warnings);
    head_ = ReadHead(lines_, choice_.columns, [&](const Fields& names) { return NamedColumns(names); });
    EndAtSection();
    if (head_.sample.empty()) RefuseWords();
    JudgeColumns();
    for (const TextLine& line : head_.sample) TakeLine(line.text, line.number);
    for (std::string_view line; !hasEnded_ && lines_.Next(line);)
      if (!EndsBefore(line, lines_.Number())) TakeLine(line, lines_.Number());
    RequireClearNumbers();
    SettleAll();
    RequirePoints();
    return std::move(traces_);
  }

 private:
  // Below names, columns may hold words beside the numbers.
  std::optional<ColumnPair> NamedColumns(const Fields& names) const {
    if (choice_.columns.IsGiven()) return TslTool::FindColumns(names, choice_.columns);
    const bool areWords = std::ranges::none_of(
        names, [](std::string_view name) { return name.empty() || LooksLikeNumber(name); });
    const auto time = std::ranges::find_if(names, IsTimeName);
    if (names.size() < 2 || !areWords || time == names.end()) return std::nullopt;
    const auto place = static_cast<std::size_t>(time - names.begin());
    return ColumnPair{place, place == 0 ? std::size_t{1} : 0};
  }

  // Programs that write several tables into one text head each with "[NAME]".
  bool EndsBefore(std::string_view line, std::uint64_t number) {
    const std::string_view text = Trim(line);
    hasEnded_ = text.starts_with('[') && text.ends_with(']');
    if (hasEnded_)
      traces_.warnings.push_back(
          fmt::format("{} \"{}\" begins another section, which is left out with all behind it",
                      PlaceOf(number), Shown(text)));
    return hasEnded_;
  }

  void EndAtSection() {
    const auto end = std::ranges::find_if(
        head_.sample, [&](const TextLine& line) { return EndsBefore(line.text, line.number); });
    head_.sample.erase(end, head_.sample.end());
  }

  [[noreturn]] void RefuseWords() const {
    const std::string reason = "holds no line with a time and a signal";
    if (head_.words == 0) throw InputError(file_, "", reason);
    const bool mayBeTable =
        !choice_.columns.IsGiven() && head_.first.text.find_first_of("\t;,") != std::string::npos;
    throw InputError(
        file_, "",
        fmt::format("{}; line {} is \"{}\"{}", reason, head_.first.number, Shown(head_.first.text),
                    mayBeTable ? "; of a table, --columns tells which hold them" : ""));
  }

  const TextLine& FirstRow() const {
    const auto isRow = [](const TextLine& line) {
      const std::string_view content = WithoutComment(line.text);
      return !IsEmptyRow(content) && !IsComment(content, ' ');
    };
    return *std::ranges::find_if(head_.sample, isRow);
  }

  void JudgeColumns() {
    const TextLine& row = FirstRow();
    Fields fields;
    std::size_t most = 0;
    for (const char separator : {'\t', ';', ',', ' '}) {
      SplitFields(WithoutComment(row.text), separator, fields);
      most = std::max(most, fields.size());
    }
    if (most < 2)
      throw InputError(
          file_, PlaceOf(row.number),
          fmt::format("one column, \"{}\", where a time and a signal are expected", Shown(row.text)));
    dialect_ = JudgeDialect(file_, head_, {"1", "2"});
    FindNames();
    FindColumns(row);
    // The decimal mark is that of the columns which count.
    const std::string other = std::to_string(signals_.front() + 1);
    dialect_.decimal = JudgeDialect(file_, head_, {std::to_string(time_ + 1), other}).decimal;
    JudgeUnit();
    TellColumns();
  }

  // The last line above the numbers that has a name for each column.
  void FindNames() {
    Fields fields;
    for (auto line = head_.last.rbegin(); line != head_.last.rend() && names_.empty(); ++line) {
      std::string_view text = line->text;
      text.remove_prefix(std::min(text.find_first_not_of("#%; \t"), text.size()));
      SplitFields(text, dialect_.separator, fields);
      const bool isWords = std::ranges::none_of(fields, LooksLikeNumber);
      if (fields.size() >= dialect_.columns && isWords) names_.assign(fields.begin(), fields.end());
    }
    if (!names_.empty()) dialect_.columns = std::max(dialect_.columns, names_.size());
  }

  std::string NameOf(std::size_t column) const {
    return column < names_.size() ? names_[column] : fmt::format("column {}", column + 1);
  }

  Fields NameViews(const Fields& row) const {
    return names_.empty() ? row : Fields(names_.begin(), names_.end());
  }

  void FindColumns(const TextLine& row) {
    Fields fields;
    SplitFields(WithoutComment(row.text), dialect_.separator, fields);
    const Fields names = NameViews(fields);
    if (choice_.columns.IsGiven()) return TakeChoice(row, names);
    time_ = TimeColumn(names);
    if (time_ == kNone)
      throw InputError(file_, PlaceOf(row.number),
                       fmt::format("no column of times among {}: {}", ListColumns(names), kTell));
    AddSignals(fields);
    if (signals_.empty())
      throw InputError(file_, PlaceOf(row.number),
                       fmt::format("no column of a signal among {}: {}", ListColumns(names), kTell));
  }

  // Every column but that of times, and but those of words.
  void AddSignals(const Fields& row) {
    for (std::size_t i = 0; i < dialect_.columns; ++i) {
      if (i == time_) continue;
      if (i < row.size() && !row[i].empty() && !LooksLikeNumber(row[i])) {
        traces_.notes.push_back(
            fmt::format("column \"{}\" ({}) holds words, left out", Printable(NameOf(i)), i + 1));
      } else {
        AddSignal(i);
      }
    }
  }

  void TakeChoice(const TextLine& row, const Fields& names) {
    const auto pair = TslTool::FindColumns(names, choice_.columns);
    if (!pair || std::max(pair->mz, pair->amplitude) >= dialect_.columns)
      throw InputError(file_, PlaceOf(row.number),
                       fmt::format("the columns {} and {} are not found among {}", choice_.columns.mz,
                                   choice_.columns.amplitude, ListColumns(names)));
    time_ = pair->mz;
    AddSignal(pair->amplitude);
  }

  std::size_t TimeColumn(const Fields& names) const {
    if (names_.empty()) return dialect_.columns == 2 ? 0 : kNone;
    const auto found = std::ranges::find_if(names, IsTimeName);
    if (found != names.end()) return static_cast<std::size_t>(found - names.begin());
    return PlainName(names.front()) == "x" ? 0 : kNone;
  }

  void AddSignal(std::size_t column) {
    signals_.push_back(column);
    Trace& trace = traces_.all.emplace_back();
    trace.name = column < names_.size() && !names_[column].empty() ? names_[column]
                 : dialect_.columns == 2                           ? "signal"
                                                                   : fmt::format("column {}", column + 1);
    linesOf_.emplace_back();
  }

  void JudgeUnit() {
    const std::string name = time_ < names_.size() ? names_[time_] : "";
    const auto told = SecondsInName(name);
    if (choice_.secondsPerUnit || told) {
      unit_ = choice_.secondsPerUnit.value_or(told.value_or(1.0));
      if (told && *told != unit_)
        traces_.warnings.push_back(
            fmt::format("the times are in {} by \"{}\", and --time-unit {} overrules it",
                        UnitOfSeconds(*told), Printable(name), UnitOfSeconds(unit_)));
    } else {
      traces_.warnings.push_back(
          fmt::format("no unit of the times is told{}; taken as seconds, --time-unit min "
                      "takes them as minutes",
                      name.empty() ? "" : fmt::format(" by \"{}\"", Printable(name))));
    }
  }

  void TellColumns() {
    if (head_.multiplier != 1.0)
      traces_.notes.push_back(
          fmt::format("signals times {}, the multiplier that the file tells", head_.multiplier));
    if (names_.empty()) return;
    std::string text = fmt::format("time is column \"{}\" ({})", Printable(NameOf(time_)), time_ + 1);
    if (unit_ == 60.0) text += ", minutes";
    if (dialect_.decimal == ',') text += ", decimal comma";
    traces_.notes.push_back(text);
  }

  void TakeLine(std::string_view line, std::uint64_t number) {
    const std::string_view row = WithoutComment(line);
    if (IsEmptyRow(row) || IsComment(row, dialect_.separator)) return;
    try {
      TakeRow(row, number);
    } catch (const InputError&) {
      throw;
    } catch (const std::runtime_error& error) {
      throw InputError(file_, PlaceOf(number), error.what());
    }
  }

  void TakeRow(std::string_view row, std::uint64_t number) {
    SplitFields(row, dialect_.separator, fields_);
    if (fields_.size() > dialect_.columns || fields_.size() < 2 || fields_.size() <= time_)
      throw std::runtime_error(fmt::format("{} column{}, \"{}\", where {} are expected", fields_.size(),
                                           fields_.size() == 1 ? "" : "s", Shown(row), dialect_.columns));
    const double seconds = Number(fields_[time_], number) * unit_;
    for (std::size_t i = 0; i < signals_.size(); ++i) {
      if (signals_[i] >= fields_.size() || fields_[signals_[i]].empty()) continue;
      Add(i, seconds, Number(fields_[signals_[i]], number), number);
    }
  }

  void Add(std::size_t index, double seconds, double value, std::uint64_t line) {
    traces_.all[index].seconds.push_back(seconds);
    traces_.all[index].values.push_back(value * head_.multiplier);
    linesOf_[index].push_back(line);
  }

  // Traces of one column of times have most to tell in common, which is told once.
  void SettleAll() {
    const auto tell = [](std::vector<std::string>& told, std::vector<std::string>& news) {
      for (std::string& text : news)
        if (std::ranges::find(told, text) == told.end()) told.push_back(std::move(text));
    };
    for (std::size_t i = 0; i < traces_.all.size(); ++i) {
      SettledTimes settled = SettleTimes(file_, std::move(linesOf_[i]), unit_, traces_.all[i]);
      tell(traces_.notes, settled.notes);
      tell(traces_.warnings, settled.warnings);
    }
  }

  double Number(std::string_view field, std::uint64_t line) {
    const double value = ToNumber(field, dialect_.decimal);
    if (dialect_.decimal != ',' || field.find(',') == std::string_view::npos) return value;
    if (!HasUnclearComma(field)) isClear_ = true;
    if (unclear_.empty()) {
      unclear_ = field;
      unclearLine_ = line;
    }
    return value;
  }

  void RequireClearNumbers() const {
    if (isClear_ || unclear_.empty()) return;
    throw InputError(
        file_, PlaceOf(unclearLine_),
        fmt::format("\"{}\" has a decimal comma or a mark for thousands, and nothing in the file "
                    "tells which; write decimal points",
                    Printable(unclear_)));
  }

  void RequirePoints() const {
    for (const Trace& trace : traces_.all)
      if (trace.seconds.size() < 2)
        throw InputError(
            file_, "",
            fmt::format("\"{}\" has {}; a chromatogram has two points of different times at least",
                        Printable(trace.name), trace.seconds.empty() ? "no point" : "one point"));
  }

  const std::string& file_;
  LineReader lines_;
  const TraceChoice& choice_;
  TextHead head_;
  TextDialect dialect_;
  std::vector<std::string> names_;
  std::size_t time_ = kNone;
  std::vector<std::size_t> signals_;
  double unit_ = 1.0;
  Fields fields_;
  Traces traces_;
  std::vector<std::vector<std::uint64_t>> linesOf_;  // of the points of each trace
  bool hasEnded_ = false;
  bool isClear_ = false;
  std::string unclear_;
  std::uint64_t unclearLine_ = 0;
};

}  // namespace

Traces ReadTraces(ByteSource source, const TraceChoice& choice, std::vector<std::string> warnings) {
  return TraceParser(source, choice).Read(std::move(warnings));
}

}  // namespace TslTool
