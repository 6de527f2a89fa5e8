#pragma once
// A run may be read while it is acquired, and a document of results reads it more than once.

#include <cstdint>
#include <string>
#include <vector>

namespace TslTool {

class RunGrowth {
 public:
  // Notes the scans that there are now. An empty `run` is the demonstration run, which never grows. Throws
  // InputError for what is no run.
  explicit RunGrowth(const std::string& run);

  // One that tells how many scans came since then, or none.
  std::vector<std::string> Warnings() const;

 private:
  std::string run_;
  std::uint64_t before_;
};

}  // namespace TslTool
