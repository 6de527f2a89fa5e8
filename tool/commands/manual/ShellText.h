#pragma once
// Text of shell scripts.

#include <string>
#include <utility>
#include <vector>

namespace TslTool {

// In single quotes, as bash and zsh read them.
std::string Quoted(const std::string& text);

// The template with each @NAME@ replaced by its text.
std::string Filled(std::string script, const std::vector<std::pair<std::string, std::string>>& texts);

}  // namespace TslTool
