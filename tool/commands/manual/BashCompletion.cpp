#include <fmt/ranges.h>

#include <tool/commands/manual/CommandList.h>
#include <tool/commands/manual/Completion.h>
#include <tool/commands/manual/ShellText.h>

namespace TslTool {
namespace {

constexpr const char* kScript =
    R"(# Completion of @PROGRAM@ for bash, printed by '@PROGRAM@ manual --format bash'.

_@PROGRAM@() {
  local current=${COMP_WORDS[COMP_CWORD]} previous=${COMP_WORDS[COMP_CWORD - 1]}
  # Bash splits --name=value into three words.
  if [[ $current == = ]]; then
    current=
  elif [[ $previous == = ]]; then
    previous=${COMP_WORDS[COMP_CWORD - 2]}
  fi
  local command=@PROGRAM@ options= words= word
  for word in "${COMP_WORDS[@]:1:COMP_CWORD - 1}"; do
    case "$command $word" in
      @COMMANDS@) command+=" $word" ;;
    esac
  done
  case $command in
@NEXT@  esac
  case "$command $previous" in
@CHOICES@  esac
  [[ $current == -* ]] && words=$options
  COMPREPLY=($(compgen -W "$words" -- "$current"))
}
# Without a word that fits, names of files.
complete -o default -F _@PROGRAM@ @PROGRAM@
)";

std::string Words(const std::vector<std::string>& words) {
  return Quoted(fmt::format("{}", fmt::join(words, " ")));
}

// What may come next in the command's line.
std::string Next(const ListedCommand& listed) {
  std::vector<std::string> options, members;
  for (const Option& option : listed.options)
    if (!option.IsPositional()) options.insert(options.end(), option.names.begin(), option.names.end());
  for (const Command& member : listed.command->family) members.push_back(member.name);
  return fmt::format("    {})\n      options={}\n      words={}\n      ;;\n", Quoted(listed.words),
                     Words(options), Words(members));
}

std::string Choices(const ListedCommand& listed) {
  std::string cases;
  for (const Option& option : listed.options)
    for (const std::string& name : option.names)
      if (!option.choices.empty())
        cases +=
            fmt::format("    {}) words={} ;;\n", Quoted(listed.words + ' ' + name), Words(option.choices));
  return cases;
}

}  // namespace

std::string BashCompletion(const Command& program) {
  std::vector<std::string> commands;
  std::string next, choices;
  for (const ListedCommand& listed : ListCommands(program)) {
    if (listed.command != &program) commands.push_back(Quoted(listed.words));
    next += Next(listed);
    choices += Choices(listed);
  }
  return Filled(kScript, {{"PROGRAM", program.name},
                          {"COMMANDS", fmt::format("{}", fmt::join(commands, " | "))},
                          {"NEXT", next},
                          {"CHOICES", choices}});
}

}  // namespace TslTool
