// Tests: PictureFiles.cpp, EvaluateInput.cpp.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <string>

#include <tool/commands/DemoRun.h>
#include <tool/commands/peaks/PictureFiles.h>
#include <tool/frame/InputError.h>

namespace tests {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::StartsWith;
using TslTool::InputError;
using TslTool::PictureFiles;

TEST(PictureFiles, WithoutAFileAndAFolderNoneAreWanted) {
  PictureFiles pictures("a.mzML", "", "");
  EXPECT_FALSE(pictures.AreWanted());
  pictures.Write(1, "");
  pictures.Commit();
}

TEST(PictureFiles, OfAFolderAreNamedAfterTheInputAndTheScan) {
  const TempFile input("sample.mzML.gz", "");
  const std::string folder = input.Folder() + "/pictures";
  PictureFiles pictures(input.Path(), "", folder);
  EXPECT_TRUE(pictures.AreWanted());
  EXPECT_FALSE(std::filesystem::exists(folder)) << "before there is anything to draw";
  pictures.Write(3, "third");
  pictures.Write(12, "twelfth");
  EXPECT_THAT(NamesIn(folder), ElementsAre("sample.scan12.svg", "sample.scan3.svg"));
  EXPECT_EQ(ReadFile(folder + "/sample.scan3.svg"), "third");
}

TEST(PictureFiles, ScansOfOneNumberHaveAPictureEach) {
  const TempFile input("sample.mzML", "");
  PictureFiles pictures(input.Path(), "", input.Folder());
  for (const char* picture : {"first", "second", "third"}) pictures.Write(7, picture);
  EXPECT_THAT(NamesIn(input.Folder()),
              ElementsAre("sample.mzML", "sample.scan7.2.svg", "sample.scan7.3.svg", "sample.scan7.svg"));
  EXPECT_EQ(ReadFile(input.Folder() + "/sample.scan7.2.svg"), "second");
}

TEST(PictureFiles, WhatHasNoNameOfAFileIsNamedByWhatItIs) {
  const TempFile folder("x", "");
  PictureFiles("", "", folder.Folder()).Write(1, "");
  PictureFiles("/dev/stdin", "", folder.Folder()).Write(1, "");
  EXPECT_THAT(NamesIn(folder.Folder()),
              ElementsAre("demonstration-run.scan1.svg", "standard-input.scan1.svg", "x"));
}

TEST(PictureFiles, NeverTakeThePlaceOfTheInput) {
  const TempFile input("a.scan1.svg", "100 1\n");
  const std::string link = input.Folder() + "/a.txt";
  std::filesystem::create_symlink("a.scan1.svg", link);
  PictureFiles pictures(link, "", input.Folder());
  EXPECT_THAT([&] { pictures.Write(1, "picture"); },
              testing::ThrowsMessage<InputError>(HasSubstr("a.scan1.svg would be written over it")));
  EXPECT_EQ(ReadFile(input.Path()), "100 1\n");
}

TEST(PictureFiles, AFileTakesOnePictureAndItsNameWhenAllIsDone) {
  const TempFile input("a.txt", "");
  const std::string file = input.Folder() + "/a.svg";
  PictureFiles pictures(input.Path(), file, "");
  pictures.Write(1, "picture");
  EXPECT_FALSE(std::filesystem::exists(file));
  EXPECT_THAT([&] { pictures.Write(2, "another"); },
              testing::ThrowsMessage<InputError>(HasSubstr("--plot draws one spectrum")));
  pictures.Commit();
  EXPECT_EQ(ReadFile(file), "picture");
}

TEST(PictureFiles, AFolderThatIsAFileIsAnError) {
  const TempFile file("taken", "");
  PictureFiles pictures("a.txt", "", file.Path());
  EXPECT_THAT([&] { pictures.Write(1, ""); },
              testing::ThrowsMessage<InputError>(HasSubstr("cannot be made a folder")));
}

TEST(PictureFiles, PlotDirDrawsEachSpectrumBesideTheTable) {
  const TempFile folder("x", "");
  const Outcome outcome = RunTool({"peaks", DemoRun::Get().Run(), "--scan", "5-7", "--plot-dir",
                                   folder.Folder(), "--view", "190-200", "--quiet"});
  EXPECT_EQ(outcome.status, 0) << outcome.err;
  EXPECT_THAT(outcome.out, HasSubstr("scan 7,"));
  const std::string stem = std::filesystem::path(DemoRun::Get().Run()).stem();
  EXPECT_THAT(NamesIn(folder.Folder()),
              ElementsAre(stem + ".scan5.svg", stem + ".scan6.svg", stem + ".scan7.svg", "x"));
  EXPECT_THAT(ReadFile(folder.Folder() + "/" + stem + ".scan6.svg"), HasSubstr("195.08"));
}

TEST(PictureFiles, PlotDirTakesTheSpectraOfSeveralInputs) {
  const TempFile folder("a.txt", "100 1\n100.1 500\n100.2 2\n100.3 1\n");
  std::filesystem::copy_file(folder.Path(), folder.Folder() + "/b.txt");
  const Outcome outcome =
      RunShell("cd '" + folder.Folder() + "' && \"$TSLBL\" peaks a.txt b.txt --output-dir t --plot-dir p");
  EXPECT_EQ(outcome.status, 0) << outcome.err;
  EXPECT_THAT(NamesIn(folder.Folder() + "/p"), ElementsAre("a.scan1.svg", "b.scan1.svg"));
}

TEST(PictureFiles, OptionsThatExcludeEachOtherAreWrongUsage) {
  const std::string run = DemoRun::Get().Run();
  const std::pair<Arguments, const char*> cases[] = {
      {{"--plot", "a.svg", "--plot-dir", "p"}, "--plot and --plot-dir exclude each other"},
      {{"--resume", "--format", "tsv", "--output", "a.tsv", "--plot-dir", "p"},
       "--resume and --plot-dir exclude each other"},
      {{"--resume", "--format", "tsv", "--output-dir", "d", "--plot-dir", "p"},
       "--resume and --plot-dir exclude each other"},
      {{"--view", "1-2"}, "--view: is for --plot and --plot-dir"}};
  for (const auto& [words, message] : cases) {
    Arguments command = {"peaks", run};
    command.insert(command.end(), words.begin(), words.end());
    const Outcome outcome = RunTool(command);
    EXPECT_EQ(outcome.status, 2);
    EXPECT_THAT(outcome.err, HasSubstr(message));
  }
}

}  // namespace
}  // namespace tests
