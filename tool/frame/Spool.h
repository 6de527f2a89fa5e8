#pragma once
// Lines that wait on the disk until it is known what stands before them.

#include <cstdint>
#include <cstdio>
#include <functional>
#include <memory>
#include <string>
#include <string_view>

namespace TslTool {

// The file has no name: whatever becomes of the process, nothing of it stays. Failures throw
// std::runtime_error with the folder and the system's reason.
class Spool {
 public:
  explicit Spool(const std::string& folder);

  void Write(std::string_view text);
  std::uint64_t Size() const { return size_; }  // bytes
  // Gives every line with its end to `use`, and holds one at a time.
  void ForEachLine(const std::function<void(std::string_view line)>& use);

 private:
  [[noreturn]] void Fail(const char* what) const;

  struct Close {
    void operator()(std::FILE* file) const { std::fclose(file); }
  };
  std::string folder_;
  std::unique_ptr<std::FILE, Close> file_;
  std::uint64_t size_ = 0;
};

}  // namespace TslTool
