#pragma once
// Where the pictures of evaluated spectra go: one to a file, or each to a file of its own in a folder.

#include <tool/frame/Output.h>
#include <cstdint>
#include <map>
#include <optional>
#include <string>

namespace TslTool {

// With neither a file nor a folder there are no pictures. One thread at a time.
class PictureFiles {
 public:
  // `input` is the path of what the spectra come from; it names the pictures of a folder. Throws
  // std::runtime_error for a file that cannot be made.
  PictureFiles(const std::string& input, const std::string& file, const std::string& folder);

  bool AreWanted() const { return file_ || !folder_.empty(); }
  // In a folder a picture is whole at once and named STEM.scanN.svg; a file with several scans of one number
  // has STEM.scanN.2.svg and so on as well. The folder is made if it is not there. Throws InputError for a
  // folder that cannot be made, for the second picture of a file, and for one that would take the place of
  // the input.
  void Write(std::uint32_t scan, const std::string& picture);
  // The picture of a file takes its name.
  void Commit();

 private:
  void WriteFile(const std::string& picture);
  std::string NameFor(std::uint32_t scan);

  std::string input_;
  std::optional<Output> file_;
  bool isDrawn_ = false;
  std::string folder_;
  std::map<std::uint32_t, std::uint64_t> drawn_;  // in the folder, by scan number
};

}  // namespace TslTool
