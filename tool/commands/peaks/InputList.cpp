#include <tool/commands/peaks/InputList.h>

#include <tool/frame/InputError.h>
#include <tool/frame/StandardInput.h>
#include <cerrno>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <string_view>

namespace TslTool {
namespace {

constexpr std::string_view kUtf8Mark = "\xef\xbb\xbf";

bool NamesNothing(const std::string& line) {
  return line.starts_with('#') || line.find_first_not_of(" \t") == std::string::npos;
}

void Open(const std::string& path, const std::string& name, std::ifstream& in) {
  std::error_code unknown;
  if (std::filesystem::is_directory(path, unknown)) throw InputError(name, "", "is a folder, not a file");
  in.open(path, std::ios::binary);
  if (!in) throw InputError(name, "", std::string("cannot be opened: ") + std::strerror(errno));
}

}  // namespace

std::vector<std::string> ReadInputList(const std::string& list) {
  const bool piped = list == "-";
  const std::string name = piped ? kStandardInputName : list;
  std::ifstream in;
  Open(piped ? kStandardInputPath : list, name, in);
  std::vector<std::string> inputs;
  std::string line;
  for (std::size_t number = 1; std::getline(in, line); ++number) {
    if (number == 1 && line.starts_with(kUtf8Mark)) line.erase(0, kUtf8Mark.size());
    if (line.ends_with('\r')) line.pop_back();
    if (line.find('\0') != std::string::npos)
      throw InputError(name, "line " + std::to_string(number), "holds a zero byte; it is no list of names");
    if (!NamesNothing(line)) inputs.push_back(line);
  }
  if (in.bad()) throw InputError(name, "", "cannot be read");
  if (inputs.empty()) throw InputError(name, "", "names no input");
  return inputs;
}

}  // namespace TslTool
