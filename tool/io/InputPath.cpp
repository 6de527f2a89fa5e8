#include <tool/io/InputPath.h>

#include <fcntl.h>
#include <unistd.h>

#include <tool/frame/InputError.h>
#include <tool/frame/StandardInput.h>
#include <tool/io/OpenScans.h>
#include <filesystem>

namespace TslTool {
namespace {

void RequireStandardInput() {
  const auto refuse = [](const char* reason) { throw InputError(kStandardInputName, "", reason); };
  if (fcntl(STDIN_FILENO, F_GETFD) == -1) refuse("is closed");
  if (WasReadInPart(STDIN_FILENO)) refuse("was read in part before; give the name of the file");
  if (IsDatabase(kStandardInputPath)) refuse("a run is read from its file only; give the name of the file");
}

}  // namespace

std::string InputPath(const std::string& input) {
  if (input != "-") return input;
  RequireStandardInput();
  return kStandardInputPath;
}

std::string InputName(const std::string& path) {
  if (path.empty()) return "demonstration run";
  return path == kStandardInputPath ? kStandardInputName : path;
}

std::string StemOf(const std::string& input) {
  std::filesystem::path name = std::filesystem::path(input).filename();
  const std::string packed = name.extension().string();
  if (packed == ".gz" || packed == ".GZ") name = name.stem();
  return name.stem().string();
}

void NamingStandardInput(const std::function<void()>& work) {
  try {
    work();
  } catch (const InputError& e) {
    throw InputError(InputName(e.File()), e.Place(), e.Reason());
  }
}

}  // namespace TslTool
