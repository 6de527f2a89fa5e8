#pragma once
// The checksum SHA-1 (FIPS 180-4), by which mzML files tell whether they, and the files they were made of,
// are as they were.

#include <memory>
#include <string>
#include <string_view>

namespace TslTool {

class Sha1 {
 public:
  Sha1();
  ~Sha1();
  void Add(std::string_view bytes);
  // Of all that was added, 40 hexadecimal digits in small letters. Call it once, at the end.
  std::string Text();

 private:
  struct Impl;
  std::unique_ptr<Impl> impl_;
};

// Of a file; a command that is interrupted ends here, too. Throws InputError if it cannot be read.
std::string Sha1OfFile(const std::string& file);

}  // namespace TslTool
