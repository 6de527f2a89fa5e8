#include <sys/stat.h>
#include <tool/Output.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>
#include <stdexcept>

namespace TslTool {
namespace {

// A new file beside the final one: renaming works within one file system only.
std::FILE* OpenBeside(const std::string& path, std::string& temporary) {
  temporary = path + ".XXXXXX";
  const int descriptor = mkstemp(temporary.data());
  if (descriptor < 0) {
    temporary.clear();
    return nullptr;
  }
  const mode_t mask = umask(0);
  umask(mask);
  fchmod(descriptor, 0666 & ~mask);
  return fdopen(descriptor, "wb");
}

}  // namespace

Output::Output(const std::string& path)
    : path_(path), file_(path.empty() ? stdout : OpenBeside(path, temporary_)) {
  if (file_ == nullptr) Fail();
}

Output::~Output() {
  if (file_ != nullptr && file_ != stdout) std::fclose(file_);
  if (!temporary_.empty()) unlink(temporary_.c_str());
}

void Output::Write(std::string_view text) {
  if (std::fwrite(text.data(), 1, text.size(), file_) != text.size()) Fail();
}

void Output::Commit() {
  if (std::fflush(file_) != 0) Fail();
  if (path_.empty()) return;
  if (fsync(fileno(file_)) != 0) Fail();
  const bool closed = std::fclose(file_) == 0;
  file_ = nullptr;
  if (!closed || std::rename(temporary_.c_str(), path_.c_str()) != 0) Fail();
  temporary_.clear();
}

void Output::Fail() const {
  const std::string where = path_.empty() ? "standard output" : path_;
  throw std::runtime_error(where + ": cannot be written: " + std::strerror(errno));
}

}  // namespace TslTool
