#include <tool/io/TextFile.h>

#include <fmt/format.h>

#include <tool/frame/InputError.h>
#include <tool/frame/Printable.h>
#include <tool/io/LineReader.h>
#include <tool/io/TextAxis.h>
#include <tool/io/TextDialect.h>
#include <tool/io/TextNumber.h>
#include <tool/io/TextRow.h>

#include <algorithm>
#include <optional>
#include <stdexcept>
#include <utility>

namespace TslTool {

namespace {

class TextParser {
 public:
  TextParser(ByteSource& source, const ColumnChoice& choice)
      : file_(source.File()), lines_(source), choice_(choice) {}

  // Returns the number of columns.
  std::size_t Read(Scan& scan, std::vector<std::string>& warnings, std::vector<std::string>& notes) {
    scan.mz.clear();
    scan.amplitude.clear();
    head_ = ReadHead(lines_, choice_);
    if (head_.sample.empty()) RefuseWords();
    const TextDialect dialect = JudgeDialect(file_, head_, choice_);
    rows_.emplace(dialect);
    if (!head_.last.empty() && IsDamagedRow(head_.last.back().text, dialect))
      TakeLine(head_.last.back().text, head_.last.back().number, scan);
    for (const TextLine& line : head_.sample) TakeLine(line.text, line.number, scan);
    for (std::string_view line; lines_.Next(line);) TakeLine(line, lines_.Number(), scan);
    RequireClearNumbers();
    LeaveOutPrecursor(scan, warnings);
    if (scan.mz.empty()) throw InputError(file_, "", "holds no line with m/z and amplitude");
    if (const std::string guess = DescribeGuess(dialect); !guess.empty()) warnings.push_back(guess);
    for (std::string& warning : SettleTextAxis(file_, lineOf_, dialect.pair, scan))
      warnings.push_back(std::move(warning));
    if (const std::string note = DescribeDialect(dialect, head_); !note.empty()) notes.push_back(note);
    if (head_.multiplier != 1.0)
      notes.push_back(
          fmt::format("amplitudes times {}, the multiplier that the file tells", head_.multiplier));
    return dialect.columns;
  }

 private:
  static std::string PlaceOf(std::uint64_t line) { return "line " + std::to_string(line); }

  [[noreturn]] void RefuseWords() const {
    const std::string reason = "holds no line with m/z and amplitude";
    if (head_.words == 0) throw InputError(file_, "", reason);
    const bool mayBeTable = !choice_.IsGiven() && head_.first.text.find_first_of("\t;,") != std::string::npos;
    throw InputError(
        file_, "",
        fmt::format("{}; line {} is \"{}\"{}", reason, head_.first.number, Shown(head_.first.text),
                    mayBeTable ? "; of a table, --columns tells which hold them" : ""));
  }

  void TakeLine(std::string_view line, std::uint64_t number, Scan& scan) {
    try {
      const auto point = rows_->Read(WithoutComment(line));
      if (!point) return;
      scan.mz.push_back(point->mz);
      scan.amplitude.push_back(point->amplitude * head_.multiplier);
      lineOf_.push_back(number);
    } catch (const std::runtime_error& error) {
      throw InputError(file_, PlaceOf(number), IsHeadAgain(line) ? NewHead(line) : error.what());
    }
    if (unclearLine_ == 0 && !rows_->UnclearNumber().empty()) unclearLine_ = number;
  }

  // As in a text that has several spectra, each below words of its own.
  bool IsHeadAgain(std::string_view line) const {
    const std::string_view word = FirstWord(line);
    const auto beginsSo = [&](const TextLine& words) { return FirstWord(words.text) == word; };
    return !word.empty() && !LooksLikeNumber(word) &&
           (beginsSo(head_.first) || std::ranges::any_of(head_.last, beginsSo));
  }

  static std::string_view FirstWord(std::string_view line) {
    line.remove_prefix(std::min(line.find_first_not_of(" \t\""), line.size()));
    return line.substr(0, line.find_first_of(" \t,;\""));
  }

  static std::string NewHead(std::string_view line) {
    return fmt::format(
        "\"{}\" begins as a line before the numbers does; if it begins another spectrum, write each to a "
        "file "
        "of its own",
        Shown(line));
  }

  void RequireClearNumbers() const {
    const std::string_view unclear = rows_->UnclearNumber();
    if (unclear.empty()) return;
    throw InputError(
        file_, PlaceOf(unclearLine_),
        fmt::format("\"{}\" has a decimal comma or a mark for thousands, and nothing in the file "
                    "tells which; write decimal points",
                    Printable(unclear)));
  }

  void LeaveOutPrecursor(Scan& scan, std::vector<std::string>& warnings) {
    if (!file_.ends_with(".dta") || scan.mz.empty()) return;
    warnings.push_back(PlaceOf(lineOf_.front()) + " is the precursor line of a .dta file, left out");
    scan.mz.erase(scan.mz.begin());
    scan.amplitude.erase(scan.amplitude.begin());
    lineOf_.erase(lineOf_.begin());
  }

  const std::string& file_;
  LineReader lines_;
  const ColumnChoice& choice_;
  TextHead head_;
  std::optional<RowReader> rows_;
  std::uint64_t unclearLine_ = 0;
  std::vector<std::uint64_t> lineOf_;
};

}  // namespace

TextFile::TextFile(ByteSource source, std::vector<std::string> warnings)
    : source_(std::move(source)), warnings_(std::move(warnings)) {}

bool TextFile::Next(Scan& scan) {
  if (std::exchange(spent_, true)) return false;
  Scan head;
  head.number = 1;
  if (!Filter().Wants(head)) return false;
  scan.number = 1;
  scan.id.clear();
  scan.rtSeconds = head.rtSeconds;
  scan.msLevel = head.msLevel;
  scan.representation = head.representation;
  const std::size_t columns = TextParser(source_, Filter().columns).Read(scan, warnings_, notes_);
  if (columns > 2) format_ = fmt::format("text with {} columns", columns);
  return true;
}

}  // namespace TslTool
