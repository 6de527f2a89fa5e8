#include <tool/commands/manual/CommandList.h>

#include <algorithm>

namespace TslTool {
namespace {

void Append(const Command& command, const std::string& words, std::vector<ListedCommand>& list) {
  Options options;
  if (command.declare) command.declare(options);
  ListedCommand& listed = list.emplace_back(ListedCommand{words, &command, {HelpOption()}});
  if (list.size() == 1) listed.options.push_back(VersionOption());
  std::ranges::copy(options.List(), std::back_inserter(listed.options));
  for (const Command& member : command.family) Append(member, words + ' ' + member.name, list);
}

}  // namespace

std::vector<ListedCommand> ListCommands(const Command& program) {
  std::vector<ListedCommand> list;
  Append(program, program.name, list);
  return list;
}

bool TakesFile(const Option& option) {
  const std::string& name = option.IsPositional() ? option.names.front() : option.valueName;
  return name == "FILE" || name == "RUN" || name == "INPUT";
}

}  // namespace TslTool
