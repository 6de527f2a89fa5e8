#include <tool/commands/calibrate/CalibrantFile.h>

#include <fmt/format.h>

#include <tool/frame/InputError.h>
#include <tool/frame/Printable.h>
#include <tool/io/ByteSource.h>
#include <tool/io/LineReader.h>
#include <tool/io/TextNumber.h>
#include <tslbl/closed/common/Text.h>
#include <tslbl/records/RecordForms.h>
#include <algorithm>
#include <cmath>
#include <fstream>
#include <iterator>
#include <map>
#include <optional>
#include <stdexcept>
#include <string_view>

namespace TslTool {
namespace {

constexpr std::string_view kBlanks = " \t";
constexpr std::string_view kSeparators = " \t,;";
constexpr std::string_view kDigits = "0123456789";  // of which names of columns have none
constexpr std::size_t kLeast = 2;
constexpr std::size_t kShown = 40;  // characters of a text in a message

std::string_view Trimmed(std::string_view text, std::string_view blanks) {
  const std::size_t begin = text.find_first_not_of(blanks);
  if (begin == std::string_view::npos) return {};
  return text.substr(begin, text.find_last_not_of(blanks) + 1 - begin);
}

// Finds what stands twice.
class SeenBefore {
 public:
  explicit SeenBefore(std::string file) : file_(std::move(file)) {}

  void Require(const TslBL::Calibrant& calibrant, const std::string& place) {
    if (!(calibrant.MZ > 0.0) || !std::isfinite(calibrant.MZ))
      throw InputError(file_, place, fmt::format("the m/z {} is not above 0", calibrant.MZ));
    const std::string name = TslCommon::ToUtf8(calibrant.Name);
    Add(names_, name, place, fmt::format("the calibrant \"{}\"", Printable(name, kShown)));
    Add(mz_, calibrant.MZ, place, fmt::format("m/z {}", calibrant.MZ));
  }

 private:
  template <class Key>
  void Add(std::map<Key, std::string>& seen, const Key& key, const std::string& place,
           const std::string& text) {
    const auto [before, isNew] = seen.emplace(key, place);
    if (!isNew) throw InputError(file_, place, fmt::format("{} stands in {} already", text, before->second));
  }

  std::string file_;
  std::map<std::string, std::string> names_;
  std::map<double, std::string> mz_;
};

void RequireEnough(const std::string& file, const TslBL::CalibrateParams& params) {
  if (params.calibrants.size() < kLeast)
    throw InputError(file, "",
                     fmt::format("holds {} calibrant{}, and an axis is laid through two at least",
                                 params.calibrants.size(), params.calibrants.size() == 1 ? "" : "s"));
}

// Whether the line may end in a decimal comma as well as in a comma and a number: "PFK 68,995".
bool HasUnclearEnd(std::string_view line) {
  const std::size_t comma = line.rfind(',');
  if (comma == std::string_view::npos || line.find_first_not_of(kDigits, comma + 1) != line.npos)
    return false;
  const std::string_view before = line.substr(0, comma);
  const std::size_t separator = before.find_last_of(kSeparators);
  const std::string_view word = separator == before.npos ? before : before.substr(separator + 1);
  return !word.empty() && word.find_first_not_of(kDigits) == word.npos;
}

// Of a line "NAME MZ"; nothing if its last word is no number.
std::optional<TslBL::Calibrant> CalibrantOf(std::string_view line) {
  const std::size_t last = line.find_last_of(kSeparators);
  const std::string_view number = last == std::string_view::npos ? line : line.substr(last + 1);
  if (!IsNumber(number, '.')) return std::nullopt;
  const std::string_view name =
      last == std::string_view::npos ? number : Trimmed(line.substr(0, last), kSeparators);
  return TslBL::Calibrant{TslCommon::FromUtf8(name), ToNumber(number, '.')};
}

TslBL::CalibrateParams ReadText(const std::string& file) {
  ByteSource source(file);
  LineReader lines(source);
  SeenBefore seen(file);
  TslBL::CalibrateParams params;
  bool isHeadPossible = true;
  for (std::string_view line; lines.Next(line);) {
    const std::string_view text = Trimmed(line, kBlanks);
    if (text.empty() || text.starts_with('#')) continue;
    const bool isHead = std::exchange(isHeadPossible, false) && text.find_first_of(kDigits) == text.npos;
    if (isHead) continue;
    const auto calibrant = CalibrantOf(text);
    if (!calibrant)
      throw InputError(file, lines.Place(),
                       fmt::format("\"{}\" does not end in an m/z", Printable(text, kShown)));
    if (HasUnclearEnd(text))
      throw InputError(file, lines.Place(),
                       fmt::format("\"{}\" ends in a decimal comma or in a number behind a comma; write a "
                                   "decimal point, or a blank before the m/z",
                                   Printable(text, kShown)));
    seen.Require(*calibrant, lines.Place());
    params.calibrants.push_back(*calibrant);
  }
  return params;
}

// Its version is a small number in four bytes, of which a text has none.
bool IsRecord(const std::string& bytes) {
  return bytes.size() >= 4 && bytes[0] > 0 && bytes[0] < '\t' && bytes.substr(1, 3) == std::string(3, '\0');
}

TslBL::CalibrateParams ReadRecord(const std::string& file, const std::string& bytes) {
  try {
    auto params = TslBL::FromBytes<TslBL::CalibrateParams>(bytes);
    SeenBefore seen(file);
    std::size_t number = 0;
    for (const TslBL::Calibrant& calibrant : params.calibrants)
      seen.Require(calibrant, fmt::format("calibrant {}", ++number));
    return params;
  } catch (const InputError&) {
    throw;
  } catch (const std::runtime_error& error) {
    throw InputError(file, "", fmt::format("cannot be read as calibrants: {}", error.what()));
  }
}

}  // namespace

TslBL::CalibrateParams ReadCalibrants(const std::string& file) {
  std::ifstream in(file, std::ios::binary);
  std::string head(4, '\0');
  in.read(head.data(), 4);
  TslBL::CalibrateParams params;
  if (in && IsRecord(head)) {
    params = ReadRecord(file, head + std::string(std::istreambuf_iterator<char>(in), {}));
  } else {
    params = ReadText(file);
  }
  RequireEnough(file, params);
  return params;
}

}  // namespace TslTool
