#pragma once
// Where a command's result goes: standard output, or a file that appears whole or not at
// all.

#include <cstdio>
#include <exception>
#include <string>
#include <string_view>

namespace TslTool {

// Whoever read our standard output has closed it, as `head` does.
class ReaderGone : public std::exception {
 public:
  const char* what() const noexcept override { return "standard output was closed by its reader"; }
};

// An empty path means standard output. A file is written beside its final name and takes
// that name in Commit, with the permissions of a file that it replaces; without Commit
// nothing of it stays. A symbolic link is followed; a device or a pipe is written to
// directly. Failures throw std::runtime_error with the file's name and the system's reason.
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
  void Open();
  [[noreturn]] void Fail() const;

  std::string path_;
  std::string temporary_;  // empty: written to directly
  std::FILE* file_ = nullptr;
};

// Whether two paths lead to one file, or would, were it there.
bool SameFile(const std::string& a, const std::string& b);

}  // namespace TslTool
