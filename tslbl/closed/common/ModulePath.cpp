#include <tslbl/closed/common/ModulePath.h>

#include <dlfcn.h>

#include <tslbl/closed/common/Text.h>
#include <filesystem>

namespace TslCommon {
namespace {
const char kInsideThisModule = 0;

// The loader tells the name under which it found the file. A relative one holds for the
// folder in which the process was at that time.
std::wstring FileNameOf(HINSTANCE module) {
  Dl_info info{};
  if (dladdr(module, &info) == 0 || info.dli_fname == nullptr) return {};
  std::error_code failed;
  const auto path = std::filesystem::absolute(info.dli_fname, failed);
  return failed ? std::wstring() : FromUtf8(path.string());
}

// Asked for while the library is loaded, before anybody can have changed the folder.
const std::wstring thisModule = FileNameOf(&kInsideThisModule);

}  // namespace

HINSTANCE ModuleHandle() { return &kInsideThisModule; }

std::wstring ModuleFileName(HINSTANCE module) {
  return module == ModuleHandle() ? thisModule : FileNameOf(module);
}

std::wstring ModuleFolder(HINSTANCE module) {
  const std::wstring path = ModuleFileName(module);
  return path.substr(0, path.find_last_of(L'/') + 1);
}

}  // namespace TslCommon
