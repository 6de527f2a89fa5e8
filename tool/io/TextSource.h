#pragma once
// The text of a file as UTF-8 with LF or CRLF at the ends of its lines, whatever it has itself.

#include <cstddef>
#include <string>
#include <string_view>

#include <tool/io/ByteSource.h>

namespace TslTool {

// EightBit: UTF-8 or another encoding that contains ASCII; its bytes are handed on as they are.
enum class Encoding { EightBit, Utf16LE, Utf16BE };

// By the mark at the beginning, or, without one, by every other byte being zero. A few hundred bytes are
// enough.
Encoding EncodingOf(std::string_view head);

// The first bytes of a file as UTF-8 without a mark; ends of lines as they are.
std::string HeadText(std::string_view head);

class TextSource {
 public:
  // The source must outlive this; nothing has been read from it yet.
  explicit TextSource(ByteSource& source);

  const std::string& File() const { return source_.File(); }

  // Reads up to `size` bytes of text, at least 8, and returns their number; 0 is the end. Units that are no
  // characters become U+FFFD. A lone CR becomes LF.
  std::size_t Read(char* to, std::size_t size);

 private:
  std::size_t ReadUtf16(char* to, std::size_t size);
  std::size_t EndLines(char* text, std::size_t count);

  ByteSource& source_;
  Encoding encoding_;
  std::string undecoded_;
  bool afterCr_ = false;
};

}  // namespace TslTool
