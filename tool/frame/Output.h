#pragma once
// Where a command's result goes: standard output, or a file that appears whole or not at
// all.

#include <sys/types.h>

#include <cstdint>
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

// An empty path or "-" means standard output. A file is written beside its final name and takes
// that name in Commit, with the permissions of a file that it replaces; without Commit
// nothing of it stays. A symbolic link is followed; a device or a pipe is written to
// directly; on a terminal control characters
// other than ends of lines and tabs are made visible. Failures throw std::runtime_error with the file's name
// and the system's reason.
class Output {
 public:
  // How the file is named until Commit. Resumable: FILE.part, which stays if the process is
  // killed and can be resumed. Only one process at a time may write it.
  enum class Beside { Temporary, Resumable };

  explicit Output(const std::string& path, Beside beside = Beside::Temporary);
  ~Output();
  Output(const Output&) = delete;
  Output& operator=(const Output&) = delete;

  // Where there is room for what belongs to it: the folder of its file, else that for temporary files.
  std::string Folder() const;

  // The name of the resumable file; empty without one.
  std::string Part() const;
  // Keeps the first `bytes` of the part that an earlier process left, to go on behind them.
  // Without this the first Write replaces it.
  void ResumeAt(std::uint64_t bytes);
  // The part stays, even though there will be no Commit.
  void KeepPart();

  void Write(std::string_view text);
  // Everything was written; call it once, at the end.
  void Commit();

 private:
  void Open();
  std::FILE* OpenBeside(mode_t mode);
  void Begin();
  [[noreturn]] void Fail() const;

  std::string path_;
  Beside beside_;
  std::string temporary_;  // empty: written to directly
  std::FILE* file_ = nullptr;
  std::uint64_t kept_ = 0;  // bytes of an earlier process
  bool begun_ = false;      // this one has written
  bool keep_ = false;
};

bool IsStandardOutput(const std::string& path);

// Whether two paths lead to one file, or would if it existed.
bool SameFile(const std::string& a, const std::string& b);

}  // namespace TslTool
