#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <regex>
#include <string>

#include <tool/commands/Commands.h>
#include <tool/commands/manual/Helps.h>
#include <tool/commands/manual/ManPage.h>

namespace tests {
namespace {

using testing::HasSubstr;
using TslTool::ManPage;

// What a reader sees of a line of the page.
std::string Shown(const std::string& line) {
  const std::pair<const char*, const char*> codes[] = {
      {R"(\\f[BIR]|\\&)", ""}, {R"(\\-)", "-"},    {R"(\\\(aq)", "'"}, {R"(\\\(dq)", "\""},
      {R"(\\\(ga)", "`"},      {R"(\\\(ha)", "^"}, {R"(\\\(ti)", "~"}, {R"(\\\(rs)", "\\"}};
  std::string shown = line;
  for (const auto& [code, text] : codes) shown = std::regex_replace(shown, std::regex(code), text);
  return shown;
}

// The section of a command, as shown; "tslbl" alone means the description.
std::string SectionOf(const std::string& page, const std::string& words) {
  const std::string heading = words == "tslbl" ? ".SH DESCRIPTION" : ".SS " + words;
  std::string section;
  bool isInside = false;
  for (const std::string& line : LinesOf(page)) {
    if (line.starts_with(".S")) isInside = Shown(line) == heading;
    if (isInside) section += Shown(line) + '\n';
  }
  return section;
}

TEST(ManPage, HasEveryCommandAndOptionWithItsHelp) {
  const std::string page = ManPage(TslTool::Program());
  for (const Help& help : AllHelps()) {
    const std::string line = Joined(help.line);
    const std::string section = SectionOf(page, line);
    ASSERT_NE(section, "") << line;
    for (const HelpedOption& option : help.options) {
      const std::size_t at = section.find(".TP\n" + option.names.front());
      ASSERT_NE(at, std::string::npos) << line << ' ' << option.names.front();
      const std::string entry = section.substr(at, section.find("\n.", at + 1) - at);
      for (const std::string& name : option.names) EXPECT_THAT(entry, HasSubstr(name));
      EXPECT_THAT(entry, testing::EndsWith('\n' + option.help)) << line;
    }
  }
}

// Every line that begins with a dot is one of these, and every backslash begins one of those.
TEST(ManPage, UsesNothingOfTheLanguageButWhatItMeans) {
  const std::regex request(R"(\.(TH|SH|SS|TP|PP|nf|fi|nh|ad l)( .*)?)");
  const std::regex escape(R"(\\(f[BIR]|&|-|\((aq|dq|rs|ga|ha|ti)|\[u[0-9A-F]{4}\]))");
  for (const TslTool::Command& program : {TslTool::Program(), OddProgram()}) {
    for (const std::string& line : LinesOf(ManPage(program))) {
      EXPECT_TRUE(!line.starts_with('.') || std::regex_match(line, request)) << line;
      EXPECT_FALSE(line.starts_with('\'')) << line;
      EXPECT_EQ(std::regex_replace(line, escape, "").find('\\'), std::string::npos) << line;
    }
  }
}

TEST(ManPage, ShowsAnyTextAsItIs) {
  const std::string section = SectionOf(ManPage(OddProgram()), "odd do");
  EXPECT_EQ(section,
            ".SS odd do\n.PP\nDoesn't\n.PP\nodd do [OPTIONS] [FILE ...]\n"
            ".TP\n-h, --help\nPrint this help message and exit\n"
            ".TP\n--quiet\nDon't say: [anything] \\ \"more\"\n"
            ".TP\n-c, --colour C\nA colour: red, green\n"
            ".TP\n--to FILE\n.start\n"
            ".TP\n--number N\nA number\n"
            ".TP\nFILE ...\nFiles\n"
            ".PP\n.nf\n.dot\n'quote\n~^`\n.fi\n");
}

TEST(ManPage, HasANameLineThatAproposReads) {
  EXPECT_THAT(ManPage(OddProgram()), HasSubstr(".SH NAME\nodd \\- does odd things\n"));
}

TEST(ManPage, WritesOtherLettersByTheirNumber) {
  TslTool::Command program = OddProgram();
  program.summary = "F\xC3\xBCr";
  EXPECT_THAT(ManPage(program), HasSubstr("odd \\- f\\[u00FC]r\n"));
}

}  // namespace
}  // namespace tests
