#pragma once
// A file that lives as long as its test.

#include <unistd.h>
#include <zlib.h>

#include <filesystem>
#include <fstream>
#include <stdexcept>
#include <string>
#include <string_view>

namespace tests {

class TempFile {
 public:
  TempFile(const std::string& name, std::string_view content) {
    std::string pattern = (std::filesystem::temp_directory_path() / "tslbl-test-XXXXXX").string();
    if (!mkdtemp(pattern.data())) throw std::runtime_error("no temporary folder");
    folder_ = pattern;
    path_ = (folder_ / name).string();
    Write(content);
  }
  ~TempFile() {
    std::error_code ignored;
    std::filesystem::remove_all(folder_, ignored);
  }
  TempFile(const TempFile&) = delete;
  TempFile& operator=(const TempFile&) = delete;

  void Write(std::string_view content) const { std::ofstream(path_, std::ios::binary) << content; }
  const std::string& Path() const { return path_; }
  std::string Folder() const { return folder_.string(); }

 private:
  std::filesystem::path folder_;
  std::string path_;
};

inline std::string Gzip(std::string_view data) {
  const TempFile file("packed.gz", "");
  gzFile out = gzopen(file.Path().c_str(), "wb");
  gzwrite(out, data.data(), static_cast<unsigned>(data.size()));
  gzclose(out);
  std::ifstream in(file.Path(), std::ios::binary);
  return std::string(std::istreambuf_iterator<char>(in), {});
}

}  // namespace tests
