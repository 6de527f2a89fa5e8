#include <dlfcn.h>

#include <tslbl/closed/common/ModulePath.h>
#include <tslbl/closed/common/Text.h>
#include <filesystem>

namespace TslCommon {
namespace {
const char kInsideThisModule = 0;
}

HINSTANCE ModuleHandle() { return &kInsideThisModule; }

std::wstring ModuleFileName(HINSTANCE module) {
  Dl_info info{};
  if (dladdr(module, &info) == 0 || info.dli_fname == nullptr) return {};
  // The loader tells the name under which it found the file, which may be a relative one.
  std::error_code failed;
  const auto path = std::filesystem::absolute(info.dli_fname, failed);
  return failed ? std::wstring() : FromUtf8(path.lexically_normal().string());
}

std::wstring ModuleFolder(HINSTANCE module) {
  const std::wstring path = ModuleFileName(module);
  return path.substr(0, path.find_last_of(L'/') + 1);
}

}  // namespace TslCommon
