#pragma once
// What a file is that holds no mzML and no columns of text, and what its owner can do.

#include <string>
#include <string_view>

namespace TslTool {

// Whether these first bytes are no text, whatever its encoding: there are control characters in the first
// line.
bool IsBinary(std::string_view head);

// One sentence for a file with these first bytes, unpacked if it is gzip: by its content, or, if that tells
// nothing and is binary, by its name. Empty if it may be mzML or text.
std::string DescribeForeign(std::string_view head, const std::string& file);

// One sentence for an SQLite file that is no run, by its name.
std::string DescribeDatabase(const std::string& file);

// One sentence for a folder, which may be one that an instrument's software keeps its data in.
std::string DescribeFolder(const std::string& folder);

}  // namespace TslTool
