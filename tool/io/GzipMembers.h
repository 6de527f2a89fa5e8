#pragma once
// The members of a gzip file, and what stands behind them: gzread passes over it without a word.

#include <zlib.h>

#include <cstdint>
#include <fstream>
#include <optional>
#include <string>
#include <vector>

namespace TslTool {

class GzipMembers {
 public:
  explicit GzipMembers(const std::string& file);
  GzipMembers(const GzipMembers&) = delete;
  GzipMembers& operator=(const GzipMembers&) = delete;
  ~GzipMembers();

  // Unpacks all members and returns how many bytes follow them; 0 if these are zeros only. Nothing if a
  // member is cut or damaged, or the file cannot be read.
  std::optional<std::uint64_t> BytesBehind();

 private:
  bool Fill();
  bool IsAtMember();
  bool PassMember();
  std::uint64_t CountRest();

  std::ifstream in_;
  std::vector<char> packed_;
  std::vector<char> unpacked_;
  z_stream stream_{};
};

}  // namespace TslTool
