// Tests: Ramp.cpp.
// The section "Ramps" of README.md, run as it stands there.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>
#include <sstream>
#include <string>
#include <vector>

#include <tool/ToolRun.h>
#include <tool/simulate/LensModel.h>

namespace tests {
namespace {

struct Shown {
  std::string command;
  std::string output;
  bool isWhole = true;  // nothing was left out, as "..." tells
};

// The commands of a section of the README, and what it shows that they print.
std::vector<Shown> CommandsOf(const std::string& heading) {
  const std::string readme = ReadFile(TSLBL_TEST_DATA "/../../README.md");
  std::istringstream lines(readme.substr(readme.find("### " + heading + "\n")));
  std::vector<Shown> shown;
  std::string line;
  while (line != "```") std::getline(lines, line);
  while (std::getline(lines, line) && line != "```") {
    if (line.starts_with("$ ")) {
      shown.push_back({line.substr(2), ""});
    } else if (line == "...") {
      shown.back().isWhole = false;
    } else {
      shown.back().output += line + '\n';
    }
  }
  return shown;
}

// What each ion's best value is told to be in the table.
double BestAt(const std::string& table, const std::string& mz) {
  for (const std::string& line : LinesOf(table))
    if (line.starts_with(mz + " ")) return std::stod(line.substr(mz.size()));
  ADD_FAILURE() << mz << " is not in\n" << table;
  return 0;
}

TEST(RampExample, DoesWhatTheReadmeShowsAndFindsTheTruth) {
  const TempFile folder("x", "");
  std::string table;
  const std::vector<Shown> commands = CommandsOf("Ramps");
  ASSERT_GE(commands.size(), 5U);
  for (const auto& [command, output, isWhole] : commands) {
    ASSERT_TRUE(command.starts_with("tslbl ")) << command;
    const Outcome outcome =
        RunShell("cd '" + folder.Folder() + "' && \"$TSLBL\" " + command.substr(6) + " 2>&1");
    EXPECT_LE(outcome.status, command.starts_with("tslbl tune diff") ? 1 : 0) << command << '\n'
                                                                              << outcome.out;
    if (isWhole) {
      EXPECT_EQ(outcome.out, output) << command;
    } else {
      EXPECT_THAT(outcome.out, testing::HasSubstr(output)) << command;
    }
    if (command.starts_with("tslbl ramp best")) table = outcome.out;
  }
  for (const double mz : {118.0, 322.0, 622.0}) {
    const double truth =
        TslTool::LensModel::BestValue(TslBL::TuneField::CapExit, TslCommon::PolarityPositive, mz).value();
    EXPECT_LE(std::abs(BestAt(table, std::to_string(static_cast<int>(mz))) - truth), 7.5)
        << "half a step, at " << mz;
  }
}

}  // namespace
}  // namespace tests
