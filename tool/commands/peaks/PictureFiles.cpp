#include <tool/commands/peaks/PictureFiles.h>

#include <fmt/format.h>

#include <tool/commands/peaks/TableNames.h>
#include <tool/frame/InputError.h>
#include <tool/io/InputPath.h>
#include <algorithm>
#include <filesystem>
#include <utility>

namespace TslTool {
namespace {

std::string StemFor(const std::string& input) {
  std::string name = InputName(input);
  if (name == input) return StemOf(input);
  std::ranges::replace(name, ' ', '-');
  return name;
}

}  // namespace

PictureFiles::PictureFiles(const std::string& input, const std::string& file, const std::string& folder)
    : input_(input), folder_(folder) {
  if (!file.empty()) file_.emplace(file);
}

void PictureFiles::Write(std::uint32_t scan, const std::string& picture) {
  if (file_) WriteFile(picture);
  if (folder_.empty()) return;
  if (drawn_.empty()) MakeFolder(folder_);
  const std::string name = NameFor(scan);
  if (!input_.empty() && SameFile(name, input_))
    throw InputError(InputName(input_), "", fmt::format("the picture {} would be written over it", name));
  Output output(name);
  output.Write(picture);
  output.Commit();
}

void PictureFiles::WriteFile(const std::string& picture) {
  if (std::exchange(isDrawn_, true))
    throw InputError(InputName(input_), "",
                     "--plot draws one spectrum, and there are several; choose one with --scan, or draw all "
                     "with --plot-dir");
  file_->Write(picture);
}

std::string PictureFiles::NameFor(std::uint32_t scan) {
  const std::uint64_t count = ++drawn_[scan];
  const std::string again = count == 1 ? "" : fmt::format(".{}", count);
  const std::string name = fmt::format("{}.scan{}{}.svg", StemFor(input_), scan, again);
  return (std::filesystem::path(folder_) / name).string();
}

void PictureFiles::Commit() {
  if (file_) file_->Commit();
}

}  // namespace TslTool
