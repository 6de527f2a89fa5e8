#pragma once
// What the user should know and does not stop the work.

#include <string>
#include <vector>

namespace TslTool {

// A line "tslbl: warning: TEXT" on standard error, where the text begins with the file that it
// is about. Never fails: a warning that cannot be shown must not undo what was done.
void Warn(const std::string& text);

// The same for what is not odd: a line "tslbl: TEXT".
void Tell(const std::string& text);

// A line for each of `texts`, all about one file.
void Warn(const std::string& file, const std::vector<std::string>& texts);

// The same for what is not odd and worth knowing: lines "tslbl: FILE: TEXT".
void Tell(const std::string& file, const std::vector<std::string>& texts);

}  // namespace TslTool
