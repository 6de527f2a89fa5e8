#pragma once
// Where a peak table that was interrupted ends, so that it can be resumed.

#include <cstdint>
#include <optional>
#include <string>

namespace TslTool {

// The last scan that is certainly whole, as rows of a later one follow.
struct TableEnd {
  std::uint32_t scan = 0;
  std::uint32_t first = 0;  // scan of the table
  std::uint64_t bytes = 0;  // of the table before that scan's rows
  std::string rows;         // of that scan, with their line ends
};

// Reads a table of the form "tsv" from a file. Nothing if no scan of it is certainly whole.
// Throws InputError if the file does not begin with `head`, or holds a line that is no row.
std::optional<TableEnd> FindTableEnd(const std::string& file, const std::string& head);

}  // namespace TslTool
