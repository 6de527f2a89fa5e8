#pragma once
// What `tslbl ... --help` shows, read as a user would, to hold the manual against.

#include <sstream>
#include <string>
#include <vector>

#include <tool/ToolRun.h>
#include <tool/frame/CommandLine.h>

namespace tests {

struct HelpedOption {
  std::vector<std::string> names;  // of a positional argument one without dashes
  std::string help;
};

struct Help {
  Arguments line;  // the program and the command, as typed
  std::vector<HelpedOption> options;
  std::vector<std::string> members;
};

inline std::vector<std::string> SplitAt(const std::string& text, char separator) {
  std::vector<std::string> parts;
  std::istringstream in(text);
  for (std::string part; std::getline(in, part, separator);) parts.push_back(part);
  return parts;
}

// Its lists stand under headings; a line is "  NAMES VALUE      HELP", or two if the names are long.
inline Help ReadHelp(const Arguments& line) {
  Arguments asked(line.begin() + 1, line.end());
  asked.push_back("--help");
  Help help{line, {}, {}};
  std::string heading;
  for (const std::string& shown : LinesOf(RunTool(asked).out)) {
    if (!shown.starts_with(' ')) heading = shown;
    const bool isOption = heading == "Options:" || heading == "Positionals:";
    if (shown == heading || (!isOption && heading != "Subcommands:")) continue;
    const bool isContinued = shown.starts_with("   ");
    const std::string left = isContinued ? "" : shown.substr(2, shown.find(' ', 2) - 2);
    const std::size_t gap = isContinued ? 0 : shown.find("  ", 2);
    const std::string right = gap == std::string::npos ? "" : shown.substr(shown.find_first_not_of(' ', gap));
    if (isContinued)
      help.options.back().help += right;
    else if (isOption)
      help.options.push_back({SplitAt(left, ','), right});
    else
      help.members.push_back(left);
  }
  return help;
}

// Of the program, of each command, and of the members of each family.
inline std::vector<Help> AllHelps() {
  std::vector<Help> all = {ReadHelp({"tslbl"})};
  for (std::size_t i = 0; i < all.size(); ++i) {
    const Help family = all[i];
    for (const std::string& member : family.members) {
      Arguments line = family.line;
      line.push_back(member);
      all.push_back(ReadHelp(line));
    }
  }
  return all;
}

inline std::string Joined(const std::vector<std::string>& words) {
  std::string line;
  for (const std::string& word : words) line += (line.empty() ? "" : " ") + word;
  return line;
}

// A program with texts that shells and groff take for something else.
inline TslTool::Command OddProgram() {
  static std::string value;
  static bool flag = false;
  static std::vector<std::string> files;
  const auto declare = [](TslTool::Options& options) {
    options.Flag("--quiet", flag, "Don't say: [anything] \\ \"more\"");
    options.Choice("-c,--colour C", value, {"red", "green"}, "A colour");
    options.Value("--to FILE", value, ".start");
    options.Value("--number N", value, "A number");
    options.Values("FILE", files, "Files");
  };
  TslTool::Command member{
      .name = "do", .summary = "Doesn't", .examples = ".dot\n'quote\n~^`", .declare = declare, .run = {}};
  return {.name = "odd",
          .summary = "Does odd things.",
          .examples = "",
          .declare = {},
          .run = {},
          .family = {member}};
}

}  // namespace tests
