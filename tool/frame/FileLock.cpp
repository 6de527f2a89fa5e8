#include <tool/frame/FileLock.h>

#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <fcntl.h>
#include <cerrno>
#include <cstring>
#include <stdexcept>

namespace TslTool {
namespace {

[[noreturn]] void Fail(const std::string& file, const std::string& reason) {
  throw std::runtime_error(file + ": " + reason);
}

// Whether the name still leads to what was opened.
bool IsAt(int descriptor, const std::string& file) {
  struct stat opened = {};
  struct stat there = {};
  return fstat(descriptor, &opened) == 0 && stat(file.c_str(), &there) == 0 &&
         opened.st_dev == there.st_dev && opened.st_ino == there.st_ino;
}

}  // namespace

FileLock::FileLock(const std::string& file) {
  for (;;) {
    struct stat there = {};
    if (stat(file.c_str(), &there) != 0) Fail(file, std::string("cannot be opened: ") + std::strerror(errno));
    if (!S_ISREG(there.st_mode)) Fail(file, "is not a regular file");
    descriptor_ = open(file.c_str(), O_RDONLY | O_CLOEXEC);
    if (descriptor_ < 0) Fail(file, std::string("cannot be opened: ") + std::strerror(errno));
    const bool locked = flock(descriptor_, LOCK_EX) == 0;
    const bool interrupted = !locked && errno == EINTR;
    if (!interrupted && (!locked || IsAt(descriptor_, file))) return;
    close(descriptor_);
    if (interrupted) Fail(file, "interrupted");
  }
}

FileLock::~FileLock() { close(descriptor_); }

void CreateExclusive(const std::string& file) {
  const int descriptor = open(file.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0666);
  if (descriptor < 0 && errno == EEXIST) Fail(file, "exists already");
  if (descriptor < 0) Fail(file, std::string("cannot be written: ") + std::strerror(errno));
  close(descriptor);
}

}  // namespace TslTool
