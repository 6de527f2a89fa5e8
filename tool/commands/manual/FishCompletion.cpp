#include <fmt/ranges.h>

#include <tool/commands/manual/CommandList.h>
#include <tool/commands/manual/Completion.h>
#include <tool/commands/manual/ShellText.h>

namespace TslTool {
namespace {

constexpr const char* kScript =
    R"(# Completion of @PROGRAM@ for fish, printed by '@PROGRAM@ manual --format fish'.

# Whether the line so far names this command.
function __@PROGRAM@_is
    set -l command @PROGRAM@
    for word in (commandline -opc)[2..-1]
        switch "$command $word"
            case @COMMANDS@
                set command "$command $word"
        end
    end
    test "$command" = "$argv"
end

@NEXT@)";

// In single quotes, as fish reads them.
std::string FishQuoted(const std::string& text) {
  std::string quoted = "'";
  for (const char c : text) {
    if (c == '\'' || c == '\\') quoted += '\\';
    quoted += c;
  }
  return quoted + "'";
}

std::string Switches(const Option& option) {
  std::string switches;
  for (const std::string& name : option.names)
    switches += name.starts_with("--") ? " -l " + name.substr(2) : " -s " + name.substr(1);
  if (option.takes == Option::Takes::Nothing) return switches;
  if (!option.choices.empty()) return switches + fmt::format(" -x -a '{}'", fmt::join(option.choices, " "));
  return switches + (TakesFile(option) ? " -r -F" : " -x");
}

std::string Next(const ListedCommand& listed) {
  const std::string start = fmt::format("complete -c @PROGRAM@ -n '__@PROGRAM@_is {}'", listed.words);
  std::string lines = listed.command->family.empty() ? "" : start + " -f\n";
  for (const Command& member : listed.command->family)
    lines += fmt::format("{} -a {} -d {}\n", start, member.name, FishQuoted(member.summary));
  for (const Option& option : listed.options)
    if (!option.IsPositional())
      lines += fmt::format("{}{} -d {}\n", start, Switches(option), FishQuoted(option.help));
  return lines;
}

}  // namespace

std::string FishCompletion(const Command& program) {
  std::vector<std::string> commands;
  std::string next;
  for (const ListedCommand& listed : ListCommands(program)) {
    if (listed.command != &program) commands.push_back(FishQuoted(listed.words));
    next += Next(listed);
  }
  return Filled(
      kScript,
      {{"COMMANDS", fmt::format("{}", fmt::join(commands, " "))}, {"NEXT", next}, {"PROGRAM", program.name}});
}

}  // namespace TslTool
