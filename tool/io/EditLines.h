#pragma once
// A file of edits that a user lists: a line for each, which begins with the number of a scan.

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace TslTool {

using EditFields = std::vector<std::string_view>;

// Calls take(scan, fields) for each line, with the fields behind the scan. They stand between tabs or blanks.
// Lines that begin with "#", empty ones and a first line of names, which begins with "scan", are passed over.
// Throws InputError with the line and the value that is wrong; a std::runtime_error of `take` becomes one.
void ReadEditLines(const std::string& file,
                   const std::function<void(std::uint32_t scan, const EditFields& fields)>& take);

// An m/z among the fields. Throws std::runtime_error with the text that is wrong.
double EditMz(std::string_view text);

}  // namespace TslTool
