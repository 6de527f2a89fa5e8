#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <signal.h>
#include <sys/stat.h>
#include <unistd.h>

#include <fcntl.h>

#include <cerrno>
#include <cstdlib>
#include <filesystem>
#include <functional>
#include <stdexcept>
#include <string>

#include <tool/FailingCall.h>
#include <tool/ToolRun.h>
#include <tool/frame/Output.h>

namespace tests {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using TslTool::Output;

std::string ErrorOf(const std::function<void()>& action) {
  try {
    action();
  } catch (const std::exception& error) {
    return error.what();
  }
  return "";
}

TEST(Output, WhatBelongsToAFileHasRoomInItsFolder) {
  const TempFile other("other", "");
  EXPECT_EQ(Output(other.Folder() + "/result").Folder(), other.Folder());
  EXPECT_EQ(Output(other.Folder() + "/result", Output::Beside::Resumable).Folder(), other.Folder());
  for (const char* path : {"", "-", "/dev/null"})
    EXPECT_EQ(Output(path).Folder(), std::filesystem::temp_directory_path()) << path;
}

TEST(Output, AFileAppearsWholeInCommit) {
  const TempFile other("other", "");
  const std::string path = other.Folder() + "/result";
  Output output(path);
  output.Write("one\n");
  output.Write("two\n");
  EXPECT_FALSE(std::filesystem::exists(path));
  output.Commit();
  EXPECT_EQ(ReadFile(path), "one\ntwo\n");
  EXPECT_THAT(NamesIn(other.Folder()), ElementsAre("other", "result"));
}

TEST(Output, OnATerminalControlCharactersAreVisible) {
  const int terminal = posix_openpt(O_RDWR | O_NOCTTY);
  ASSERT_TRUE(terminal >= 0 && grantpt(terminal) == 0 && unlockpt(terminal) == 0);
  Output output(ptsname(terminal));
  output.Write("id\t\x1b[31m\xc3\xa4\n");
  output.Commit();
  char shown[100];
  const ssize_t size = read(terminal, shown, sizeof shown);
  ASSERT_GT(size, 0);
  const std::string text(shown, static_cast<std::size_t>(size));
  EXPECT_THAT(text, testing::EndsWith("\\x1b[31m\xc3\xa4\r\n"));
  EXPECT_EQ(text.find('\x1b'), std::string::npos);
  close(terminal);
}

TEST(Output, WhatIsNoTerminalGetsEveryByte) {
  const TempFile file("result", "");
  Output output(file.Path());
  output.Write("\x1b[31m\xe4\n");
  output.Commit();
  EXPECT_EQ(ReadFile(file.Path()), "\x1b[31m\xe4\n");
}

TEST(Output, WithoutCommitNothingStays) {
  const TempFile other("other", "");
  { Output(other.Folder() + "/result").Write("one\n"); }
  EXPECT_THAT(NamesIn(other.Folder()), ElementsAre("other"));
}

TEST(Output, AnExistingFileIsReplacedWholeAndKeepsItsPermissions) {
  const TempFile file("result", "an older and longer result\n");
  chmod(file.Path().c_str(), 0640);
  Output output(file.Path());
  output.Write("new\n");
  EXPECT_EQ(ReadFile(file.Path()), "an older and longer result\n");
  output.Commit();
  EXPECT_EQ(ReadFile(file.Path()), "new\n");
  struct stat now = {};
  stat(file.Path().c_str(), &now);
  EXPECT_EQ(now.st_mode & 0777, 0640U);
}

TEST(Output, AnExistingFileKeepsItsOwner) {
  const TempFile file("a", "before");
  // Only root can make somebody else the owner; for others this stays their own file.
  const uid_t owner = geteuid() == 0 ? 65534 : geteuid();
  ASSERT_EQ(chown(file.Path().c_str(), owner, static_cast<gid_t>(-1)), 0);
  Output output(file.Path());
  output.Write("after");
  output.Commit();
  struct stat there = {};
  stat(file.Path().c_str(), &there);
  EXPECT_EQ(there.st_uid, owner);
  EXPECT_EQ(ReadFile(file.Path()), "after");
}

TEST(Output, AnExistingFileIsKeptOnFailure) {
  const TempFile file("result", "old\n");
  { Output(file.Path()).Write("new\n"); }
  EXPECT_EQ(ReadFile(file.Path()), "old\n");
  EXPECT_THAT(NamesIn(file.Folder()), ElementsAre("result"));
}

TEST(Output, ALinkStaysALink) {
  const TempFile file("target", "old\n");
  const std::string link = file.Folder() + "/link";
  std::filesystem::create_symlink(file.Path(), link);
  Output output(link);
  output.Write("new\n");
  output.Commit();
  EXPECT_TRUE(std::filesystem::is_symlink(link));
  EXPECT_EQ(ReadFile(file.Path()), "new\n");
}

TEST(Output, ALinkToWhatIsNotThereYetStaysALink) {
  const TempFile file("other", "");
  std::filesystem::create_symlink("new", file.Folder() + "/near");
  const std::string link = file.Folder() + "/link";
  std::filesystem::create_symlink(file.Folder() + "/near", link);
  Output output(link);
  output.Write("new\n");
  output.Commit();
  EXPECT_TRUE(std::filesystem::is_symlink(link));
  EXPECT_EQ(ReadFile(file.Folder() + "/new"), "new\n");
}

TEST(Output, ALinkInACircleIsReplaced) {
  const TempFile file("other", "");
  std::filesystem::create_symlink("b", file.Folder() + "/a");
  std::filesystem::create_symlink("a", file.Folder() + "/b");
  Output output(file.Folder() + "/a");
  output.Write("new\n");
  output.Commit();
  EXPECT_EQ(ReadFile(file.Folder() + "/a"), "new\n");
}

TEST(Output, ANewFileHasTheUsualPermissions) {
  const TempFile other("other", "");
  const mode_t mask = umask(022);
  Output output(other.Folder() + "/result");
  output.Commit();
  umask(mask);
  struct stat now = {};
  stat((other.Folder() + "/result").c_str(), &now);
  EXPECT_EQ(now.st_mode & 0777, 0644U);
}

TEST(Output, ADeviceIsWrittenToAndStaysADevice) {
  Output output("/dev/null");
  output.Write("gone\n");
  output.Commit();
  EXPECT_TRUE(std::filesystem::is_character_file("/dev/null"));
}

TEST(Output, AFullDiskIsToldWithTheFile) {
  EXPECT_EQ(ErrorOf([] {
              Output output("/dev/full");
              output.Write("too much\n");
              output.Commit();
            }),
            "/dev/full: cannot be written: No space left on device");
}

TEST(Output, AnErrorAtTheEndIsToldAndKeepsWhatWasThere) {
  for (const char* call : {"fsync", "fclose", "rename"}) {
    const TempFile file("result", "old\n");
    {
      Output output(file.Path());
      output.Write("new\n");
      const FailingCall failing(call, EIO);
      EXPECT_EQ(ErrorOf([&] { output.Commit(); }), file.Path() + ": cannot be written: Input/output error")
          << call;
    }
    EXPECT_EQ(ReadFile(file.Path()), "old\n") << call;
    EXPECT_THAT(NamesIn(file.Folder()), ElementsAre("result")) << call;
  }
}

TEST(Output, AFolderOrNoPlaceIsToldBeforeAnythingIsWritten) {
  EXPECT_EQ(ErrorOf([] { Output("/tmp"); }), "/tmp: cannot be written: Is a directory");
  EXPECT_EQ(ErrorOf([] { Output("/no/such/result"); }),
            "/no/such/result: cannot be written: No such file or directory");
}

TEST(Output, AReaderThatWentAwayIsAnErrorOfItsOwn) {
  const TempFile folder("x", "");
  const std::string path = folder.Folder() + "/pipe";
  ASSERT_EQ(mkfifo(path.c_str(), 0600), 0);
  const auto before = signal(SIGPIPE, SIG_IGN);
  const int reader = open(path.c_str(), O_RDONLY | O_NONBLOCK);
  Output output(path);
  close(reader);
  output.Write("anything");
  EXPECT_THROW(output.Commit(), TslTool::ReaderGone);
  signal(SIGPIPE, before);
}

TEST(SameFile, IsOneFileByWhateverName) {
  const TempFile file("a", "");
  const std::string folder = file.Folder();
  std::filesystem::create_symlink(file.Path(), folder + "/link");
  std::filesystem::create_hard_link(file.Path(), folder + "/twin");
  for (const std::string& other : {folder + "/a", folder + "/./a", folder + "/link", folder + "/twin"})
    EXPECT_TRUE(TslTool::SameFile(file.Path(), other)) << other;
  EXPECT_TRUE(TslTool::SameFile(folder + "/new", folder + "/./new"));
  EXPECT_FALSE(TslTool::SameFile(folder + "/new", folder + "/a"));
  EXPECT_FALSE(TslTool::SameFile(folder + "/new", folder + "/newer"));
}

TEST(ResumableOutput, IsNamedAfterItsFileAndAppearsInCommit) {
  const TempFile other("other", "");
  const std::string path = other.Folder() + "/result";
  Output output(path, Output::Beside::Resumable);
  EXPECT_EQ(output.Part(), path + ".part");
  output.Write("one\n");
  output.Commit();
  EXPECT_EQ(ReadFile(path), "one\n");
  EXPECT_THAT(NamesIn(other.Folder()), ElementsAre("other", "result"));
}

TEST(ResumableOutput, StaysOnlyIfItIsKept) {
  const TempFile other("other", "");
  const std::string path = other.Folder() + "/result";
  { Output(path, Output::Beside::Resumable).Write("one\n"); }
  EXPECT_THAT(NamesIn(other.Folder()), ElementsAre("other"));
  {
    Output output(path, Output::Beside::Resumable);
    output.Write("one\n");
    output.KeepPart();
  }
  EXPECT_EQ(ReadFile(path + ".part"), "one\n");
}

TEST(ResumableOutput, GoesOnBehindWhatIsWhole) {
  const TempFile part("result.part", "one\ntw");
  const std::string path = part.Folder() + "/result";
  Output output(path, Output::Beside::Resumable);
  output.ResumeAt(4);
  output.Write("two\n");
  output.Commit();
  EXPECT_EQ(ReadFile(path), "one\ntwo\n");
}

TEST(ResumableOutput, IsReplacedByTheFirstBytesAndNotBefore) {
  const TempFile part("result.part", "earlier\n");
  const std::string path = part.Folder() + "/result";
  { const Output unused(path, Output::Beside::Resumable); }
  EXPECT_EQ(ReadFile(part.Path()), "earlier\n");
  Output output(path, Output::Beside::Resumable);
  output.Write("new\n");
  output.Commit();
  EXPECT_EQ(ReadFile(path), "new\n");
}

TEST(ResumableOutput, IsForOneProcessAtATime) {
  const TempFile other("other", "");
  const std::string path = other.Folder() + "/result";
  Output output(path, Output::Beside::Resumable);
  EXPECT_EQ(ErrorOf([&] { Output(path, Output::Beside::Resumable); }),
            path + ".part: another process is writing it");
  output.Write("one\n");
  output.Commit();
  EXPECT_EQ(ReadFile(path), "one\n");
}

}  // namespace
}  // namespace tests
