#include <tool/commands/manual/ManPage.h>

#include <fmt/format.h>

#include <tool/commands/manual/CommandList.h>
#include <tslbl/Version.h>
#include <tslbl/closed/common/Text.h>
#include <cctype>
#include <sstream>

namespace TslTool {
namespace {

// Printed as it is: groff takes a backslash, dashes, quotes and a dot or an apostrophe at the start of a line
// for something else.
std::string Plain(const std::string& text) {
  std::string plain = text.starts_with('.') ? "\\&" : "";
  for (const wchar_t c : TslCommon::FromUtf8(text)) {
    switch (c) {
      case L'\\':
        plain += "\\(rs";
        break;
      case L'-':
        plain += "\\-";
        break;
      case L'\'':
        plain += "\\(aq";
        break;
      case L'"':
        plain += "\\(dq";
        break;
      case L'`':
        plain += "\\(ga";
        break;
      case L'^':
        plain += "\\(ha";
        break;
      case L'~':
        plain += "\\(ti";
        break;
      default:
        plain += c < 0x7f ? std::string(1, static_cast<char>(c))
                          : fmt::format("\\[u{:04X}]", static_cast<unsigned>(c));
    }
  }
  return plain;
}

std::string Bold(const std::string& text) { return "\\fB" + Plain(text) + "\\fR"; }
std::string Italic(const std::string& text) { return "\\fI" + Plain(text) + "\\fR"; }

// Line by line, without filling.
std::string Verbatim(const std::string& text) {
  std::string lines = ".PP\n.nf\n";
  std::istringstream in(text);
  for (std::string line; std::getline(in, line);) lines += Plain(line) + '\n';
  return lines + ".fi\n";
}

// "-o, --output FILE", the names in bold and what stands for something else in italics.
std::string Names(const Option& option) {
  std::string names;
  for (const std::string& name : option.names)
    names += (names.empty() ? "" : ", ") + (option.IsPositional() ? Italic(name) : Bold(name));
  if (!option.valueName.empty()) names += ' ' + Italic(option.valueName);
  return option.takes == Option::Takes::Values ? names + " ..." : names;
}

std::string Usage(const ListedCommand& listed) {
  std::string usage = Bold(listed.words) + " [" + Italic("OPTIONS") + ']';
  if (!listed.command->family.empty()) return usage + ' ' + Italic("COMMAND");
  for (const Option& option : listed.options)
    if (option.IsPositional()) usage += " [" + Names(option) + ']';
  return usage;
}

std::string Section(const ListedCommand& listed) {
  std::string section = ".PP\n" + Plain(listed.command->summary) + "\n.PP\n" + Usage(listed) + '\n';
  for (const Option& option : listed.options)
    section += ".TP\n" + Names(option) + '\n' + Plain(option.help) + '\n';
  return listed.command->examples.empty() ? section : section + Verbatim(listed.command->examples);
}

// As the line under NAME has it: no capital, no full stop.
std::string Phrase(std::string summary) {
  if (!summary.empty())
    summary.front() = static_cast<char>(std::tolower(static_cast<unsigned char>(summary.front())));
  if (summary.ends_with('.')) summary.pop_back();
  return summary;
}

constexpr const char* kEnd =
    ".SH EXIT STATUS\n"
    ".TP\n0\nDone.\n"
    ".TP\n1\nIt could not be done; standard error has the reason. Of tune check: there are problems; of "
    "tune\n"
    "diff: the tunes differ.\n"
    ".TP\n2\nWrong usage.\n"
    ".TP\n3\nOf tune check and tune diff: a tune could not be read.\n"
    ".PP\nCtrl-C, SIGTERM and SIGHUP end it by the signal itself when nothing is left half written; a shell\n"
    "shows 128 and the number of the signal, 130 after Ctrl-C.\n";

}  // namespace

std::string ManPage(const Command& program) {
  std::string page = fmt::format(".TH {} 1 \"\" \"{} {}\" \"User Commands\"\n.nh\n.ad l\n",
                                 Plain(program.name), Plain(program.name), Plain(TSLBL_VERSION));
  page += ".SH NAME\n" + Plain(program.name) + " \\- " + Plain(Phrase(program.summary)) + '\n';
  const std::vector<ListedCommand> list = ListCommands(program);
  page += ".SH DESCRIPTION\n" + Section(list.front());
  page += ".SH COMMANDS\n";
  for (std::size_t i = 1; i < list.size(); ++i)
    page += ".SS " + Plain(list[i].words) + '\n' + Section(list[i]);
  return page + kEnd;
}

}  // namespace TslTool
