#pragma once
// Cuts the text of a file into lines.

#include <cstdint>
#include <string>
#include <string_view>

#include <tool/io/TextSource.h>

namespace TslTool {

class LineReader {
 public:
  // A longer line is no line of text: InputError.
  static constexpr std::size_t kMaxLineBytes = 64 * std::size_t{1024};

  explicit LineReader(ByteSource& source) : source_(source) {}

  // The next line without its end (LF, CRLF or CR), valid until the next call; false at the end. The last
  // line may lack its end; a Ctrl-Z behind it is none of it.
  bool Next(std::string_view& line);

  const std::string& File() const { return source_.File(); }
  std::uint64_t Number() const { return number_; }  // 1-based, of the line returned last
  std::string Place() const { return "line " + std::to_string(number_); }

 private:
  bool Fill();
  void DropDosEnd();

  TextSource source_;
  std::string buffer_;
  std::size_t begin_ = 0;
  std::uint64_t number_ = 0;
};

}  // namespace TslTool
