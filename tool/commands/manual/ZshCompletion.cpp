#include <fmt/ranges.h>

#include <tool/commands/manual/CommandList.h>
#include <tool/commands/manual/Completion.h>
#include <tool/commands/manual/ShellText.h>

namespace TslTool {
namespace {

constexpr const char* kScript = R"(#compdef @PROGRAM@
# Completion of @PROGRAM@ for zsh, printed by '@PROGRAM@ manual --format zsh'.

_@PROGRAM@() {
  local command=@PROGRAM@
  local -a members
  integer i depth=1
  for ((i = 2; i < CURRENT; ++i)); do
    case "$command $words[i]" in
      (@COMMANDS@) command+=" $words[i]"; depth=i ;;
    esac
  done
  # What follows the name of the command is its line.
  words=("${(@)words[depth,-1]}")
  ((CURRENT -= depth - 1))
  case $command in
@NEXT@  esac
}
if [[ $funcstack[1] == _@PROGRAM@ ]]; then _@PROGRAM@ "$@"; else compdef _@PROGRAM@ @PROGRAM@; fi
)";

// Between brackets, or between colons.
std::string Escaped(const std::string& text) {
  std::string escaped;
  for (const char c : text) {
    if (c == '\\' || c == '[' || c == ']' || c == ':') escaped += '\\';
    escaped += c;
  }
  return escaped;
}

// What completes the value of an option, or a positional argument.
std::string Value(const Option& option) {
  const std::string action = !option.choices.empty() ? fmt::format("({})", fmt::join(option.choices, " "))
                             : TakesFile(option)     ? "_files"
                                                     : " ";
  return fmt::format(":{}:{}", Escaped(option.IsPositional() ? option.names.front() : option.valueName),
                     action);
}

// The option as an argument of _arguments, once for each of its names, of which one is enough.
std::string Specifications(const Option& option) {
  const bool many = option.takes == Option::Takes::Values;
  if (option.IsPositional()) return ' ' + Quoted((many ? "*" : "1") + Value(option));
  const bool isFlag = option.takes == Option::Takes::Nothing;
  std::string all;
  for (const std::string& name : option.names) {
    const char* sign = isFlag || !name.starts_with("--") ? "" : "=";
    all += ' ' + Quoted(fmt::format("({}){}{}[{}]{}", fmt::join(option.names, " "), name, sign,
                                    Escaped(option.help), isFlag ? "" : Value(option)));
  }
  return all;
}

std::string Next(const ListedCommand& listed) {
  std::string members, arguments;
  for (const Command& member : listed.command->family)
    members += ' ' + Quoted(Escaped(member.name) + ':' + member.summary);
  for (const Option& option : listed.options) arguments += " \\\n       " + Specifications(option);
  if (!members.empty()) arguments += " \\\n        '1: :{_describe command members}'";
  return fmt::format("    ({})\n      members=({})\n      _arguments{}\n      ;;\n", Quoted(listed.words),
                     members, arguments);
}

}  // namespace

std::string ZshCompletion(const Command& program) {
  std::vector<std::string> commands;
  std::string next;
  for (const ListedCommand& listed : ListCommands(program)) {
    if (listed.command != &program) commands.push_back(Quoted(listed.words));
    next += Next(listed);
  }
  return Filled(
      kScript,
      {{"PROGRAM", program.name}, {"COMMANDS", fmt::format("{}", fmt::join(commands, "|"))}, {"NEXT", next}});
}

}  // namespace TslTool
