#pragma once
// Edits of groups of overlapping peaks, as a user lists them.

#include <cstdint>
#include <map>
#include <string>
#include <vector>

namespace TslTool {

struct GroupEdit {
  enum Kind { Add, Remove };
  Kind kind;
  double mz;

  bool operator==(const GroupEdit&) const = default;
};

// In the order in which they are made, by scan number.
using EditsByScan = std::map<std::uint32_t, std::vector<GroupEdit>>;

// Reads a file of edits (EditLines.h): a line "SCAN add MZ" or "SCAN remove MZ" for each. Throws InputError
// with the line and the value that is wrong.
EditsByScan ReadEdits(const std::string& file);

}  // namespace TslTool
