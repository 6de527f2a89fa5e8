#include <tslbl/closed/common/XMLSpelling.h>

#include <tslbl/closed/common/Text.h>
#include <cstdint>
#include <optional>

namespace TslCommon {
namespace {

constexpr std::size_t kCodeLength = 7;  // _xHHHH_
constexpr std::wstring_view kBlanks = L" \t\r\n";

bool IsNameStart(wchar_t c) { return (c >= L'A' && c <= L'Z') || (c >= L'a' && c <= L'z') || c == L'_'; }
bool IsNameLater(wchar_t c) { return (c >= L'0' && c <= L'9') || c == L'-' || c == L'.'; }

// No XML document may hold these, not even as a character reference.
bool IsForbidden(wchar_t c) {
  return (c < 0x20 && c != L'\t' && c != L'\n' && c != L'\r') || (c >= 0xD800 && c <= 0xDFFF) ||
         c == 0xFFFE || c == 0xFFFF;
}

std::optional<std::uint32_t> HexDigit(wchar_t c) {
  if (c >= L'0' && c <= L'9') return static_cast<std::uint32_t>(c - L'0');
  if (c >= L'A' && c <= L'F') return static_cast<std::uint32_t>(c - L'A' + 10);
  if (c >= L'a' && c <= L'f') return static_cast<std::uint32_t>(c - L'a' + 10);
  return std::nullopt;
}

// The character of a code that starts at the front of `text`. The closing underscore is not
// looked at: when written, it may be that of the code that follows.
std::optional<wchar_t> CodeAt(std::wstring_view text) {
  if (text.size() < kCodeLength - 1 || text[0] != L'_' || text[1] != L'x') return std::nullopt;
  std::uint32_t value = 0;
  for (std::size_t i = 2; i < kCodeLength - 1; ++i) {
    const auto digit = HexDigit(text[i]);
    if (!digit) return std::nullopt;
    value = value * 16 + *digit;
  }
  return static_cast<wchar_t>(value);
}

// Only these codes are read in a text: any other is text as it was typed.
bool IsTextCode(std::optional<wchar_t> c) { return c && (IsForbidden(*c) || *c == L'_'); }

void AppendCode(std::wstring& out, wchar_t c) {
  constexpr std::wstring_view kDigits = L"0123456789ABCDEF";
  const auto value = static_cast<char32_t>(c);
  out += L"_x";
  for (int shift = value > 0xFFFF ? 28 : 12; shift >= 0; shift -= 4) out += kDigits[(value >> shift) & 0xF];
  out += L'_';
}

void AppendReference(std::wstring& out, wchar_t c) { out += L"&#" + ToText(std::uint32_t(c)) + L";"; }

// `references` are the characters that a reader would change if they stood as they are.
std::wstring Escaped(std::wstring_view text, std::wstring_view references) {
  std::wstring escaped;
  escaped.reserve(text.size());
  for (std::size_t i = 0; i < text.size(); ++i) {
    const wchar_t c = text[i];
    if (IsForbidden(c) || (c == L'_' && IsTextCode(CodeAt(text.substr(i))))) {
      AppendCode(escaped, c);
    } else if (references.find(c) != references.npos) {
      AppendReference(escaped, c);
    } else {
      switch (c) {
        case L'&':
          escaped += L"&amp;";
          break;
        case L'<':
          escaped += L"&lt;";
          break;
        case L'>':
          escaped += L"&gt;";
          break;
        case L'"':
          escaped += L"&quot;";
          break;
        default:
          escaped += c;
      }
    }
  }
  return escaped;
}

}  // namespace

std::string EncodeXmlName(std::wstring_view name) {
  std::wstring encoded;
  for (std::size_t i = 0; i < name.size(); ++i) {
    const wchar_t c = name[i];
    const bool allowed = IsNameStart(c) || (i > 0 && IsNameLater(c));
    if (allowed && !CodeAt(name.substr(i))) {
      encoded += c;
    } else {
      AppendCode(encoded, c);
    }
  }
  return ToUtf8(encoded);
}

std::string EncodeXmlText(std::wstring_view text) {
  const bool blank = text.find_first_not_of(kBlanks) == text.npos;
  // Readers drop text of blanks between elements, but not a character reference.
  return ToUtf8(Escaped(text, blank ? kBlanks : L"\r"));
}

std::string EncodeXmlAttribute(std::wstring_view text) { return ToUtf8(Escaped(text, L"\t\r\n")); }

std::wstring DecodeXmlText(std::string_view read) {
  const std::wstring spelled = FromUtf8(read);
  std::wstring text;
  text.reserve(spelled.size());
  for (std::size_t i = 0; i < spelled.size();) {
    const auto c = CodeAt(std::wstring_view(spelled).substr(i));
    if (IsTextCode(c) && i + kCodeLength <= spelled.size() && spelled[i + kCodeLength - 1] == L'_') {
      text += *c;
      i += kCodeLength;
    } else {
      text += spelled[i++];
    }
  }
  return text;
}

}  // namespace TslCommon
