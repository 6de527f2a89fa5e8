#include <tslbl/closed/common/Text.h>

#include <algorithm>
#include <charconv>
#include <limits>
#include <type_traits>

namespace TslCommon {
namespace {

constexpr char32_t kReplacement = 0xFFFD;

wchar_t Lower(wchar_t c) { return c >= L'A' && c <= L'Z' ? static_cast<wchar_t>(c - L'A' + L'a') : c; }
bool IsBlank(wchar_t c) { return c == L' ' || (c >= L'\t' && c <= L'\r'); }
bool IsDigit(wchar_t c) { return c >= L'0' && c <= L'9'; }
bool IsSurrogate(char32_t c) { return c >= 0xD800 && c <= 0xDFFF; }

void AppendUtf8(std::string& out, char32_t c) {
  const auto byte = [&out](char32_t b) { out.push_back(static_cast<char>(static_cast<unsigned char>(b))); };
  if (c > 0x10FFFF || IsSurrogate(c)) c = kReplacement;
  if (c < 0x80) return byte(c);
  if (c < 0x800) {
    byte(0xC0 | (c >> 6));
  } else if (c < 0x10000) {
    byte(0xE0 | (c >> 12));
    byte(0x80 | ((c >> 6) & 0x3F));
  } else {
    byte(0xF0 | (c >> 18));
    byte(0x80 | ((c >> 12) & 0x3F));
    byte(0x80 | ((c >> 6) & 0x3F));
  }
  byte(0x80 | (c & 0x3F));
}

// Length of the sequence that a lead byte opens, 0 if it cannot open one.
std::size_t SequenceLength(unsigned char lead) {
  if (lead < 0x80) return 1;
  if (lead >= 0xC2 && lead <= 0xDF) return 2;
  if (lead >= 0xE0 && lead <= 0xEF) return 3;
  if (lead >= 0xF0 && lead <= 0xF4) return 4;
  return 0;
}

// Decodes one character and takes its bytes off the front. Of a malformed sequence one
// byte is taken, so that the text behind it is not lost.
char32_t TakeCharacter(std::string_view& bytes) {
  constexpr char32_t kLeadBits[] = {0, 0x7F, 0x1F, 0x0F, 0x07};
  constexpr char32_t kSmallest[] = {0, 0, 0x80, 0x800, 0x10000};
  const auto at = [&bytes](std::size_t i) { return static_cast<unsigned char>(bytes[i]); };
  const std::size_t length = SequenceLength(at(0));
  char32_t c = kReplacement;
  std::size_t used = 1;
  if (length > 0 && length <= bytes.size()) {
    char32_t value = at(0) & kLeadBits[length];
    std::size_t i = 1;
    for (; i < length && (at(i) & 0xC0) == 0x80; ++i) value = (value << 6) | (at(i) & 0x3F);
    if (i == length && value >= kSmallest[length] && value <= 0x10FFFF && !IsSurrogate(value)) {
      c = value;
      used = length;
    }
  }
  bytes.remove_prefix(used);
  return c;
}

// The part of `text` that can spell a number, as ASCII; a leading '+' is dropped, since
// std::from_chars does not know it.
std::string NumberPart(std::wstring_view text, bool real) {
  std::size_t i = 0;
  while (i < text.size() && IsBlank(text[i])) ++i;
  std::string number;
  if (i < text.size() && (text[i] == L'+' || text[i] == L'-')) {
    if (text[i] == L'-') number.push_back('-');
    ++i;
  }
  for (; i < text.size(); ++i) {
    const wchar_t c = text[i];
    const bool afterExponent = !number.empty() && (number.back() == 'e' || number.back() == 'E');
    const bool partOfReal =
        c == L'.' || c == L'e' || c == L'E' || (afterExponent && (c == L'+' || c == L'-'));
    if (!IsDigit(c) && !(real && partOfReal)) break;
    number.push_back(static_cast<char>(c));
  }
  return number;
}

template <class T>
bool Convert(const std::string& number, T& value);

// Whether a real number that is out of range is too large rather than too small: its
// leading digit stands before the decimal point once the exponent has moved it.
bool IsLarge(const std::string& number) {
  constexpr std::int64_t kFar = 1'000'000'000;  // beyond any exponent and any length of text
  const auto e = std::min(number.find_first_of("eE"), number.size());
  const std::string mantissa = number.substr(0, e);
  const auto point = static_cast<std::int64_t>(std::min(mantissa.find('.'), mantissa.size()));
  const auto leading = static_cast<std::int64_t>(mantissa.find_first_of("123456789"));
  std::int64_t exponent = 0;
  const bool plus = e + 1 < number.size() && number[e + 1] == '+';
  if (e < number.size()) Convert(number.substr(e + (plus ? 2 : 1)), exponent);
  return std::clamp(exponent, -kFar, kFar) + point - leading > 0;
}

template <class T>
bool Convert(const std::string& number, T& value) {
  T parsed{};
  const auto [end, error] = std::from_chars(number.data(), number.data() + number.size(), parsed);
  if (error == std::errc::invalid_argument) return false;
  if (error == std::errc::result_out_of_range) {
    const bool negative = number.front() == '-';
    parsed = negative ? std::numeric_limits<T>::lowest() : std::numeric_limits<T>::max();
    // The nearest end of a real number too small to hold is 0.
    if (std::is_floating_point_v<T> && !IsLarge(number)) parsed = T{};
  }
  value = parsed;
  return true;
}

template <class T>
bool Parse(std::wstring_view text, T& value) {
  return Convert(NumberPart(text, std::is_floating_point_v<T>), value);
}

std::wstring PrintDigits(double value, int digits) {
  char buffer[32];
  const auto end =
      std::to_chars(buffer, buffer + sizeof buffer, value, std::chars_format::general, digits).ptr;
  return {buffer, end};
}

template <class T>
std::wstring Print(T value) {
  char buffer[32];
  const auto end = std::to_chars(buffer, buffer + sizeof buffer, value).ptr;
  return {buffer, end};
}

}  // namespace

bool EqualsIgnoreCase(std::wstring_view a, std::wstring_view b) {
  return std::ranges::equal(a, b, [](wchar_t x, wchar_t y) { return Lower(x) == Lower(y); });
}

std::string ToUtf8(std::wstring_view text) {
  std::string bytes;
  bytes.reserve(text.size());
  for (const wchar_t c : text) AppendUtf8(bytes, static_cast<char32_t>(c));
  return bytes;
}

std::wstring FromUtf8(std::string_view bytes) {
  std::wstring text;
  text.reserve(bytes.size());
  while (!bytes.empty()) text.push_back(static_cast<wchar_t>(TakeCharacter(bytes)));
  return text;
}

std::wstring TslNarrowToWideStr(const std::string& text) { return FromUtf8(text); }

std::wstring ToText(double value) { return PrintDigits(value, 6); }
std::wstring ToFullText(double value) { return PrintDigits(value, 17); }
std::wstring ToText(std::int32_t value) { return Print(value); }
std::wstring ToText(std::uint32_t value) { return Print(value); }
std::wstring ToText(std::int64_t value) { return Print(value); }

bool FromText(std::wstring_view text, double& value) { return Parse(text, value); }
bool FromText(std::wstring_view text, std::int32_t& value) { return Parse(text, value); }
bool FromText(std::wstring_view text, std::int64_t& value) { return Parse(text, value); }

bool FromText(std::wstring_view text, std::uint32_t& value) {
  // A stream reads a negative number into an unsigned one modulo 2^32.
  std::int64_t wide = 0;
  if (!Parse(text, wide)) return false;
  constexpr std::int64_t kMax = std::numeric_limits<std::uint32_t>::max();
  value = static_cast<std::uint32_t>(wide > kMax || wide < -kMax ? kMax : wide);
  return true;
}

std::wstring ToWStr(const bool& value) { return value ? L"true" : L"false"; }

void FromWStr(const std::wstring& text, bool& value) {
  std::int64_t number = 0;
  if (EqualsIgnoreCase(text, L"true")) {
    value = true;
  } else if (EqualsIgnoreCase(text, L"false")) {
    value = false;
  } else if (FromText(text, number)) {
    value = number != 0;
  }
}

std::wstring ToWStr(const std::int64_t& value) { return Print(value); }
void FromWStr(const std::wstring& text, std::int64_t& value) { FromText(text, value); }

}  // namespace TslCommon
