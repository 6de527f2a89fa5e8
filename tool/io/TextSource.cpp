#include <tool/io/TextSource.h>

#include <algorithm>
#include <array>
#include <cstring>
#include <utility>

namespace TslTool {

namespace {

constexpr std::string_view kUtf8Mark = "\xef\xbb\xbf";
constexpr std::string_view kUtf16LEMark = "\xff\xfe";
constexpr std::string_view kUtf16BEMark = "\xfe\xff";

std::string_view MarkOf(std::string_view head) {
  for (const std::string_view mark : {kUtf8Mark, kUtf16LEMark, kUtf16BEMark}) {
    if (head.starts_with(mark)) return mark;
  }
  return {};
}

// How many of the bytes at even and at odd places are zero.
std::array<std::size_t, 2> Zeros(std::string_view bytes) {
  std::array<std::size_t, 2> zeros{};
  for (std::size_t i = 0; i < bytes.size(); ++i) zeros[i % 2] += bytes[i] == '\0';
  return zeros;
}

unsigned UnitAt(std::string_view bytes, std::size_t at, Encoding encoding) {
  const auto first = static_cast<unsigned char>(bytes[at]);
  const auto second = static_cast<unsigned char>(bytes[at + 1]);
  return encoding == Encoding::Utf16LE ? second * 256u + first : first * 256u + second;
}

char Byte(unsigned value) { return static_cast<char>(value); }

char* Encode(unsigned character, char* to) {
  if (character < 0x80) {
    *to++ = Byte(character);
  } else if (character < 0x800) {
    *to++ = Byte(0xc0 | (character >> 6));
    *to++ = Byte(0x80 | (character & 0x3f));
  } else if (character < 0x10000) {
    *to++ = Byte(0xe0 | (character >> 12));
    *to++ = Byte(0x80 | ((character >> 6) & 0x3f));
    *to++ = Byte(0x80 | (character & 0x3f));
  } else {
    *to++ = Byte(0xf0 | (character >> 18));
    *to++ = Byte(0x80 | ((character >> 12) & 0x3f));
    *to++ = Byte(0x80 | ((character >> 6) & 0x3f));
    *to++ = Byte(0x80 | (character & 0x3f));
  }
  return to;
}

bool IsHigh(unsigned unit) { return unit >= 0xd800 && unit < 0xdc00; }
bool IsLow(unsigned unit) { return unit >= 0xdc00 && unit < 0xe000; }

constexpr unsigned kNoCharacter = 0xfffd;

// Writes three bytes at most for two that it takes. What needs bytes that are not there yet is left, unless
// there are none to come. Returns the ends of what was taken and of what was written.
std::pair<std::size_t, char*> Decode(std::string_view bytes, Encoding encoding, bool isEnd, char* to) {
  std::size_t at = 0;
  while (at + 2 <= bytes.size()) {
    unsigned character = UnitAt(bytes, at, encoding);
    const bool isPaired = IsHigh(character) && at + 4 <= bytes.size();
    if (IsHigh(character) && !isPaired && !isEnd) break;
    at += 2;
    const unsigned low = isPaired ? UnitAt(bytes, at, encoding) : 0;
    if (IsLow(low)) {
      character = 0x10000 + ((character - 0xd800) << 10) + (low - 0xdc00);
      at += 2;
    } else if (IsHigh(character) || IsLow(character)) {
      character = kNoCharacter;
    }
    to = Encode(character, to);
  }
  if (isEnd && at < bytes.size()) {
    to = Encode(kNoCharacter, to);
    at = bytes.size();
  }
  return {at, to};
}

}  // namespace

Encoding EncodingOf(std::string_view head) {
  if (head.starts_with(kUtf16LEMark)) return Encoding::Utf16LE;
  if (head.starts_with(kUtf16BEMark)) return Encoding::Utf16BE;
  const std::size_t units = head.size() / 2;
  const auto [even, odd] = Zeros(head);
  if (units < 2 || std::min(even, odd) > 0 || 10 * std::max(even, odd) < 9 * units) return Encoding::EightBit;
  return odd > 0 ? Encoding::Utf16LE : Encoding::Utf16BE;
}

std::string HeadText(std::string_view head) {
  const Encoding encoding = EncodingOf(head);
  head.remove_prefix(MarkOf(head).size());
  if (encoding == Encoding::EightBit) return std::string(head);
  std::string text(head.size() / 2 * 3, '\0');
  const auto [taken, end] = Decode(head, encoding, false, text.data());
  text.resize(static_cast<std::size_t>(end - text.data()));
  return text;
}

TextSource::TextSource(ByteSource& source) : source_(source), encoding_(EncodingOf(source.Head())) {
  char mark[3];
  source_.Read(mark, MarkOf(source_.Head()).size());
}

std::size_t TextSource::Read(char* to, std::size_t size) {
  for (;;) {
    const std::size_t count = encoding_ == Encoding::EightBit ? source_.Read(to, size) : ReadUtf16(to, size);
    const std::size_t left = EndLines(to, count);
    if (left > 0 || count == 0) return left;
  }
}

std::size_t TextSource::ReadUtf16(char* to, std::size_t size) {
  for (;;) {
    const std::size_t old = undecoded_.size();
    undecoded_.resize(std::max<std::size_t>(size / 3 * 2, old + 1));
    const std::size_t count = source_.Read(undecoded_.data() + old, undecoded_.size() - old);
    undecoded_.resize(old + count);
    const auto [taken, end] = Decode(undecoded_, encoding_, count == 0, to);
    undecoded_.erase(0, taken);
    if (end != to || count == 0) return static_cast<std::size_t>(end - to);
  }
}

// What follows a CR at the end of a chunk is not known yet: it becomes LF, and an LF that follows is dropped.
std::size_t TextSource::EndLines(char* text, std::size_t count) {
  if (count == 0) return 0;
  if (std::exchange(afterCr_, false) && *text == '\n') std::memmove(text, text + 1, --count);
  char* const end = text + count;
  for (char* at = text; (at = static_cast<char*>(std::memchr(at, '\r', static_cast<std::size_t>(end - at))));
       ++at) {
    afterCr_ = at + 1 == end;
    if (afterCr_ || at[1] != '\n') *at = '\n';
  }
  return count;
}

}  // namespace TslTool
