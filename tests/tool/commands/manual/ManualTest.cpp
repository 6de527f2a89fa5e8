#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>

#include <tool/ToolRun.h>
#include <tool/commands/Commands.h>
#include <tool/commands/manual/Completion.h>
#include <tool/commands/manual/ManPage.h>

namespace tests {
namespace {

TEST(Manual, PrintsThePageOrTheScriptOfAShell) {
  const TslTool::Command program = TslTool::Program();
  EXPECT_EQ(RunTool({"manual"}).out, ManPage(program));
  EXPECT_EQ(RunTool({"manual", "--format", "bash"}).out, BashCompletion(program));
  EXPECT_EQ(RunTool({"manual", "--format", "zsh"}).out, ZshCompletion(program));
  EXPECT_EQ(RunTool({"manual", "--format", "fish"}).out, FishCompletion(program));
}

TEST(Manual, WritesToAFile) {
  const TempFile file("tslbl.1", "");
  const Outcome outcome = RunTool({"manual", "--output", file.Path()});
  EXPECT_EQ(outcome.status, 0);
  EXPECT_EQ(outcome.out, "");
  EXPECT_EQ(ReadFile(file.Path()), ManPage(TslTool::Program()));
}

TEST(Manual, OfAnotherShellIsWrongUsage) {
  const Outcome outcome = RunTool({"manual", "--format", "csh"});
  EXPECT_EQ(outcome.status, 2);
  EXPECT_THAT(outcome.err,
              testing::StartsWith("tslbl: --format: \"csh\" is not one of man, bash, zsh, fish\n"));
}

}  // namespace
}  // namespace tests
