#include <tool/io/LineReader.h>

#include <tool/frame/InputError.h>

#include <algorithm>

namespace TslTool {

namespace {

// Where a text of DOS ends, often in front of the end of its file.
constexpr char kDosEnd = '\x1a';

}  // namespace

bool LineReader::Fill() {
  buffer_.erase(0, begin_);
  begin_ = 0;
  const std::size_t old = buffer_.size();
  buffer_.resize(old + kMaxLineBytes);
  const std::size_t count = source_.Read(buffer_.data() + old, kMaxLineBytes);
  buffer_.resize(old + count);
  return count > 0;
}

// Behind the last line only, so that nothing that follows one goes unread.
void LineReader::DropDosEnd() {
  while (buffer_.size() > begin_ && buffer_.back() == kDosEnd) buffer_.pop_back();
}

bool LineReader::Next(std::string_view& line) {
  std::size_t end = buffer_.find('\n', begin_);
  while (end == std::string::npos && buffer_.size() - begin_ <= kMaxLineBytes && Fill()) {
    end = buffer_.find('\n', begin_);
  }
  if (end == std::string::npos) DropDosEnd();
  end = std::min(end, buffer_.size());
  if (begin_ == buffer_.size()) return false;
  ++number_;
  if (end - begin_ > kMaxLineBytes) {
    throw InputError(source_.File(), Place(), "longer than 64 KiB; not a text file");
  }
  line = std::string_view(buffer_).substr(begin_, end - begin_);
  if (line.ends_with('\r')) line.remove_suffix(1);
  begin_ = std::min(end + 1, buffer_.size());
  return true;
}

}  // namespace TslTool
