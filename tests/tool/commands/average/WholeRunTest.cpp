#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <fstream>
#include <stdexcept>

#include <tool/ToolRun.h>
#include <tool/commands/average/WholeRun.h>
#include <tool/io/RunMaker.h>

namespace tests {
namespace {

using testing::ElementsAre;
using TslTool::RunWriter;

void AddOneScan(RunWriter& writer) {
  writer.AddTune(1, DemoTune());
  writer.AddScan(RawScan(1, {1, 2, 3}));
}

TEST(WholeRun, TakesItsNameWhenItIsWhole) {
  const TempFile folder("x", "");
  const std::string file = folder.Folder() + "/a.run";
  TslTool::WriteWholeRun(file, "title", [&](RunWriter& writer) {
    AddOneScan(writer);
    EXPECT_FALSE(std::filesystem::exists(file));
  });
  EXPECT_THAT(NamesIn(folder.Folder()), ElementsAre("a.run", "x"));
  EXPECT_EQ(ReadRun(file), std::vector<TslBL::RawSpectrum>{RawScan(1, {1, 2, 3})});
}

TEST(WholeRun, AFailureLeavesNothing) {
  const TempFile folder("x", "");
  const auto fail = [](RunWriter& writer) {
    AddOneScan(writer);
    throw std::runtime_error("no more");
  };
  EXPECT_THROW(TslTool::WriteWholeRun(folder.Folder() + "/a.run", "", fail), std::runtime_error);
  EXPECT_THAT(NamesIn(folder.Folder()), ElementsAre("x"));
}

TEST(WholeRun, IsNotWrittenOverAnother) {
  const SmallRun small;
  const std::string before = ReadFile(small.Path());
  EXPECT_THROW(TslTool::WriteWholeRun(small.Path(), "", AddOneScan), TslTool::InputError);
  EXPECT_EQ(ReadFile(small.Path()), before);
}

TEST(WholeRun, WhatAKilledProcessLeftIsMadeAnew) {
  const TempFile left("a.run.part", "half of a run");
  const std::string file = left.Folder() + "/a.run";
  TslTool::WriteWholeRun(file, "", AddOneScan);
  EXPECT_THAT(NamesIn(left.Folder()), ElementsAre("a.run"));
}

}  // namespace
}  // namespace tests
