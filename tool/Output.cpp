#include <tool/Output.h>

#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>
#include <filesystem>
#include <stdexcept>

namespace TslTool {
namespace {

mode_t UsualMode() {
  const mode_t mask = umask(0);
  umask(mask);
  return 0666 & ~mask;
}

// A new file beside the final one: renaming works within one file system only.
std::FILE* OpenBeside(const std::string& path, mode_t mode, std::string& temporary) {
  temporary = path + ".XXXXXX";
  const int descriptor = mkstemp(temporary.data());
  if (descriptor < 0) {
    temporary.clear();
    return nullptr;
  }
  fchmod(descriptor, mode);
  return fdopen(descriptor, "wb");
}

std::string Resolved(const std::string& path) {
  std::error_code unknown;
  const auto target = std::filesystem::canonical(path, unknown);
  return unknown ? path : target.string();
}

}  // namespace

Output::Output(const std::string& path) : path_(path) {
  Open();
  if (file_ == nullptr) Fail();
}

void Output::Open() {
  struct stat there = {};
  if (path_.empty()) {
    file_ = stdout;
  } else if (stat(path_.c_str(), &there) != 0) {
    file_ = OpenBeside(path_, UsualMode(), temporary_);
  } else if (!S_ISREG(there.st_mode)) {
    file_ = std::fopen(path_.c_str(), "wb");
  } else if (access(path_.c_str(), W_OK) == 0) {
    path_ = Resolved(path_);
    file_ = OpenBeside(path_, there.st_mode & 0777, temporary_);
  }
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
  if (temporary_.empty()) return;
  if (fsync(fileno(file_)) != 0) Fail();
  const bool closed = std::fclose(file_) == 0;
  file_ = nullptr;
  if (!closed || std::rename(temporary_.c_str(), path_.c_str()) != 0) Fail();
  temporary_.clear();
}

void Output::Fail() const {
  if (errno == EPIPE) throw ReaderGone();
  const std::string where = path_.empty() ? "standard output" : path_;
  throw std::runtime_error(where + ": cannot be written: " + std::strerror(errno));
}

bool SameFile(const std::string& a, const std::string& b) {
  namespace fs = std::filesystem;
  std::error_code unknown;
  const auto whole = [&](const std::string& path) {
    return fs::weakly_canonical(fs::absolute(path), unknown);
  };
  return fs::equivalent(a, b, unknown) || whole(a) == whole(b);
}

}  // namespace TslTool
