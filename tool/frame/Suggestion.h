#pragma once
// What may have been meant by a word that is not known.

#include <string>
#include <vector>

namespace TslTool {

// The one of `known` that is nearest to `word`, or empty if none is near: the same but for capitals and
// dashes in front, or one that begins with it, or one that a third of its letters, at least one, wrongly
// typed, left out, added or exchanged with the next makes of it. Of equally near ones the first.
std::string Suggestion(const std::string& word, const std::vector<std::string>& known);

}  // namespace TslTool
