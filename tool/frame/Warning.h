#pragma once
// What the user is told on standard error: every message passes here, so that nothing in it, such as the name
// of a file, can do anything to a terminal (Visible.h).

#include <string>
#include <vector>

namespace TslTool {

// A line "tslbl: warning: TEXT" on standard error, where the text begins with the file that it
// is about. Never fails: a warning that cannot be shown must not undo what was done.
void Warn(const std::string& text);

// The same for errors and for what is not odd: a line "tslbl: TEXT".
void Tell(const std::string& text);

// A line for each of `texts`, all about one file.
void Warn(const std::string& file, const std::vector<std::string>& texts);

// The same for what is not odd and worth knowing: lines "tslbl: FILE: TEXT".
void Tell(const std::string& file, const std::vector<std::string>& texts);

}  // namespace TslTool
