// A run whose writer is killed before each of its system calls, and amidst each write: whoever
// reads it, and wherever it lies then, what was committed is there.
//
// Tests: RunFile.cpp, Snapshot.cpp.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <functional>
#include <string>
#include <vector>

#include <tool/ToolRun.h>
#include <tool/io/AcknowledgedRun.h>
#include <tool/io/KilledProcess.h>
#include <tool/io/NoWaiting.h>
#include <tool/io/OtherProcess.h>

namespace tests {
namespace {

using testing::Contains;
using testing::Not;
using TslTool::Database;

namespace fs = std::filesystem;

const std::string kName = "killed.run";

// Tells what is wrong with a run; nothing if it is right.
using Check = std::function<std::string(const std::string& file)>;

struct Place {
  const char* name;
  unsigned folder, files;  // permissions
  bool owner;
  bool index;  // with FILE-shm, which is no part of the data
};

constexpr Place kPlaces[] = {{"where it was written", 0700, 0600, true, true},
                             {"in a folder for reading", 0555, 0444, false, true},
                             {"a file for reading in a folder for all", 0777, 0444, false, true},
                             {"copied to a medium for reading", 0555, 0444, false, false}};

std::vector<std::string> DataIn(const std::string& folder) {
  std::vector<std::string> names = NamesIn(folder);
  std::erase_if(names, [](const std::string& name) { return name.ends_with("-shm"); });
  return names;
}

std::string WrongAt(const Place& place, const std::string& folder, const Check& check) {
  const TempFile copy("x", "");
  const std::vector<std::string> names = DataIn(folder);
  for (const std::string& name : place.index ? NamesIn(folder) : names)
    fs::copy(folder + "/" + name, copy.Folder(), fs::copy_options::overwrite_existing);
  const Permissions permissions(copy.Folder(), place.folder, place.files);
  const NoWaiting theyAreDead;
  const auto read = [&] { return check(copy.Folder() + "/" + kName); };
  std::string wrong = place.owner ? read() : AsUser(read);
  for (const std::string& name : names)
    if (ReadFile(copy.Folder() + "/" + name) != ReadFile(folder + "/" + name)) wrong += name + " was changed";
  return wrong;
}

std::string WrongAnywhere(const std::string& folder, const Check& check) {
  for (const Place& place : kPlaces)
    if (const std::string wrong = WrongAt(place, folder, check); !wrong.empty())
      return std::string(place.name) + ": " + wrong;
  return "";
}

constexpr std::uint32_t kScans = 5;

// Kills a writer at each moment until one is through; returns how many were killed.
std::uint32_t KillAtEach(bool half,
                         const std::function<void(const std::string& file, const Acknowledged&)>& write) {
  DemoTune();  // once for all
  for (Moment moment{0, half};; ++moment.calls) {
    const TempFile folder("x", "");
    const Acknowledged done;
    const bool killed = IsKilledAt(moment, [&] { write(folder.Folder() + "/" + kName, done); });
    EXPECT_THAT(NamesIn(folder.Folder()), Not(Contains(kName + "-journal"))) << "call " << moment.calls;
    const Check check = [&](const std::string& file) { return WhatIsLost(file, done); };
    EXPECT_EQ(WrongAnywhere(folder.Folder(), check), "")
        << "call " << moment.calls << (half ? ", half done" : "");
    if (!killed) return moment.calls;
  }
}

int TakeInAfterAFewPages(sqlite3* database, char**, const sqlite3_api_routines*) {
  return sqlite3_wal_autocheckpoint(database, 8);
}

// Databases that are opened from now on take their log into the file as they else do after a
// thousand pages.
void TakeInLogsOften() { sqlite3_auto_extension(reinterpret_cast<void (*)()>(TakeInAfterAFewPages)); }

class KilledWriter : public testing::TestWithParam<bool> {};

TEST_P(KilledWriter, LosesNoScanThatWasAcknowledged) {
  const std::uint32_t moments = KillAtEach(GetParam(), [](const std::string& file, const Acknowledged& done) {
    WriteAcknowledged(file, kScans, done);
  });
  EXPECT_GT(moments, 30U);
}

TEST_P(KilledWriter, LosesNoneWhileItTakesItsLogIntoTheFile) {
  const std::uint32_t moments = KillAtEach(GetParam(), [](const std::string& file, const Acknowledged& done) {
    TakeInLogsOften();
    WriteAcknowledged(file, 2 * kScans, done);
  });
  EXPECT_GT(moments, 60U);
}

INSTANTIATE_TEST_SUITE_P(RunFile, KilledWriter, testing::Bool());

// Nothing if a change by kLater was made to all scans or to none.
std::string WhatIsHalf(const std::string& file, std::size_t scans) {
  std::size_t later = 0;
  try {
    const std::vector<TslBL::RawSpectrum> left = ReadRun(file);
    if (left.size() != scans) return std::to_string(left.size()) + " scans";
    for (const TslBL::RawSpectrum& scan : left) later += scan.info.TimeStamp % 1000 == 500;
  } catch (const std::exception& error) {
    return error.what();
  }
  return later == 0 || later == scans ? "" : std::to_string(later) + " scans are changed";
}

class KilledChange : public testing::TestWithParam<const char*> {};

// Other programs, and earlier versions of this one, have their own journals. The cache is small,
// so that pages are written before the transaction ends.
TEST_P(KilledChange, OfAnotherProgramIsWholeOrIsNone) {
  constexpr std::uint32_t kMany = 20;
  const TempFile original("x", "");
  WriteAcknowledged(original.Folder() + "/" + kName, kMany, Acknowledged());
  std::uint32_t moments = 0;
  for (bool killed = true; killed; ++moments) {
    const TempFile folder("x", "");
    fs::copy(original.Folder() + "/" + kName, folder.Folder());
    killed = IsKilledAt({moments, false}, [&] {
      Database database(folder.Folder() + "/" + kName, Database::Mode::Create);
      database.Execute(std::string("PRAGMA cache_size = 2;") + GetParam());
    });
    const Check check = [](const std::string& file) { return WhatIsHalf(file, kMany); };
    EXPECT_EQ(WrongAnywhere(folder.Folder(), check), "") << "call " << moments;
  }
  EXPECT_GT(moments, 15U);
}

INSTANTIATE_TEST_SUITE_P(
    RunFile, KilledChange,
    testing::Values("PRAGMA journal_mode = delete; UPDATE scan SET time_stamp = time_stamp + 500",
                    "PRAGMA journal_mode = truncate; UPDATE scan SET time_stamp = time_stamp + 500",
                    "PRAGMA journal_mode = persist; UPDATE scan SET time_stamp = time_stamp + 500",
                    "PRAGMA journal_mode = wal; UPDATE scan SET time_stamp = time_stamp + 500; "
                    "PRAGMA journal_mode = delete"));

}  // namespace
}  // namespace tests
