// A run whose writer is killed, or whose disk is full: what was acknowledged is there.
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <signal.h>
#include <sys/mman.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <atomic>
#include <cstring>
#include <functional>
#include <random>
#include <string>
#include <vector>

#include <tool/ToolRun.h>
#include <tool/io/RunMaker.h>

namespace tests {
namespace {

using testing::HasSubstr;
using testing::IsEmpty;
using testing::StartsWith;

// What a writer in a process of its own has reached; seen by both processes.
struct Progress {
  std::atomic<bool> opened = false;  // run and tune are acknowledged
  std::atomic<std::uint32_t> scans = 0;
  std::atomic<bool> ended = false;  // Finish has returned, or something failed
  char failure[256] = "";
};

class SharedProgress {
 public:
  SharedProgress()
      : at_(new (mmap(nullptr, sizeof(Progress), PROT_READ | PROT_WRITE, MAP_SHARED | MAP_ANONYMOUS, -1, 0))
                Progress) {}
  ~SharedProgress() { munmap(at_, sizeof(Progress)); }
  SharedProgress(const SharedProgress&) = delete;
  SharedProgress& operator=(const SharedProgress&) = delete;
  Progress* operator->() const { return at_; }
  Progress& operator*() const { return *at_; }

 private:
  Progress* at_;
};

TslBL::RawSpectrum ScanOf(std::uint32_t number) {
  std::vector<double> counts(200 + number % 7 * 150);
  for (std::size_t i = 0; i < counts.size(); ++i) counts[i] = static_cast<double>(i * i * number % 9973);
  return RawScan(number, counts);
}

void Write(const std::string& file, std::uint32_t scans, Progress& progress) {
  TslTool::RunWriter writer(file, "Fault");
  writer.AddTune(1, TslTool::Simulator(1).Tune());
  progress.opened = true;
  for (std::uint32_t number = 1; number <= scans; ++number) {
    writer.AddScan(ScanOf(number));
    progress.scans = number;
  }
  writer.Finish();
}

// A writer in a process of its own, which waits for the end once it is through.
pid_t StartWriter(const std::string& file, std::uint32_t scans, Progress& progress) {
  const pid_t id = fork();
  if (id != 0) return id;
  try {
    Write(file, scans, progress);
  } catch (const std::exception& e) {
    std::strncpy(progress.failure, e.what(), sizeof progress.failure - 1);
  }
  progress.ended = true;
  for (;;) pause();
}

void Kill(pid_t id) {
  kill(id, SIGKILL);
  waitpid(id, nullptr, 0);
}

// The scans that are left are the first ones: all that were acknowledged, and at most the one in hand.
void ExpectWhatWasAcknowledged(const std::string& file, const Progress& progress) {
  const std::vector<TslBL::RawSpectrum> left = ReadRun(file);
  EXPECT_GE(left.size(), progress.scans);
  EXPECT_LE(left.size(), progress.scans + 1);
  for (std::uint32_t i = 0; i < left.size(); ++i) EXPECT_TRUE(left[i] == ScanOf(i + 1)) << i;
}

constexpr std::uint32_t kScans = 60;

TEST(RunFileFault, AWriterKilledAtAnyMomentLosesAtMostTheScanInHand) {
  std::mt19937 random(7);
  int amidst = 0;
  for (int i = 0; i < 200; ++i) {
    const TempFile folder("x", "");
    const std::string file = folder.Folder() + "/killed.run";
    const SharedProgress progress;
    const pid_t writer = StartWriter(file, kScans, *progress);
    // The scans are soon written: where the moment falls is left to the machine.
    while (!progress->opened && !progress->ended) usleep(50);
    const auto moment = static_cast<std::uint32_t>(random() % (kScans + 2));
    while (progress->scans < std::min(moment, kScans)) sched_yield();
    usleep(static_cast<useconds_t>(random() % 100));
    Kill(writer);
    ASSERT_STREQ(progress->failure, "");
    amidst += progress->ended ? 0 : 1;
    ExpectWhatWasAcknowledged(file, *progress);
  }
  EXPECT_GT(amidst, 100) << "most were killed amidst the work";
}

TEST(RunFileFault, AWriterKilledAtTheBeginningLeavesNothingOrARunWithoutScans) {
  std::mt19937 random(8);
  for (int i = 0; i < 40; ++i) {
    const TempFile folder("x", "");
    const std::string file = folder.Folder() + "/killed.run";
    const SharedProgress progress;
    const pid_t writer = StartWriter(file, 0, *progress);
    usleep(static_cast<useconds_t>(random() % 8000));
    Kill(writer);
    try {
      EXPECT_THAT(ReadRun(file), IsEmpty());
    } catch (const std::runtime_error& error) {
      EXPECT_FALSE(progress->opened) << error.what();
      EXPECT_THAT(error.what(), StartsWith(file + ": "));
    }
  }
}

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

void WriteUntilItFails(const std::string& file, Progress& progress) {
  try {
    Write(file, 10000, progress);
  } catch (const std::runtime_error& e) {
    std::strncpy(progress.failure, e.what(), sizeof progress.failure - 1);
  }
}

TEST(RunFileFault, AFullDiskEndsTheWriterWithAReasonAndKeepsTheScansBeforeIt) {
  std::uint32_t most = 0;
  for (rlim_t bytes = 16384; bytes < 400000; bytes += 7777) {
    const TempFile folder("x", "");
    const std::string file = folder.Folder() + "/full.run";
    const SharedProgress progress;
    OnFullDisk(bytes, [&] { WriteUntilItFails(file, *progress); });
    EXPECT_THAT(progress->failure, StartsWith(file + ": ")) << bytes;
    if (progress->opened) ExpectWhatWasAcknowledged(file, *progress);
    most = std::max<std::uint32_t>(most, progress->scans);
  }
  EXPECT_GT(most, 20U);
}

TEST(RunFileFault, ADiskTooFullForTheBeginningLeavesNoFile) {
  for (const rlim_t bytes : {0U, 1U, 100U, 4096U, 8000U}) {
    const TempFile folder("x", "");
    const SharedProgress progress;
    OnFullDisk(bytes, [&] { WriteUntilItFails(folder.Folder() + "/full.run", *progress); });
    EXPECT_THAT(progress->failure, HasSubstr("full.run: ")) << bytes;
    EXPECT_THAT(NamesIn(folder.Folder()), testing::ElementsAre("x")) << bytes;
  }
}

}  // namespace
}  // namespace tests
