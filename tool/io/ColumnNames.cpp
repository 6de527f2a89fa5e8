#include <tool/io/ColumnNames.h>

#include <fmt/format.h>

#include <tool/frame/Numbers.h>
#include <tool/frame/Printable.h>
#include <tool/frame/UsageError.h>
#include <tool/io/OtherAxis.h>

#include <algorithm>
#include <span>

namespace TslTool {

namespace {

// Letters and digits of a name, small, without what stands in brackets; between blanks. A row of better names
// hides those behind it.
constexpr std::string_view kMzNames[] = {
    " mz masscharge masstocharge masstochargeratio massovercharge moverz mzratio mzvalue mzvalues massez "
    "masseladung ",
    " mass masses masse massen masa massa ",
    " x xvalue xvalues ",
};
constexpr std::string_view kAmplitudeNames[] = {
    " intensity intensities intens int intensit intensitt intensite intensidad intensiteit abundance "
    "abundances amplitude ampl counts count cps signal ioncurrent ioncounts absoluteintensity "
    "absoluteabundance absintensity ",
    " relativeintensity relativeabundance relintensity relabundance relint relative ",
    " y yvalue yvalues height response current tic ",
};

constexpr std::string_view kScanNames[] = {
    " scan scans scannum scannumber scanno scanid spectrum spectrumid spectrumnumber ",
};
char Small(char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c | 0x20) : c; }

std::string Plain(std::string_view name) {
  std::string plain;
  int depth = 0;
  for (const char c : name) {
    if (c == '(' || c == '[') ++depth;
    if (c == ')' || c == ']') depth = std::max(depth - 1, 0);
    const char small = Small(c);
    if (depth == 0 && ((small >= 'a' && small <= 'z') || (c >= '0' && c <= '9'))) plain.push_back(small);
  }
  return plain;
}

bool SameInAnyCase(std::string_view a, std::string_view b) {
  return std::ranges::equal(a, b, {}, Small, Small);
}

// As a name stands in the rows above; empty if it has neither letters nor digits.
std::string KeyOf(std::string_view name) {
  const std::string plain = Plain(name);
  return plain.empty() ? plain : " " + plain + " ";
}

std::vector<std::string> KeysOf(const std::vector<std::string_view>& names) {
  std::vector<std::string> keys;
  keys.reserve(names.size());
  for (const std::string_view name : names) keys.push_back(KeyOf(name));
  return keys;
}

bool IsAmong(const std::string& key, std::string_view row) {
  return !key.empty() && row.find(key) != std::string_view::npos;
}

// The only one that fits; nothing, and `several`, if there are more.
template <class Texts, class Fits>
std::optional<std::size_t> FindOne(const Texts& texts, Fits fits, bool& several) {
  const auto first = std::ranges::find_if(texts, fits);
  if (first == texts.end()) return std::nullopt;
  several = std::find_if(first + 1, texts.end(), fits) != texts.end();
  return several ? std::nullopt : std::optional(static_cast<std::size_t>(first - texts.begin()));
}

std::optional<std::size_t> FindKnown(const std::vector<std::string>& keys,
                                     std::span<const std::string_view> rows) {
  for (const std::string_view row : rows) {
    bool several = false;
    const auto found = FindOne(
        keys, [&](const std::string& key) { return IsAmong(key, row); }, several);
    if (found || several) return found;
  }
  return std::nullopt;
}

// A name that means m/z only where nothing else is said, such as x, does not with another unit.
std::optional<std::size_t> FindMz(const std::vector<std::string_view>& names) {
  std::vector<std::string> keys = KeysOf(names);
  for (std::size_t i = 0; i < names.size(); ++i)
    if (IsNoMz(names[i])) keys[i].clear();
  return FindKnown(keys, kMzNames);
}

std::optional<std::size_t> FindAmplitude(const std::vector<std::string_view>& names) {
  return FindKnown(KeysOf(names), kAmplitudeNames);
}

std::optional<std::size_t> FindChosen(const std::vector<std::string_view>& names, const std::string& choice) {
  if (const std::size_t number = ColumnNumber(choice)) return number - 1;
  bool several = false;
  const auto isSame = [&](std::string_view name) { return SameInAnyCase(name, choice); };
  const auto found = FindOne(names, isSame, several);
  if (found || several) return found;
  const std::string key = KeyOf(choice);
  const auto isAlike = [&](std::string_view name) { return !key.empty() && KeyOf(name) == key; };
  return FindOne(names, isAlike, several);
}

std::optional<ColumnPair> PairOf(std::optional<std::size_t> mz, std::optional<std::size_t> amplitude) {
  if (!mz || !amplitude || *mz == *amplitude) return std::nullopt;
  return ColumnPair{*mz, *amplitude};
}

}  // namespace

bool ColumnChoice::IsByNumber() const { return ColumnNumber(mz) != 0 && ColumnNumber(amplitude) != 0; }

ColumnChoice ParseColumnChoice(const std::string& option, std::string_view text) {
  if (text.empty()) return {};
  const std::size_t comma = text.find(',');
  ColumnChoice choice{std::string(text.substr(0, comma)),
                      comma == std::string_view::npos ? "" : std::string(text.substr(comma + 1))};
  const bool isPair = !choice.mz.empty() && !choice.amplitude.empty() &&
                      choice.amplitude.find(',') == std::string::npos && choice.mz != choice.amplitude;
  if (!isPair) {
    throw UsageError(option + ": \"" + std::string(text) +
                     "\" is not two columns, as in mass,intensity or 2,3 (the first is 1)");
  }
  for (const std::string& part : {choice.mz, choice.amplitude}) {
    if (part.find_first_not_of('0') == std::string::npos)
      throw UsageError(option + ": the first column is 1");
    if (part.find_first_not_of("0123456789") == std::string::npos) ParseCount(option, part);
  }
  return choice;
}

std::size_t ColumnNumber(const std::string& choice) {
  const bool isNumber = choice.find_first_not_of("0123456789") == std::string::npos;
  return isNumber && !choice.empty() ? std::stoul(choice) : 0;
}

std::optional<ColumnPair> FindColumns(const std::vector<std::string_view>& names,
                                      const ColumnChoice& choice) {
  if (choice.IsGiven()) return PairOf(FindChosen(names, choice.mz), FindChosen(names, choice.amplitude));
  const auto mz = FindMz(names);
  return mz ? PairOf(mz, FindAmplitude(names)) : std::nullopt;
}

std::optional<ColumnPair> FindColumnsOfTwo(const std::vector<std::string_view>& names) {
  const auto mz = FindMz(names);
  const auto amplitude = FindAmplitude(names);
  if (mz && amplitude) return PairOf(mz, amplitude);
  if (mz) return ColumnPair{*mz, 1 - *mz};
  if (amplitude) return ColumnPair{1 - *amplitude, *amplitude};
  return std::nullopt;
}

std::optional<std::size_t> FindScanColumn(const std::vector<std::string_view>& names) {
  return FindKnown(KeysOf(names), kScanNames);
}

bool IsMzName(std::string_view name) { return FindMz({name}).has_value(); }

bool IsAmplitudeName(std::string_view name) { return FindAmplitude({name}).has_value(); }

bool IsNoMz(std::string_view name) {
  const std::string key = KeyOf(name);
  return !IsAmong(key, kMzNames[0]) && !IsAmong(key, kMzNames[1]) && IsOtherAxis(name);
}

std::string ListColumns(const std::vector<std::string_view>& names) {
  constexpr std::size_t kMost = 12;
  std::string text;
  for (std::size_t i = 0; i < std::min(names.size(), kMost); ++i) {
    text += fmt::format("{}\"{}\" ({})", i == 0 ? "" : ", ", Printable(names[i]), i + 1);
  }
  return names.size() > kMost ? text + ", ..." : text;
}

}  // namespace TslTool
