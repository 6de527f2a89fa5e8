#include <tool/commands/manual/ShellText.h>

namespace TslTool {
namespace {

void ReplaceAll(std::string& text, const std::string& from, const std::string& to) {
  for (std::size_t at = text.find(from); at != std::string::npos; at = text.find(from, at + to.size()))
    text.replace(at, from.size(), to);
}

}  // namespace

std::string Quoted(const std::string& text) {
  std::string quoted = text;
  ReplaceAll(quoted, "'", "'\\''");
  return "'" + quoted + "'";
}

std::string Filled(std::string script, const std::vector<std::pair<std::string, std::string>>& texts) {
  for (const auto& [name, text] : texts) ReplaceAll(script, "@" + name + "@", text);
  return script;
}

}  // namespace TslTool
