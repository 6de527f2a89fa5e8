#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <filesystem>
#include <string>
#include <thread>
#include <vector>

#include <tool/io/RunMaker.h>

namespace tests {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using TslTool::Database;
using TslTool::RunReader;
using TslTool::RunWriter;
using TslTool::ScanFilter;
using TslTool::Statement;

std::vector<std::uint32_t> IdsOf(const std::vector<TslBL::RawSpectrum>& scans) {
  std::vector<std::uint32_t> ids;
  for (const auto& scan : scans) ids.push_back(scan.info.Id);
  return ids;
}

std::vector<std::uint32_t> IdsIn(const SmallRun& run, const ScanFilter& filter) {
  return IdsOf(ReadRun(run.Path(), filter));
}

ScanFilter Numbers(std::uint32_t from, std::uint32_t to) {
  ScanFilter filter;
  filter.firstNumber = from;
  filter.lastNumber = to;
  return filter;
}

ScanFilter Times(double from, double to) {
  ScanFilter filter;
  filter.rtFrom = from;
  filter.rtTo = to;
  return filter;
}

TEST(RunFile, ScansComeBackAsTheyWere) {
  const SmallRun run;
  EXPECT_EQ(ReadRun(run.Path()), SmallRun::Scans());
}

TEST(RunFile, TunesAndTitleComeBackAsTheyWere) {
  const SmallRun run;
  const RunReader reader(run.Path());
  EXPECT_EQ(reader.Title(), "Small");
  EXPECT_EQ(reader.Count(), 3U);
  ASSERT_EQ(reader.Tunes().size(), 1U);
  EXPECT_EQ(reader.Tunes().at(1), TslTool::Simulator(1).Tune());
}

TEST(RunFile, AFinishedRunIsOneFile) {
  const SmallRun run;
  int files = 0;
  for ([[maybe_unused]] const auto& entry : std::filesystem::directory_iterator(run.Folder())) ++files;
  EXPECT_EQ(files, 2);  // and the folder's own "x"
}

TEST(RunFile, ARunWithoutScansCanBeRead) {
  const TempFile folder("x", "");
  const std::string file = folder.Folder() + "/none.run";
  RunWriter(file, "").Finish();
  EXPECT_THAT(ReadRun(file), IsEmpty());
}

TEST(RunFile, ScansAreChosenByNumber) {
  const SmallRun run;
  EXPECT_THAT(IdsIn(run, Numbers(2, 2)), ElementsAre(2));
  EXPECT_THAT(IdsIn(run, Numbers(2, 99)), ElementsAre(2, 3));
  EXPECT_THAT(IdsIn(run, Numbers(7, 9)), IsEmpty());
}

TEST(RunFile, ScansAreChosenByTimeWithBothEnds) {
  const SmallRun run;
  EXPECT_THAT(IdsIn(run, Times(1.0, 2.0)), ElementsAre(1, 2));
  EXPECT_THAT(IdsIn(run, Times(2.001, 1e9)), ElementsAre(3));
}

// 8.017 * 1000 is a little more than 8017.
TEST(RunFile, ATimeIsFoundAsItIsShown) {
  const SmallRun run;
  run.Change("UPDATE scan SET time_stamp = 8017 WHERE number = 2");
  EXPECT_THAT(IdsIn(run, Times(8.017, 8.017)), ElementsAre(2));
}

TEST(RunFile, IsNeverWrittenOverAnother) {
  const SmallRun run;
  EXPECT_THROW(RunWriter(run.Path(), ""), std::runtime_error);
  EXPECT_EQ(ReadRun(run.Path()), SmallRun::Scans());
}

TEST(RunFile, TheWriterNamesAFolderThatIsNotThere) {
  try {
    RunWriter("/no/such/folder.run", "");
    FAIL();
  } catch (const std::runtime_error& error) {
    EXPECT_THAT(error.what(), HasSubstr("/no/such/folder.run: "));
  }
}

TEST(RunFile, OtherProgramsFindTheDocumentedColumns) {
  const SmallRun run;
  const Database database(run.Path(), Database::Mode::Read);
  Statement scan(database,
                 "SELECT number, scan.id, time_stamp, tune_id, tic, points, encoding, length(counts), name "
                 "FROM scan JOIN tune ON tune.id = tune_id WHERE number = 2");
  ASSERT_TRUE(scan.Next());
  const TslBL::RawSpectrum written = SmallRun::Scans()[1];
  EXPECT_EQ(scan.Integer(0), 2);
  EXPECT_EQ(scan.Integer(1), 2);
  EXPECT_EQ(scan.Integer(2), 2000);
  EXPECT_EQ(scan.Integer(3), 1);
  EXPECT_EQ(scan.Real(4), written.info.TIC);
  EXPECT_EQ(scan.Integer(5), 300);
  EXPECT_EQ(scan.Bytes(6), "u32-zlib");
  EXPECT_GT(scan.Integer(7), 0);
  EXPECT_EQ(scan.Bytes(8), "Demonstration");
}

TEST(RunFile, OtherProgramsFindWhatARunIs) {
  const SmallRun run;
  const Database database(run.Path(), Database::Mode::Read);
  Statement rows(database, "SELECT key FROM run ORDER BY key");
  std::vector<std::string> keys;
  while (rows.Next()) keys.emplace_back(rows.Bytes(0));
  EXPECT_THAT(keys, ElementsAre("created", "format", "title", "writer"));
  Statement document(database, "SELECT document FROM tune");
  ASSERT_TRUE(document.Next());
  EXPECT_THAT(std::string(document.Bytes(0)), HasSubstr("<MZLow>100</MZLow>"));
}

TEST(RunFile, CanBeReadWhileItIsWritten) {
  const TempFile folder("x", "");
  RunWriter writer(folder.Folder() + "/a.run", "");
  writer.AddTune(1, TslTool::Simulator(1).Tune());
  for (const TslBL::RawSpectrum& scan : SmallRun::Scans()) writer.AddScan(scan);
  EXPECT_EQ(ReadRun(folder.Folder() + "/a.run"), SmallRun::Scans());
}

TEST(RunFile, AWriterThatGoesWithoutFinishingLeavesEveryScan) {
  const TempFile folder("x", "");
  {
    RunWriter writer(folder.Folder() + "/a.run", "");
    writer.AddTune(1, TslTool::Simulator(1).Tune());
    for (const TslBL::RawSpectrum& scan : SmallRun::Scans()) writer.AddScan(scan);
  }
  EXPECT_EQ(ReadRun(folder.Folder() + "/a.run"), SmallRun::Scans());
}

TEST(RunFile, IsRemovedWithItsCompanions) {
  const TempFile folder("a.run", "");
  for (const char* companion : {"-wal", "-shm"}) std::ofstream(folder.Path() + companion) << "x";
  TslTool::RemoveRun(folder.Path());
  EXPECT_TRUE(std::filesystem::is_empty(folder.Folder()));
}

// Writes scans until it is killed and tells the number of each that is written.
[[noreturn]] void WriteForEver(const std::string& file, int told) {
  RunWriter writer(file, "");
  writer.AddTune(1, TslTool::Simulator(1).Tune());
  for (std::uint32_t id = 1;; ++id) {
    writer.AddScan(RawScan(id, std::vector<double>(2000, id)));
    if (write(told, &id, sizeof id) != sizeof id) _exit(1);
  }
}

// Kills a writer `delay` after its first scan and returns how many scans it told.
std::uint32_t WriteAndKill(const std::string& file, std::chrono::microseconds delay) {
  int ends[2];
  if (pipe(ends) != 0) throw std::runtime_error("no pipe");
  const pid_t child = fork();
  if (child == 0) WriteForEver(file, ends[1]);
  close(ends[1]);
  std::uint32_t told = 0;
  if (read(ends[0], &told, sizeof told) != sizeof told) throw std::runtime_error("no first scan");
  std::this_thread::sleep_for(delay);
  kill(child, SIGKILL);
  waitpid(child, nullptr, 0);
  while (read(ends[0], &told, sizeof told) == sizeof told) continue;
  close(ends[0]);
  return told;
}

TEST(RunFile, AKilledWriterLosesAtMostTheScanInHand) {
  for (int i = 0; i < 30; ++i) {
    const TempFile folder("x", "");
    const std::string file = folder.Folder() + "/killed.run";
    const std::uint32_t told = WriteAndKill(file, std::chrono::microseconds(i * 700));
    const auto scans = ReadRun(file);
    ASSERT_GE(scans.size(), told) << i;
    ASSERT_LE(scans.size(), told + 1) << i;
    for (std::uint32_t k = 0; k < scans.size(); ++k)
      ASSERT_EQ(scans[k], RawScan(k + 1, std::vector<double>(2000, k + 1))) << i;
  }
}

}  // namespace
}  // namespace tests
