#include <tool/io/MzMLText.h>

#include <tool/frame/Printable.h>
#include <algorithm>
#include <array>
#include <stdexcept>

namespace TslTool {

namespace {

using TermTest = std::function<bool(const std::string&)>;

// Padding that means no bytes, but makes the decoder's buffer longer than the data: on damaged numpress data
// it reads up to five bytes past them.
constexpr std::string_view kSlack = "================";

bool IsBlank(char c) { return c == ' ' || c == '\t' || c == '\r' || c == '\n'; }

constexpr std::array<bool, 256> Base64Letters() {
  std::array<bool, 256> letters{};
  for (const char c : std::string_view("ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/=")) {
    letters[static_cast<unsigned char>(c)] = true;
  }
  return letters;
}

// Where `<name` with a blank, '/' or '>' behind it stands, from `from` on.
std::size_t FindTag(std::string_view text, std::string_view tag, std::size_t from) {
  for (std::size_t at = text.find(tag, from); at != std::string_view::npos; at = text.find(tag, at + 1)) {
    const std::size_t behind = at + tag.size();
    if (behind == text.size()) continue;
    if (text[behind] == '/' || text[behind] == '>' || IsBlank(text[behind])) return at;
  }
  return std::string_view::npos;
}

// Behind the '>' of the tag that begins at `at`.
std::size_t BehindTag(std::string_view text, std::size_t at) {
  char quote = 0;
  for (; at < text.size(); ++at) {
    const char c = text[at];
    if (quote ? c == quote : (c == '"' || c == '\'')) {
      quote = quote ? '\0' : c;
    } else if (c == '>' && !quote) {
      return at + 1;
    }
  }
  throw std::runtime_error("a tag without its end");
}

// Empty if the tag, which is well formed, has no such attribute.
std::string AttributeOf(std::string_view tag, std::string_view name) {
  constexpr std::string_view kBlanks = " \t\r\n";
  for (std::size_t at = tag.find(name, 1); at != std::string_view::npos; at = tag.find(name, at + 1)) {
    const std::size_t equals = std::min(tag.find_first_not_of(kBlanks, at + name.size()), tag.size() - 1);
    if (!IsBlank(tag[at - 1]) || tag[equals] != '=') continue;
    const std::size_t begin = tag.find_first_of("\"'", equals) + 1;
    return std::string(tag.substr(begin, tag.find(tag[begin - 1], begin) - begin));
  }
  return "";
}

[[noreturn]] void FailBase64(const std::string& what) {
  throw std::runtime_error("the base64 text of an array " + what);
}

void AppendBase64(std::string& out, std::string_view text) {
  static constexpr std::array<bool, 256> kLetters = Base64Letters();
  const auto isLetter = [](char c) { return kLetters[static_cast<unsigned char>(c)]; };
  const std::size_t begin = out.size();
  for (auto at = text.begin(); at != text.end();) {
    const auto runEnd = std::find_if_not(at, text.end(), isLetter);
    out.append(at, runEnd);
    at = std::find_if_not(runEnd, text.end(), IsBlank);
    if (at == runEnd && at != text.end()) {
      FailBase64("is damaged (character code " + std::to_string(static_cast<unsigned char>(*at)) + ")");
    }
  }
  const std::size_t length = out.size() - begin;
  if (length % 4 != 0) FailBase64("has a wrong length (" + std::to_string(length) + " characters)");
  const std::size_t padding = out.size() - std::min(out.find('=', begin), out.size());
  if (padding > 2 || (padding == 2 && out.back() != '=')) FailBase64("continues after its padding");
}

bool IsWantedArray(std::string_view array) {
  const auto holds = [&](std::string_view text) { return array.find(text) != std::string_view::npos; };
  return holds("\"MS:1000514\"") || holds("'MS:1000514'") || holds("\"MS:1000515\"") ||
         holds("'MS:1000515'") || holds("<referenceableParamGroupRef");
}

// The length of base64 text that an array announces, against what it has; blanks may be counted or not.
void CheckEncodedLength(std::string_view tag, std::size_t withBlanks, std::size_t without) {
  const std::string announced = AttributeOf(tag, "encodedLength");
  if (announced == std::to_string(withBlanks) || announced == std::to_string(without)) return;
  FailBase64("has " + std::to_string(without) + " characters, but its encodedLength is \"" +
             Printable(announced) + "\"");
}

// The tag is rewritten: the decoder would look up the name of the processing in lists that are not read here.
void AppendArrayTag(std::string& out, std::string_view tag, std::size_t encodedLength) {
  const std::string arrayLength = AttributeOf(tag, "arrayLength");
  out += "<binaryDataArray";
  if (!arrayLength.empty()) out += " arrayLength=\"" + arrayLength + "\"";
  out += " encodedLength=\"" + std::to_string(encodedLength) + "\">";
}

void AppendArray(std::string& out, std::string_view array) {
  const std::size_t binary = std::min(FindTag(array, "<binary", 0), array.size());
  const std::string_view head = array.substr(0, binary);
  if (!IsWantedArray(head)) return;
  if (binary == array.size()) throw std::runtime_error("an array without its binary element");
  const std::size_t begin = BehindTag(array, binary);
  const std::size_t end = std::min(array.find("</binary", begin), array.size());
  std::string base64;
  AppendBase64(base64, array.substr(begin, end - begin));

  const std::size_t behindTag = BehindTag(array, 0);
  CheckEncodedLength(array.substr(0, behindTag), end - begin, base64.size());
  base64 += kSlack;
  AppendArrayTag(out, array.substr(0, behindTag), base64.size());
  out += head.substr(behindTag);
  out += array.substr(binary, begin - binary);
  out += base64;
  out += array.substr(end);
}

// Behind the end of the array element that begins at `at`.
std::size_t BehindArray(std::string_view text, std::size_t at) {
  const std::size_t behindTag = BehindTag(text, at);
  if (text.substr(0, behindTag).ends_with("/>")) return behindTag;
  const std::size_t end = text.find("</binaryDataArray", behindTag);
  if (end == std::string_view::npos) throw std::runtime_error("a binaryDataArray without its end");
  return BehindTag(text, end);
}

}  // namespace

std::string WithoutUnknownTerms(std::string_view text, const TermTest& isKnown) {
  std::string out;
  std::size_t done = 0;
  for (std::size_t at = FindTag(text, "<cvParam", 0); at != std::string_view::npos;) {
    const std::size_t behind = BehindTag(text, at);
    const std::string_view tag = text.substr(at, behind - at);
    if (tag.ends_with("/>") && !isKnown(AttributeOf(tag, "accession"))) {
      out += text.substr(done, at - done);
      done = behind;
    }
    at = FindTag(text, "<cvParam", behind);
  }
  return out += text.substr(done);
}

std::string TidySpectrumText(std::string_view element, const TermTest& isKnown) {
  std::string out;
  out.reserve(element.size());
  std::size_t done = 0;
  for (;;) {
    const std::size_t at = std::min(FindTag(element, "<binaryDataArray", done), element.size());
    out += WithoutUnknownTerms(element.substr(done, at - done), isKnown);
    if (at == element.size()) return out;
    done = BehindArray(element, at);
    AppendArray(out, element.substr(at, done - at));
  }
}

std::size_t LongestArrayText(std::string_view element) {
  std::size_t longest = 0;
  for (std::size_t at = FindTag(element, "<binary", 0); at != std::string_view::npos;) {
    const std::size_t begin = BehindTag(element, at);
    const std::size_t end = std::min(element.find('<', begin), element.size());
    longest = std::max(longest, end - begin);
    at = FindTag(element, "<binary", end);
  }
  return longest;
}

}  // namespace TslTool
