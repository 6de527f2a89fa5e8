#pragma once
// A working directory for debug files of charge state deconvolution, which are switched on while one lives,
// and what is said on std::wcout meanwhile.

#include <stdlib.h>

#include <tslbl/chargestate/CSDebugFiles.h>
#include <tslbl/closed/common/Text.h>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <iterator>
#include <set>
#include <sstream>
#include <string>

namespace tests {

class DebugFolder {
 public:
  DebugFolder() {
    std::string pattern = (std::filesystem::temp_directory_path() / "tslbl-csd-XXXXXX").string();
    folder_ = mkdtemp(pattern.data());
    std::filesystem::current_path(folder_);
    TslBL::csDebugFiles = 1;
  }
  DebugFolder(const DebugFolder&) = delete;
  DebugFolder& operator=(const DebugFolder&) = delete;
  ~DebugFolder() {
    TslBL::csDebugFiles = 0;
    std::wcout.rdbuf(console_);
    std::filesystem::current_path(before_);
    std::filesystem::remove_all(folder_);
  }

  std::set<std::string> Files() const {
    std::set<std::string> names;
    for (const auto& entry : std::filesystem::directory_iterator(folder_))
      names.insert(entry.path().filename().string());
    return names;
  }
  std::string Read(const std::string& name) const {
    std::ifstream in(folder_ / name, std::ios::binary);
    return {std::istreambuf_iterator<char>(in), {}};
  }
  std::wstring Said() const { return said_.str(); }
  const std::filesystem::path& Path() const { return folder_; }

 private:
  std::filesystem::path before_ = std::filesystem::current_path();
  std::filesystem::path folder_;
  std::wostringstream said_;
  std::wstreambuf* console_ = std::wcout.rdbuf(said_.rdbuf());
};

}  // namespace tests
