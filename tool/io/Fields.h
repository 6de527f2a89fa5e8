#pragma once
// Cuts a line of a table into its fields.

#include <string_view>
#include <vector>

namespace TslTool {

constexpr std::string_view kBlanks = " \t\v\f";

// The text without the blanks around it.
std::string_view Trim(std::string_view text);

// Whether a line has nothing but blanks, separators and quotes, as an empty row of a sheet.
bool IsEmptyRow(std::string_view line);

// `separator` is ',', ';' or '\t', each of which ends a field, or ' ' for any run of blanks and tabs. A
// separator inside double quotes is none. Blanks and quotes around a field are left out, and so are empty
// fields at the end of the line. The fields are valid as long as the line.
void SplitFields(std::string_view line, char separator, std::vector<std::string_view>& fields);

}  // namespace TslTool
