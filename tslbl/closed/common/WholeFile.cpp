#include <tslbl/closed/common/WholeFile.h>

#include <sys/stat.h>
#include <unistd.h>

#include <tslbl/closed/common/Text.h>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>

namespace TslCommon {
namespace {

namespace fs = std::filesystem;

bool Write(const std::string& path, std::string_view bytes) {
  std::ofstream out(path, std::ios::binary | std::ios::trunc);
  out.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
  out.close();
  return out.good();
}

mode_t UsualMode() {
  const mode_t mask = umask(0);
  umask(mask);
  return 0666 & ~mask;
}

// An empty file for this process alone; empty if there can be none.
std::string NewFileBeside(const std::string& path, mode_t mode) {
  std::string name = path + ".XXXXXX";
  const int descriptor = mkstemp(name.data());
  if (descriptor < 0) return "";
  fchmod(descriptor, mode);
  close(descriptor);
  return name;
}

bool Replace(const std::string& path, std::string_view bytes, mode_t mode) {
  const std::string beside = NewFileBeside(path, mode);
  if (beside.empty()) return false;
  std::error_code failure;
  if (Write(beside, bytes)) {
    fs::rename(beside, path, failure);
    if (!failure) return true;
  }
  fs::remove(beside, failure);
  return false;
}

}  // namespace

bool WriteWholeFile(const std::wstring& path, std::string_view bytes) {
  const std::string name = ToUtf8(path);
  struct stat there = {};
  if (stat(name.c_str(), &there) != 0) return Replace(name, bytes, UsualMode());
  if (!S_ISREG(there.st_mode)) return Write(name, bytes);
  if (access(name.c_str(), W_OK) != 0) return false;
  std::error_code unknown;
  const fs::path target = fs::canonical(name, unknown);
  return Replace(unknown ? name : target.string(), bytes, there.st_mode & 0777);
}

bool ReadWholeFile(const std::wstring& path, std::string& bytes) {
  const std::string name = ToUtf8(path);
  std::error_code unknown;
  std::ifstream in(name, std::ios::binary);
  if (!in || fs::is_directory(name, unknown)) return false;
  bytes.assign(std::istreambuf_iterator<char>(in), {});
  return !in.bad();
}

}  // namespace TslCommon
