#include <tslbl/closed/common/WholeFile.h>

#include <sys/stat.h>
#include <unistd.h>

#include <fcntl.h>
#include <tslbl/closed/common/Text.h>
#include <cerrno>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <optional>

namespace TslCommon {
namespace {

namespace fs = std::filesystem;

constexpr int kMostAttempts = 1000;

bool Write(const std::string& path, std::string_view bytes) {
  std::ofstream out(path, std::ios::binary | std::ios::trunc);
  out.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
  out.close();
  return out.good();
}

// An empty file of a new name, with the permissions that the user gives to new files; empty if there can be
// none.
std::string NewFileBeside(const std::string& path) {
  for (int attempt = 0; attempt < kMostAttempts; ++attempt) {
    std::string name = path + '.' + std::to_string(getpid()) + '.' + std::to_string(attempt);
    const int descriptor = open(name.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0666);
    if (descriptor >= 0) {
      close(descriptor);
      return name;
    }
    if (errno != EEXIST) break;
  }
  return "";
}

// `mode` is that of the file that is replaced, if there is one.
bool Replace(const std::string& path, std::string_view bytes, std::optional<mode_t> mode) {
  const std::string beside = NewFileBeside(path);
  if (beside.empty()) return false;
  std::error_code failure;
  if ((!mode || chmod(beside.c_str(), *mode) == 0) && Write(beside, bytes)) {
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
  if (stat(name.c_str(), &there) != 0) return Replace(name, bytes, std::nullopt);
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
