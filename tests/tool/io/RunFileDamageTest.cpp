// Tests: RunFile.cpp.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <string>
#include <vector>

#include <tool/ToolRun.h>
#include <tool/io/OpenScans.h>
#include <tool/io/RunMaker.h>

namespace tests {
namespace {

using testing::HasSubstr;
using TslTool::InputError;

std::string ErrorAfter(const std::string& sql) {
  const SmallRun run;
  run.Change(sql);
  return ErrorOfRun(run.Path());
}

struct Case {
  const char* sql;
  const char* error;
};

class DamagedRun : public testing::TestWithParam<Case> {};

TEST_P(DamagedRun, IsRefusedWithPlaceAndReason) { EXPECT_EQ(ErrorAfter(GetParam().sql), GetParam().error); }

INSTANTIATE_TEST_SUITE_P(
    RunFile, DamagedRun,
    testing::Values(
        Case{"PRAGMA application_id = 1", ": is an SQLite file, but not a run of raw counts"},
        Case{"UPDATE run SET value = '2' WHERE key = 'format'",
             ": has run format \"2\"; this program reads 1"},
        Case{"DELETE FROM run", ": has run format \"\"; this program reads 1"},
        Case{"DROP TABLE run", ": no such table: run"}, Case{"DROP TABLE tune", ": no such table: tune"},
        Case{"DROP TABLE scan", "table scan: no such table: scan"},
        Case{"ALTER TABLE scan RENAME COLUMN counts TO pulses", "table scan: no such column: counts"},
        Case{"DELETE FROM tune", "scan 1: tune 1 is not in the run"},
        Case{"UPDATE scan SET tune_id = 9 WHERE number = 3", "scan 3: tune 9 is not in the run"},
        Case{"UPDATE tune SET id = -1", ": tune id -1 is out of range"},
        Case{"UPDATE scan SET counts = x'0102' WHERE number = 2", "scan 2: counts are damaged"},
        Case{"UPDATE scan SET counts = x'' WHERE number = 2", "scan 2: counts are cut short"},
        Case{"UPDATE scan SET points = 301 WHERE number = 2", "scan 2: counts are damaged"},
        Case{"UPDATE scan SET points = 4294967295 WHERE number = 1", "scan 1: counts are cut short"},
        Case{"UPDATE scan SET points = 4294967296 WHERE number = 1",
             "scan 1: number of points 4294967296 is out of range"},
        Case{"UPDATE scan SET points = -1 WHERE number = 1", "scan 1: number of points -1 is out of range"},
        Case{"UPDATE scan SET points = 'three' WHERE number = 1", "scan 1: points is not a whole number"},
        Case{"UPDATE scan SET encoding = 'u16' WHERE number = 1",
             "scan 1: unknown encoding of counts \"u16\""},
        Case{"UPDATE scan SET id = -1 WHERE number = 2", "scan 2: id -1 is out of range"},
        Case{"UPDATE scan SET time_stamp = -5 WHERE number = 2", "scan 2: time stamp -5 is out of range"},
        Case{"UPDATE scan SET time_stamp = 'noon' WHERE number = 2",
             "scan 2: time_stamp is not a whole number"},
        Case{"UPDATE scan SET tic = 'much' WHERE number = 2", "scan 2: tic is not a number"},
        Case{"UPDATE scan SET tic = 9e999 WHERE number = 2", "scan 2: tic is not a finite number"},
        Case{"UPDATE scan SET number = -1 WHERE number = 1", "first scan: scan number -1 is out of range"},
        Case{"UPDATE scan SET number = 5000000000 WHERE number = 2",
             "behind scan 3: scan number 5000000000 is out of range"}));

TEST(RunFile, ADamagedTuneIsNamed) {
  EXPECT_THAT(ErrorAfter("UPDATE tune SET record = x'0102'"), HasSubstr("tune 1: "));
}

TEST(RunFile, CountsThatAreNoNumbersAreRefused) {
  const SmallRun run;
  TslTool::RunWriter writer(run.Folder() + "/nan.run", "");
  writer.AddTune(1, DemoTune());
  writer.AddScan([] {
    TslBL::RawSpectrum raw = RawScan(1, {1.0});
    raw.counts[0] = std::numeric_limits<double>::quiet_NaN();
    return raw;
  }());
  EXPECT_EQ(ErrorOfRun(run.Folder() + "/nan.run"), "scan 1: counts hold a value that is no number");
}

TEST(RunFile, CutAnywhereItIsWholeOrRefused) {
  const SmallRun run;
  const std::string bytes = ReadFile(run.Path());
  const TempFile cut("cut.run", "");
  for (std::size_t length = 100; length < bytes.size(); length += 149) {
    cut.Write(std::string_view(bytes).substr(0, length));
    const bool whole = ErrorOfRun(cut.Path()).empty() && ReadRun(cut.Path()) == SmallRun::Scans();
    EXPECT_TRUE(whole || !ErrorOfRun(cut.Path()).empty()) << length;
  }
}

// A file has no sum over everything, so a changed time stamp is a time stamp. But counts are
// right or refused, and nothing but an InputError comes out.
TEST(RunFile, GarbledAnywhereItsCountsAreRightOrRefused) {
  const SmallRun run;
  const std::string bytes = ReadFile(run.Path());
  const TempFile garbled("garbled.run", "");
  std::size_t refused = 0;
  for (std::size_t i = 0; i < bytes.size(); i += 29) {
    std::string changed = bytes;
    for (std::size_t k = i; k < std::min(i + 4, bytes.size()); ++k)
      changed[k] = static_cast<char>(~changed[k]);
    garbled.Write(changed);
    try {
      for (const TslBL::RawSpectrum& scan : ReadRun(garbled.Path())) {
        const auto originals = SmallRun::Scans();
        EXPECT_TRUE(std::ranges::any_of(originals, [&](const auto& o) { return o.counts == scan.counts; }))
            << i;
      }
    } catch (const InputError& error) {
      EXPECT_THAT(error.what(), testing::StartsWith(garbled.Path() + ": ")) << i;
      ++refused;
    }
  }
  EXPECT_GT(refused, 20U);
}

TEST(RunFile, WithoutItsHeadItIsNoDatabase) {
  const TempFile file("a.run", "SQLite format 3");
  EXPECT_FALSE(TslTool::IsDatabase(file.Path()));
}

}  // namespace
}  // namespace tests
