#include <tool/io/ByteSource.h>

#include <zlib.h>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <filesystem>
#include <new>
#include <vector>

#include <tool/frame/InputError.h>
#include <tool/io/GzipMembers.h>

namespace TslTool {

namespace {

constexpr std::size_t kHead = 4096;
constexpr unsigned kBuffer = 256 * 1024;

gzFile OpenHandle(const std::string& file) {
  std::error_code error;
  const auto status = std::filesystem::status(file, error);
  if (!std::filesystem::exists(status)) {
    throw InputError(file, "", "the file does not exist or cannot be reached");
  }
  if (std::filesystem::is_directory(status)) throw InputError(file, "", "is a folder, not a file");
  errno = 0;
  gzFile handle = gzopen(file.c_str(), "rb");
  if (!handle) throw InputError(file, "", std::string("cannot be opened: ") + std::strerror(errno));
  gzbuffer(handle, kBuffer);
  return handle;
}

}  // namespace

void ByteSource::Closer::operator()(gzFile_s* handle) const { gzclose_r(handle); }

ByteSource::ByteSource(const std::string& file) : file_(file), handle_(OpenHandle(file)) {
  head_.resize(kHead);
  head_.resize(ReadOn(head_.data(), kHead));
}

bool ByteSource::IsGzip() const { return gzdirect(handle_.get()) == 0; }

std::size_t ByteSource::Read(char* to, std::size_t size) {
  const std::size_t left = head_.size() - headRead_;
  if (left == 0) return ReadOn(to, size);
  const std::size_t count = std::min(left, size);
  std::copy_n(head_.data() + headRead_, count, to);
  headRead_ += count;
  return count;
}

std::size_t ByteSource::ReadOn(char* to, std::size_t size) {
  const unsigned asked = static_cast<unsigned>(std::min<std::size_t>(size, 1u << 30));
  const int count = gzread(handle_.get(), to, asked);
  int status = Z_OK;
  const char* text = gzerror(handle_.get(), &status);
  if (status == Z_MEM_ERROR) throw std::bad_alloc();
  if (status == Z_BUF_ERROR) throw InputError(file_, "", "the gzip data is cut off");
  if (status == Z_ERRNO) throw InputError(file_, "", std::string("cannot be read: ") + std::strerror(errno));
  if (count < 0 || (status != Z_OK && status != Z_STREAM_END)) {
    const std::string named = file_ + ": ";
    std::string reason = text;
    if (reason.starts_with(named)) reason.erase(0, named.size());
    throw InputError(file_, "", "the gzip data is damaged: " + reason);
  }
  return static_cast<std::size_t>(count);
}

std::uint64_t VerifyGzip(const std::string& file) {
  if (const auto behind = GzipMembers(file).BytesBehind()) return *behind;
  // Not whole: as it is read it tells what is wrong.
  ByteSource source(file);
  std::vector<char> chunk(kBuffer);
  while (source.Read(chunk.data(), chunk.size()) > 0) {
  }
  return 0;
}

}  // namespace TslTool
