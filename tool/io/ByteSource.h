#pragma once
// The bytes of a file from front to back, unpacked if the file is gzip, whatever its name.

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

struct gzFile_s;

namespace TslTool {

// Every failure (missing file, folder, no permission, damaged or cut gzip data) is an InputError.
class ByteSource {
 public:
  explicit ByteSource(const std::string& file);

  const std::string& File() const { return file_; }

  // The first bytes, at most 4096 of them, without consuming them. Only before the first Read.
  std::string_view Head() const { return head_; }

  // True if the bytes are being unpacked.
  bool IsGzip() const;

  // Reads up to `size` bytes and returns their number; 0 is the end.
  std::size_t Read(char* to, std::size_t size);

 private:
  struct Closer {
    void operator()(gzFile_s* handle) const;
  };

  std::size_t ReadOn(char* to, std::size_t size);

  std::string file_;
  std::unique_ptr<gzFile_s, Closer> handle_;
  std::string head_;
  std::size_t headRead_ = 0;
};

// Unpacks a gzip file to its end and throws InputError if a checksum or a length is wrong. The sum stands at
// the end of the data, so that only a pass of its own keeps damaged scans from being handed out before it.
// Returns how many bytes behind the data are none of them, and not read; zeros alone, as tapes have, are 0.
std::uint64_t VerifyGzip(const std::string& file);

}  // namespace TslTool
