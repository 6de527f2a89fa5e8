#include <tool/frame/StandardInput.h>

#include <poll.h>
#include <sys/stat.h>
#include <unistd.h>

namespace TslTool {
namespace {

bool IsEmptyAndClosed(int pipe) {
  pollfd asked = {pipe, POLLIN, 0};
  return poll(&asked, 1, 0) == 1 && (asked.revents & (POLLIN | POLLHUP)) == POLLHUP;
}

}  // namespace

bool OffersData(int descriptor) {
  struct stat there = {};
  if (fstat(descriptor, &there) != 0) return false;
  if (S_ISREG(there.st_mode)) return there.st_size > 0;
  return S_ISFIFO(there.st_mode) && !IsEmptyAndClosed(descriptor);
}

bool WasReadInPart(int descriptor) {
  struct stat there = {};
  return fstat(descriptor, &there) == 0 && S_ISREG(there.st_mode) && lseek(descriptor, 0, SEEK_CUR) > 0;
}

}  // namespace TslTool
