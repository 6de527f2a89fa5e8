#include <tool/frame/Output.h>

#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <fcntl.h>
#include <tool/frame/Visible.h>
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

// A file of that name for this process alone; -1 if it cannot be had.
int OpenLocked(const std::string& name) {
  const int descriptor = open(name.c_str(), O_RDWR | O_CREAT | O_CLOEXEC, 0600);
  if (descriptor < 0 || flock(descriptor, LOCK_EX | LOCK_NB) == 0) return descriptor;
  if (errno == EWOULDBLOCK) {
    close(descriptor);
    throw std::runtime_error(name + ": another process is writing it");
  }
  return descriptor;  // a file system without locks
}

// What a link leads to, which need not be there yet.
std::string Resolved(const std::string& path) {
  namespace fs = std::filesystem;
  std::error_code unknown;
  const fs::path target = fs::canonical(path, unknown);
  if (!unknown) return target.string();
  if (unknown != std::errc::no_such_file_or_directory || !fs::is_symlink(path, unknown)) return path;
  return Resolved((fs::path(path).parent_path() / fs::read_symlink(path)).string());
}

}  // namespace

Output::Output(const std::string& path, Beside beside)
    : path_(IsStandardOutput(path) ? "" : path), beside_(beside) {
  Open();
  if (file_ == nullptr) Fail();
}

// A file beside the final one: renaming works within one file system only.
std::FILE* Output::OpenBeside(mode_t mode) {
  const bool resumable = beside_ == Beside::Resumable;
  temporary_ = path_ + (resumable ? ".part" : ".XXXXXX");
  const int descriptor = resumable ? OpenLocked(temporary_) : mkstemp(temporary_.data());
  if (descriptor < 0) {
    temporary_.clear();
    return nullptr;
  }
  fchmod(descriptor, mode);
  return fdopen(descriptor, "wb");
}

void Output::Open() {
  struct stat there = {};
  if (path_.empty()) {
    file_ = stdout;
  } else if (stat(path_.c_str(), &there) != 0) {
    path_ = Resolved(path_);
    file_ = OpenBeside(UsualMode());
  } else if (!S_ISREG(there.st_mode)) {
    file_ = std::fopen(path_.c_str(), "wb");
  } else if (access(path_.c_str(), W_OK) == 0) {
    path_ = Resolved(path_);
    file_ = OpenBeside(there.st_mode & 0777);
    // Root replaces a file for its owner, who must not lose access to it.
    if (file_ != nullptr) [[maybe_unused]]
      const int ignored = fchown(fileno(file_), there.st_uid, there.st_gid);
  }
}

Output::~Output() {
  if (file_ != nullptr && file_ != stdout) std::fclose(file_);
  // What an earlier process left stays until this one has written.
  struct stat there = {};
  const bool earlier = !begun_ && stat(temporary_.c_str(), &there) == 0 && there.st_size > 0;
  if (!temporary_.empty() && !keep_ && !earlier) unlink(temporary_.c_str());
}

std::string Output::Folder() const {
  namespace fs = std::filesystem;
  if (temporary_.empty()) return fs::temp_directory_path().string();
  return fs::absolute(temporary_).parent_path().string();
}

std::string Output::Part() const { return beside_ == Beside::Resumable ? temporary_ : ""; }

void Output::ResumeAt(std::uint64_t bytes) { kept_ = bytes; }

void Output::KeepPart() { keep_ = true; }

void Output::Begin() {
  begun_ = true;
  const auto end = static_cast<off_t>(kept_);
  if (Part().empty()) return;
  if (ftruncate(fileno(file_), end) != 0 || lseek(fileno(file_), end, SEEK_SET) != end) Fail();
}

void Output::Write(std::string_view text) {
  if (!begun_) Begin();
  const std::string shown = isatty(fileno(file_)) == 1 ? Visible(text, "\n\t") : "";
  if (!shown.empty()) text = shown;
  if (std::fwrite(text.data(), 1, text.size(), file_) != text.size()) Fail();
}

void Output::Commit() {
  if (!begun_) Begin();
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

bool IsStandardOutput(const std::string& path) { return path.empty() || path == "-"; }

bool SameFile(const std::string& a, const std::string& b) {
  namespace fs = std::filesystem;
  std::error_code unknown;
  const auto whole = [](const std::string& path) {
    std::error_code untold;  // of a pipe, for one
    const fs::path target = fs::weakly_canonical(fs::absolute(path), untold);
    return untold ? fs::absolute(path) : target;
  };
  return fs::equivalent(a, b, unknown) || whole(a) == whole(b);
}

}  // namespace TslTool
