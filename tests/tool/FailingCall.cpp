// The linker leads calls of these names here, see cmake/Tests.cmake.
#include <tool/FailingCall.h>

#include <cerrno>
#include <cstdio>

namespace tests {
namespace {

std::string failing;
int error_of_failing = 0;

bool Fails(const char* name) {
  if (failing != name) return false;
  errno = error_of_failing;
  return true;
}

}  // namespace

FailingCall::FailingCall(const std::string& name, int error) {
  failing = name;
  error_of_failing = error;
}

FailingCall::~FailingCall() { failing.clear(); }

extern "C" {

int __real_fsync(int file);
int __real_fclose(std::FILE* file);
int __real_rename(const char* from, const char* to);

int __wrap_fsync(int file) { return Fails("fsync") ? -1 : __real_fsync(file); }

int __wrap_fclose(std::FILE* file) {
  const int result = __real_fclose(file);
  return Fails("fclose") ? EOF : result;
}

int __wrap_rename(const char* from, const char* to) { return Fails("rename") ? -1 : __real_rename(from, to); }
}

}  // namespace tests
