#pragma once
// The counts of a scan, packed for the run file.
//
// Two encodings, named in the file: "u32-zlib", 32-bit unsigned little-endian integers, and
// "f64-zlib", little-endian doubles, for data that are not whole counts. Both are one zlib
// stream.

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace TslTool {

struct PackedCounts {
  std::string encoding;
  std::string bytes;
};

PackedCounts PackCounts(const std::vector<double>& counts);

// Fills `counts` with `points` values. Throws std::runtime_error with a reason, without a
// file's name, if the bytes are damaged or hold another number of values.
void UnpackCounts(std::string_view encoding, std::string_view bytes, std::uint64_t points,
                  std::vector<double>& counts);

}  // namespace TslTool
