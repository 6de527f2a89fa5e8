#include <tool/io/KilledProcess.h>

#include <signal.h>
#include <sqlite3.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <fcntl.h>
#include <exception>
#include <stdexcept>
#include <string>

namespace tests {
namespace {

Moment moment_left;

[[noreturn]] void Die() {
  kill(getpid(), SIGKILL);
  for (;;) pause();
}

bool IsLast() { return moment_left.calls-- == 0; }

int Open(const char* name, int flags, mode_t mode) {
  const bool creates = (flags & O_CREAT) != 0 && access(name, F_OK) != 0;
  if (creates && IsLast()) Die();
  return open(name, flags, mode);
}

ssize_t WriteAt(int file, const void* bytes, std::size_t size, off_t at) {
  const bool last = IsLast();
  if (last && !moment_left.half) Die();
  const ssize_t written = pwrite(file, bytes, last ? size / 2 : size, at);
  if (last) Die();
  return written;
}

ssize_t Write(int file, const void* bytes, std::size_t size) {
  const off_t at = lseek(file, 0, SEEK_CUR);
  const ssize_t written = WriteAt(file, bytes, size, at);
  lseek(file, at + written, SEEK_SET);
  return written;
}

int Truncate(int file, off_t size) {
  if (IsLast()) Die();
  return ftruncate(file, size);
}

int Remove(const char* name) {
  if (IsLast()) Die();
  return unlink(name);
}

int ChangeMode(int file, mode_t mode) {
  if (IsLast()) Die();
  return fchmod(file, mode);
}

int ChangeOwner(int file, uid_t user, gid_t group) {
  if (IsLast()) Die();
  return fchown(file, user, group);
}

template <class Function>
void Replace(const char* name, Function* by) {
  sqlite3_vfs* system = sqlite3_vfs_find("unix");
  if (system->xSetSystemCall(system, name, reinterpret_cast<sqlite3_syscall_ptr>(by)) != SQLITE_OK)
    throw std::runtime_error(std::string("SQLite knows no call ") + name);
}

void CountCalls(Moment until) {
  moment_left = until;
  Replace("open", Open);
  Replace("write", Write);
  Replace("pwrite", WriteAt);
  Replace("pwrite64", WriteAt);
  Replace("ftruncate", Truncate);
  Replace("unlink", Remove);
  Replace("fchmod", ChangeMode);
  Replace("fchown", ChangeOwner);
}

}  // namespace

bool IsKilledAt(Moment moment, const std::function<void()>& work) {
  const pid_t id = fork();
  if (id == 0) {
    try {
      CountCalls(moment);
      work();
    } catch (const std::exception&) {
      _exit(1);
    }
    _exit(0);
  }
  int status = 0;
  waitpid(id, &status, 0);
  if (WIFEXITED(status) && WEXITSTATUS(status) != 0) throw std::runtime_error("the work failed");
  return WIFSIGNALED(status);
}

}  // namespace tests
