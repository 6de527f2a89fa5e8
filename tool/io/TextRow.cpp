#include <tool/io/TextRow.h>

#include <tool/frame/Printable.h>
#include <tool/io/Fields.h>
#include <tool/io/TextNumber.h>

#include <algorithm>
#include <charconv>
#include <cmath>
#include <stdexcept>

namespace TslTool {

namespace {

bool IsBlank(char c) { return c == ' ' || c == '\t' || c == '\v' || c == '\f'; }

void SkipBlanks(const char*& at, const char* end) {
  while (at != end && IsBlank(*at)) ++at;
}

// Blanks with at most one comma or semicolon among them.
void SkipSeparator(const char*& at, const char* end) {
  SkipBlanks(at, end);
  if (at == end || (*at != ',' && *at != ';')) return;
  ++at;
  SkipBlanks(at, end);
}

bool TakeNumber(const char*& at, const char* end, double& value) {
  if (end - at > 1 && *at == '+' && at[1] != '-') ++at;
  const auto [behind, error] = std::from_chars(at, end, value);
  at = behind;
  return error == std::errc() && std::isfinite(value);
}

bool TakePlain(std::string_view row, double& first, double& second) {
  const char* at = row.data();
  const char* const end = at + row.size();
  SkipBlanks(at, end);
  if (!TakeNumber(at, end, first)) return false;
  const char* const behindFirst = at;
  SkipSeparator(at, end);
  if (at == behindFirst || !TakeNumber(at, end, second)) return false;
  SkipSeparator(at, end);
  return at == end;
}

// The fields of a plain row that may be damaged.
std::vector<std::string_view> SplitPlain(std::string_view row) {
  std::vector<std::string_view> fields;
  for (row = Trim(row); !row.empty();) {
    const std::size_t end = std::min(row.find_first_of(" \t\v\f,;"), row.size());
    fields.push_back(row.substr(0, end));
    row = Trim(row.substr(end));
    if (!row.empty() && (row.front() == ',' || row.front() == ';')) row = Trim(row.substr(1));
  }
  return fields;
}

[[noreturn]] void RefuseCount(std::string_view row, std::size_t count, const TextDialect& dialect) {
  if (count == 1 && dialect.columns == 2) throw std::runtime_error(OneColumn(row));
  const std::string text =
      std::to_string(count) + (count == 1 ? " column, \"" : " columns, \"") + Shown(row) + "\", where ";
  if (dialect.columns == 2) {
    throw std::runtime_error(text + "two are expected (m/z, amplitude" +
                             (dialect.decimal == '.' ? "; decimal point, no decimal comma)" : ")"));
  }
  throw std::runtime_error(text + std::to_string(dialect.columns) + " are expected");
}

void RequireMz(double mz, std::string_view text) {
  if (mz < 0) throw std::runtime_error("the m/z \"" + Printable(text) + "\" is negative");
}

}  // namespace

bool IsPlainRow(std::string_view row) {
  double first = 0;
  double second = 0;
  return TakePlain(row, first, second);
}

bool IsDamagedRow(std::string_view line, const TextDialect& dialect) {
  if (IsComment(line, dialect.separator)) return false;
  std::vector<std::string_view> fields;
  SplitFields(WithoutComment(line), dialect.separator, fields);
  return fields.size() > 1 && fields.size() == dialect.columns && IsNumber(fields.front(), dialect.decimal);
}

std::string Shown(std::string_view row) {
  std::string text(Trim(row));
  std::ranges::replace(text, '\t', ' ');
  return Printable(text);
}

std::string OneColumn(std::string_view row) {
  return "one column, \"" + Shown(row) + "\", where two are expected (m/z, amplitude)";
}

std::optional<TextPoint> RowReader::Read(std::string_view row) {
  TextPoint point;
  double& first = dialect_.pair.mz == 0 ? point.mz : point.amplitude;
  double& second = dialect_.pair.mz == 0 ? point.amplitude : point.mz;
  if (dialect_.isPlain && TakePlain(row, first, second) && point.mz >= 0) return point;
  if (IsEmptyRow(row) || IsComment(row, dialect_.separator)) return std::nullopt;
  if (dialect_.isPlain) {
    fields_ = SplitPlain(row);
  } else {
    SplitFields(row, dialect_.separator, fields_);
  }
  return ReadTable(row);
}

TextPoint RowReader::ReadTable(std::string_view row) {
  const std::size_t needed = std::max(dialect_.pair.mz, dialect_.pair.amplitude) + 1;
  if (fields_.size() < needed || fields_.size() > dialect_.columns)
    RefuseCount(row, fields_.size(), dialect_);
  RequireSameScan();
  RequireSameTime();
  const std::string_view text = fields_[dialect_.pair.mz];
  const double mz = Number(text, true);
  RequireMz(mz, text);
  return {mz, Number(fields_[dialect_.pair.amplitude], false)};
}

void RowReader::RequireSameScan() {
  if (!dialect_.scan || *dialect_.scan >= fields_.size()) return;
  const std::string_view scan = fields_[*dialect_.scan];
  if (!scan_) scan_ = scan;
  if (*scan_ != scan) {
    throw std::runtime_error("spectrum \"" + Printable(scan) + "\" behind \"" + Printable(*scan_) +
                             "\": a text holds one spectrum");
  }
}

// Each point has a time of flight of its own, where points of one spectrum share their retention time.
void RowReader::RequireSameTime() {
  if (!dialect_.time || *dialect_.time >= fields_.size()) return;
  const std::string_view time = fields_[*dialect_.time];
  if (time_ && *time_ != time) {
    if (isOfSeveral_)
      throw std::runtime_error("time \"" + Printable(time) + "\" behind \"" + Printable(*time_) +
                               "\": a text holds one spectrum");
    dialect_.time.reset();
  }
  isOfSeveral_ = time_ == time;
  time_ = time;
}

double RowReader::Number(std::string_view field, bool isMz) {
  // Nothing has an m/z of 100,000 and more, so three digits before a comma are no thousands there.
  constexpr std::size_t kLongestMz = sizeof "10,000" - 1;
  const double value = ToNumber(field, dialect_.decimal);
  if (dialect_.decimal != ',' || field.find(',') == std::string_view::npos) return value;
  const bool isUnclear = HasUnclearComma(field) && !(isMz && field.size() > kLongestMz);
  if (!isUnclear) isClear_ = true;
  if (isUnclear && unclear_.empty()) unclear_ = field;
  return value;
}

}  // namespace TslTool
