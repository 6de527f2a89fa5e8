#include <tool/io/TextFile.h>

#include <tool/frame/InputError.h>
#include <tool/frame/Printable.h>
#include <tool/io/Axis.h>
#include <tool/io/LineReader.h>

#include <algorithm>
#include <charconv>
#include <cmath>
#include <filesystem>
#include <utility>

namespace TslTool {

namespace {

constexpr std::string_view kBlanks = " \t\v\f";

std::string_view Trim(std::string_view text) {
  const std::size_t begin = text.find_first_not_of(kBlanks);
  if (begin == std::string_view::npos) return {};
  return text.substr(begin, text.find_last_not_of(kBlanks) - begin + 1);
}

// Takes one field and the separator behind it.
std::string_view TakeField(std::string_view& rest) {
  const std::size_t end = std::min(rest.find_first_of(" \t\v\f,;"), rest.size());
  const std::string_view field = rest.substr(0, end);
  rest = Trim(rest.substr(end));
  if (!rest.empty() && (rest.front() == ',' || rest.front() == ';')) rest = Trim(rest.substr(1));
  return field;
}

struct Columns {
  std::string_view first, second;
  std::size_t count = 0;
};

Columns Split(std::string_view line) {
  Columns columns;
  while (!line.empty()) {
    const std::string_view field = TakeField(line);
    if (columns.count == 0) columns.first = field;
    if (columns.count == 1) columns.second = field;
    ++columns.count;
  }
  return columns;
}

bool IsLetter(char c) { return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z'); }

bool NamesNoNumber(std::string_view word) {
  std::string lower;
  for (const char c : word.substr(0, 8)) {
    if (IsLetter(c)) lower.push_back(static_cast<char>(c | 0x20));
  }
  return lower == "nan" || lower == "inf" || lower == "infinity";
}

// Words such as `m/z`, `"Intensity"` or `(counts)`; never what might be a damaged number.
bool IsHeader(std::string_view line) {
  while (!line.empty()) {
    const std::string_view word = TakeField(line);
    const std::size_t at = word.find_first_not_of("\"'([<%");
    if (at == std::string_view::npos || !IsLetter(word[at]) || NamesNoNumber(word)) return false;
  }
  return true;
}

double ToNumber(std::string_view text) {
  std::string_view digits = text;
  if (digits.size() > 1 && digits[0] == '+' && digits[1] != '-') digits.remove_prefix(1);
  double value = 0;
  const auto [end, error] = std::from_chars(digits.data(), digits.data() + digits.size(), value);
  if (error == std::errc::result_out_of_range) {
    throw std::runtime_error("\"" + Printable(text) + "\" is beyond the range of numbers");
  }
  if (error != std::errc() || end != digits.data() + digits.size()) {
    throw std::runtime_error("\"" + Printable(text) + "\" is not a number");
  }
  if (!std::isfinite(value)) throw std::runtime_error("\"" + Printable(text) + "\" is not a finite number");
  return value;
}

// Both numbers of a line, or the reason why there are not two.
std::pair<double, double> ToPoint(std::string_view line) {
  const Columns columns = Split(line);
  if (columns.count == 1) {
    throw std::runtime_error("one column, \"" + Printable(line) +
                             "\", where two are expected (m/z, amplitude)");
  }
  if (columns.count > 2) {
    throw std::runtime_error(std::to_string(columns.count) + " columns, \"" + Printable(line) +
                             "\", where two are expected (m/z, amplitude; decimal point, no decimal comma)");
  }
  const double mz = ToNumber(columns.first);
  if (mz < 0) throw std::runtime_error("the m/z \"" + Printable(columns.first) + "\" is negative");
  return {mz, ToNumber(columns.second)};
}

class TextParser {
 public:
  explicit TextParser(ByteSource& source) : lines_(source), file_(source.File()) {}

  void Read(Scan& scan, std::vector<std::string>& warnings) {
    scan.mz.clear();
    scan.amplitude.clear();
    for (std::string_view line; lines_.Next(line);) {
      try {
        TakeLine(Content(line), scan);
      } catch (const InputError&) {
        throw;
      } catch (const std::runtime_error& error) {
        throw InputError(file_, lines_.Place(), error.what());
      }
    }
    LeaveOutPrecursor(scan, warnings);
    if (scan.mz.empty()) throw InputError(file_, "", "holds no line with m/z and amplitude");
    SettleAxis(scan, warnings);
  }

 private:
  std::string_view Content(std::string_view line) const {
    if (lines_.Number() == 1 && line.starts_with("\xef\xbb\xbf")) line.remove_prefix(3);
    return Trim(line.substr(0, line.find('#')));
  }

  void TakeLine(std::string_view content, Scan& scan) {
    if (content.empty()) return;
    if (std::exchange(first_, false) && IsHeader(content)) return;
    const auto [mz, amplitude] = ToPoint(content);
    scan.mz.push_back(mz);
    scan.amplitude.push_back(amplitude);
    lineOf_.push_back(lines_.Number());
  }

  void LeaveOutPrecursor(Scan& scan, std::vector<std::string>& warnings) {
    if (!file_.ends_with(".dta") || scan.mz.empty()) return;
    warnings.push_back("line " + std::to_string(lineOf_.front()) +
                       " is the precursor line of a .dta file, left out");
    scan.mz.erase(scan.mz.begin());
    scan.amplitude.erase(scan.amplitude.begin());
    lineOf_.erase(lineOf_.begin());
  }

  void SettleAxis(Scan& scan, std::vector<std::string>& warnings) const {
    const AxisRepair repair = RepairAxis(scan.mz, scan.amplitude);
    const auto placeOf = [&](std::size_t index) { return "line " + std::to_string(lineOf_[index]); };
    if (repair.disorder) {
      const double mz = scan.mz[*repair.disorder];
      throw InputError(file_, placeOf(*repair.disorder), "m/z does not ascend: " + ShortNumber(mz));
    }
    if (repair.first) warnings.push_back(DescribeRepair(repair, placeOf(*repair.first)));
  }

  static std::string ShortNumber(double value) {
    char text[32];
    const auto result = std::to_chars(text, text + sizeof text, value);
    return std::string(text, result.ptr);
  }

  LineReader lines_;
  const std::string& file_;
  bool first_ = true;
  std::vector<std::uint64_t> lineOf_;
};

}  // namespace

TextFile::TextFile(ByteSource source) : source_(std::move(source)) {}

bool TextFile::Next(Scan& scan) {
  if (std::exchange(spent_, true)) return false;
  const std::string name = std::filesystem::path(source_.File()).filename().string();
  Scan head;
  head.number = 1;
  if (!Filter().Wants(head)) return false;
  scan.number = 1;
  scan.id = name;
  scan.rtSeconds = head.rtSeconds;
  scan.msLevel = head.msLevel;
  scan.representation = head.representation;
  TextParser(source_).Read(scan, warnings_);
  return true;
}

}  // namespace TslTool
