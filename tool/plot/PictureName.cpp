#include <tool/plot/PictureName.h>

#include <fmt/format.h>

#include <tool/frame/UsageError.h>
#include <algorithm>
#include <cctype>
#include <filesystem>

namespace TslTool {

void RequirePictureName(const std::string& option, const std::string& file) {
  std::string ending = std::filesystem::path(file).extension().string();
  std::ranges::transform(ending, ending.begin(), [](unsigned char letter) { return std::tolower(letter); });
  if (ending.empty() || ending == ".svg") return;
  throw UsageError(fmt::format("{}: pictures are SVG, and {} ends in {}", option, file, ending));
}

}  // namespace TslTool
