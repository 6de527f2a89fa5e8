#pragma once
// Where a command's result goes: standard output, or a file that appears whole or not at
// all.

#include <cstdio>
#include <string>
#include <string_view>

namespace TslTool {

// An empty path means standard output. A file is written beside its final name and takes
// that name in Commit; without it nothing of it stays. Failures throw std::runtime_error
// with the file's name and the system's reason.
class Output {
 public:
  explicit Output(const std::string& path);
  ~Output();
  Output(const Output&) = delete;
  Output& operator=(const Output&) = delete;

  void Write(std::string_view text);
  // Everything was written; call it once, at the end.
  void Commit();

 private:
  [[noreturn]] void Fail() const;

  std::string path_;
  std::string temporary_;
  std::FILE* file_;
};

}  // namespace TslTool
