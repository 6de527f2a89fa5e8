#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <functional>
#include <iostream>
#include <optional>
#include <stdexcept>
#include <string>
#include <vector>

#include <tool/frame/CommandLine.h>
#include <tool/frame/Interrupt.h>
#include <tool/frame/Output.h>
#include <tslbl/Version.h>

namespace tests {
namespace {

using testing::EndsWith;
using testing::HasSubstr;
using testing::StartsWith;
using TslTool::Command;
using TslTool::Options;

// What a command with every kind of option received, and what the user saw.
struct Session {
  int status;
  std::string out, err;
  bool flag = false;
  std::string text = "as it was", choice = "red", input;
  std::optional<double> real;
  std::optional<std::uint32_t> count;
  std::optional<std::uint64_t> seed;
  bool given = false;
};

Session Start(
    std::vector<std::string> words, const std::function<int()>& body = [] { return 0; }) {
  Session session;
  Command command{.name = "try",
                  .summary = "Tries it",
                  .examples = "Examples:\n  tslbl try --flag",
                  .declare =
                      [&session](Options& o) {
                        o.Value("INPUT", session.input, "The input");
                        o.Flag("--flag", session.flag, "A flag");
                        o.Value("-t,--text WORD", session.text, "A text");
                        o.Value("--real X", session.real, "A number");
                        o.Value("--count N", session.count, "A count");
                        o.Value("--seed S", session.seed, "A seed");
                        o.Choice("--choice COLOUR", session.choice, {"red", "green"}, "A choice");
                      },
                  .run =
                      [&](const Options& o) {
                        session.given = o.Given("--text");
                        return body();
                      }};
  words.insert(words.begin(), "tslbl");
  std::vector<char*> argv;
  for (std::string& word : words) argv.push_back(word.data());
  testing::internal::CaptureStdout();
  testing::internal::CaptureStderr();
  session.status = TslTool::RunCommandLine(static_cast<int>(argv.size()), argv.data(),
                                           {.name = "tslbl",
                                            .summary = "A program",
                                            .examples = "",
                                            .declare = {},
                                            .run = {},
                                            .family = {command}});
  session.out = testing::internal::GetCapturedStdout();
  session.err = testing::internal::GetCapturedStderr();
  return session;
}

TEST(CommandLine, OptionsReceiveTheirValues) {
  const Session session = Start({"try", "in.txt", "--flag", "-t", "a b", "--real", "-2.5", "--count=7",
                                 "--seed", "18446744073709551615", "--choice", "green"});
  EXPECT_EQ(session.status, 0);
  EXPECT_TRUE(session.flag);
  EXPECT_TRUE(session.given);
  EXPECT_EQ(session.input, "in.txt");
  EXPECT_EQ(session.text, "a b");
  EXPECT_EQ(session.real, -2.5);
  EXPECT_EQ(session.count, 7U);
  EXPECT_EQ(session.seed, 18446744073709551615U);
  EXPECT_EQ(session.choice, "green");
}

TEST(CommandLine, WhatIsNotGivenStaysAsItWas) {
  const Session session = Start({"try"});
  EXPECT_FALSE(session.given);
  EXPECT_EQ(session.text, "as it was");
  EXPECT_EQ(session.choice, "red");
  EXPECT_EQ(session.real, std::nullopt);
}

TEST(CommandLine, TheExitStatusIsTheCommands) {
  EXPECT_EQ(Start({"try"}, [] { return 1; }).status, 1);
}

struct Wrong {
  std::vector<std::string> words;
  const char* message;
};

TEST(CommandLine, WrongUsageIsStatus2AndNamesOptionAndText) {
  for (const auto& [words, message] :
       {Wrong{{}, "tslbl: a command is required\n"},
        Wrong{{"tri"}, "tslbl: The following argument was not expected: tri; did you mean try?\n"},
        Wrong{{"try", "--colour"}, "tslbl: The following argument was not expected: --colour\n"},
        Wrong{{"try", "--chioce", "red"},
              "tslbl: The following argument was not expected: --chioce; did you mean --choice?\n"},
        Wrong{{"try", "--coutn=3"},
              "tslbl: The following argument was not expected: --coutn=3; did you mean --count?\n"},
        Wrong{{"try", "--hlep"},
              "tslbl: The following argument was not expected: --hlep; did you mean --help?\n"},
        Wrong{{"try", "a", "b"}, "tslbl: The following argument was not expected: b\n"},
        Wrong{{"try", "--real"}, "tslbl: --real: 1 required"},
        Wrong{{"try", "--real", "nan"}, "tslbl: --real: \"nan\" is not a finite number\n"},
        Wrong{{"try", "--real", "1,5"}, "tslbl: --real: \"1,5\" is not a number\n"},
        Wrong{{"try", "--count", "-1"},
              "tslbl: --count: \"-1\" is not a whole number from 0 to 4294967295\n"},
        Wrong{{"try", "--seed", "1e3"}, "tslbl: --seed: \"1e3\" is not a whole number"},
        Wrong{{"try", "--choice", "blue"}, "tslbl: --choice: \"blue\" is not one of red, green\n"},
        Wrong{{"try", "--text", ""}, "tslbl: --text: the value is empty\n"},
        Wrong{{"try", "--real", ""}, "tslbl: --real: the value is empty\n"},
        Wrong{{"try", ""}, "tslbl: INPUT: the value is empty\n"}}) {
    const Session session = Start(words);
    EXPECT_EQ(session.status, 2) << message;
    EXPECT_EQ(session.out, "");
    EXPECT_THAT(session.err, StartsWith(message));
  }
}

TEST(CommandLine, WrongUsageTellsWhereTheHelpIs) {
  EXPECT_THAT(Start({"try", "--colour"}).err, EndsWith("\nRun 'tslbl try --help' for more information.\n"));
  EXPECT_THAT(Start({}).err, EndsWith("\nRun 'tslbl --help' for more information.\n"));
}

TEST(CommandLine, AnOptionGivenTwiceIsWrongUsage) {
  EXPECT_EQ(Start({"try", "--count", "1", "--count", "2"}).status, 2);
}

TEST(CommandLine, TheHelpHoldsOptionsValuesAndExamples) {
  const Session session = Start({"try", "--help"});
  EXPECT_EQ(session.status, 0);
  EXPECT_EQ(session.err, "");
  for (const char* part : {"Tries it", "-t,--text WORD", "--real X", "red, green [red]", "tslbl try --flag"})
    EXPECT_THAT(session.out, HasSubstr(part));
}

TEST(CommandLine, TheVersionIsTheLibrarys) {
  const Session session = Start({"--version"});
  EXPECT_EQ(session.status, 0);
  EXPECT_EQ(session.out, "tslbl " TSLBL_VERSION "\n");
}

TEST(CommandLine, EveryFailureHasItsStatusAndMessage) {
  const auto failing = [](auto error) { return Start({"try"}, [error]() -> int { throw error; }); };
  const Session failed = failing(std::runtime_error("a.txt: is bad"));
  EXPECT_EQ(failed.status, 1);
  EXPECT_EQ(failed.err, "tslbl: a.txt: is bad\n");
  const Session usage = failing(TslTool::UsageError("--x: bad"));
  EXPECT_EQ(usage.status, 2);
  EXPECT_EQ(usage.err, "tslbl: --x: bad\n");
  const Session memory = failing(std::bad_alloc());
  EXPECT_EQ(memory.status, 1);
  EXPECT_EQ(memory.err, "tslbl: out of memory\n");
  const Session interrupted = failing(TslTool::Interrupted());
  EXPECT_EQ(interrupted.status, 1);
  EXPECT_EQ(interrupted.err, "tslbl: interrupted\n");
}

TEST(CommandLine, NoMessageDoesAnythingToATerminal) {
  EXPECT_THAT(Start({"try", "--\x1b[2J\n"}).err,
              StartsWith("tslbl: The following argument was not expected: --\\x1b[2J\\n\n"));
  const auto failing = [](auto error) { return Start({"try"}, [error]() -> int { throw error; }).err; };
  EXPECT_EQ(failing(std::runtime_error("\x1b]0;x\x07.txt: is bad")), "tslbl: \\x1b]0;x\\x07.txt: is bad\n");
  EXPECT_EQ(failing(TslTool::UsageError("--x: \"\x1b\"")), "tslbl: --x: \"\\x1b\"\n");
}

TEST(CommandLine, AReaderThatWentAwayNeedsNoMessage) {
  const Session session = Start({"try"}, []() -> int { throw TslTool::ReaderGone(); });
  EXPECT_EQ(session.status, 1);
  EXPECT_EQ(session.err, "");
}

}  // namespace
}  // namespace tests
