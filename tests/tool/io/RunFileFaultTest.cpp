// A run whose disk is full: what was acknowledged is there.
//
// Tests: RunFile.cpp.
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <signal.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstring>
#include <functional>
#include <string>

#include <tool/ToolRun.h>
#include <tool/io/AcknowledgedRun.h>

namespace tests {
namespace {

using testing::HasSubstr;
using testing::StartsWith;

// Runs `work` in a process that may write files of this many bytes only, as on a disk that is full.
void OnFullDisk(rlim_t bytes, const std::function<void()>& work) {
  const pid_t id = fork();
  if (id == 0) {
    signal(SIGXFSZ, SIG_IGN);
    const rlimit limit = {bytes, bytes};
    setrlimit(RLIMIT_FSIZE, &limit);
    work();
    _exit(0);
  }
  int status = 0;
  waitpid(id, &status, 0);
  EXPECT_EQ(status, 0);
}

void WriteUntilItFails(const std::string& file, const Acknowledged& done) {
  try {
    WriteAcknowledged(file, 10000, done);
  } catch (const std::runtime_error& e) {
    std::strncpy(done->failure, e.what(), sizeof done->failure - 1);
  }
}

TEST(RunFileFault, AFullDiskEndsTheWriterWithAReasonAndKeepsTheScansBeforeIt) {
  std::uint32_t most = 0;
  for (rlim_t bytes = 16384; bytes < 400000; bytes += 7777) {
    const TempFile folder("x", "");
    const std::string file = folder.Folder() + "/full.run";
    const Acknowledged done;
    OnFullDisk(bytes, [&] { WriteUntilItFails(file, done); });
    EXPECT_THAT(done->failure, StartsWith(file + ": ")) << bytes;
    if (done->opened) {
      EXPECT_EQ(WhatIsLost(file, done), "") << bytes;
    }
    most = std::max<std::uint32_t>(most, done->scans);
  }
  EXPECT_GT(most, 20U);
}

TEST(RunFileFault, ADiskTooFullForTheBeginningLeavesNoFile) {
  for (const rlim_t bytes : {0U, 1U, 100U, 4096U, 8000U}) {
    const TempFile folder("x", "");
    const Acknowledged done;
    OnFullDisk(bytes, [&] { WriteUntilItFails(folder.Folder() + "/full.run", done); });
    EXPECT_THAT(done->failure, HasSubstr("full.run: ")) << bytes;
    EXPECT_THAT(NamesIn(folder.Folder()), testing::ElementsAre("x")) << bytes;
  }
}

}  // namespace
}  // namespace tests
