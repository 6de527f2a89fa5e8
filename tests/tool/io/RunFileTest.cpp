#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <limits>
#include <memory>
#include <string>
#include <vector>

#include <method/Samples.h>
#include <tool/ToolRun.h>
#include <tool/io/NoWaiting.h>
#include <tool/io/RunMaker.h>
#include <tslbl/records/RecordForms.h>

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
  EXPECT_EQ(reader.Tunes().at(1), DemoTune());
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
  writer.AddTune(1, DemoTune());
  for (const TslBL::RawSpectrum& scan : SmallRun::Scans()) writer.AddScan(scan);
  EXPECT_EQ(ReadRun(folder.Folder() + "/a.run"), SmallRun::Scans());
}

TEST(RunFile, AWriterThatGoesWithoutFinishingLeavesEveryScan) {
  const TempFile folder("x", "");
  {
    RunWriter writer(folder.Folder() + "/a.run", "");
    writer.AddTune(1, DemoTune());
    for (const TslBL::RawSpectrum& scan : SmallRun::Scans()) writer.AddScan(scan);
  }
  EXPECT_EQ(ReadRun(folder.Folder() + "/a.run"), SmallRun::Scans());
}

TEST(RunFile, IsFinishedWhileItIsRead) {
  const NoWaiting readerStays;
  const TempFile folder("x", "");
  const std::string file = folder.Folder() + "/a.run";
  auto writer = std::make_unique<RunWriter>(file, "");
  writer->AddTune(1, DemoTune());
  const auto scans = SmallRun::Scans();
  writer->AddScan(scans[0]);
  writer->AddScan(scans[1]);
  RunReader reader(file);
  writer->AddScan(scans[2]);
  writer->Finish();
  writer.reset();
  EXPECT_EQ(Rest(reader), std::vector(scans.begin(), scans.begin() + 2));
  EXPECT_EQ(ReadRun(file), scans);
}

TEST(RunFile, AScanThatComesWithATuneOfItsOwnIsNotReadBeforeIt) {
  const TempFile folder("x", "");
  const std::string file = folder.Folder() + "/a.run";
  RunWriter writer(file, "");
  writer.AddTune(1, DemoTune());
  RunReader before(file);
  writer.AddTune(2, DemoTune());
  TslBL::RawSpectrum scan = RawScan(1, {1, 2});
  scan.info.TuneId = 2;
  writer.AddScan(scan);
  EXPECT_THAT(Rest(before), IsEmpty());
  EXPECT_THAT(ReadRun(file), ElementsAre(scan));
}

TEST(RunFile, TakesInNothingThatAnEarlierRunHasLeft) {
  const TempFile earlier("x", "");
  RunWriter other(earlier.Folder() + "/b.run", "Earlier");
  other.AddTune(1, DemoTune());
  other.AddScan(RawScan(7, {7}));
  const TempFile folder("x", "");
  const std::string file = folder.Folder() + "/a.run";
  for (const char* companion : {"-wal", "-shm"})
    std::filesystem::copy(earlier.Folder() + "/b.run" + companion, file + companion);
  std::ofstream(file + "-journal") << "a journal";
  RunWriter(file, "").Finish();
  EXPECT_THAT(ReadRun(file), IsEmpty());
  EXPECT_THAT(NamesIn(folder.Folder()), ElementsAre("a.run", "x"));
}

TEST(RunFile, AWriterThatIsEndedAtOnceLeavesAnEmptyFileThatSaysSo) {
  const TempFile file("a.run", "");
  EXPECT_EQ(ErrorOfRun(file.Path()), ": is empty, as a run is whose writer was ended at once");
}

TEST(RunFile, EveryNumberHas32Bits) {
  constexpr std::uint32_t kMost = std::numeric_limits<std::uint32_t>::max();
  const TempFile folder("x", "");
  const std::string file = folder.Folder() + "/a.run";
  RunWriter writer(file, "");
  writer.AddTune(kMost, DemoTune());
  TslBL::RawSpectrum scan = RawScan(1, std::vector<double>(70000, kMost));
  scan.info.Id = kMost;
  scan.info.TimeStamp = kMost - 1;
  scan.info.TuneId = kMost;
  writer.AddScan(scan);
  EXPECT_THAT(ReadRun(file), ElementsAre(scan));
}

TEST(RunFile, ScanNumbersHave32Bits) {
  const SmallRun run;
  run.Change(
      "UPDATE scan SET number = 4294967295 WHERE number = 3; UPDATE scan SET number = 70000 WHERE number = "
      "2");
  RunReader reader(run.Path());
  std::vector<std::uint32_t> numbers;
  std::uint32_t number = 0;
  for (TslBL::RawSpectrum raw; reader.Next(number, raw);) numbers.push_back(number);
  EXPECT_THAT(numbers, ElementsAre(1, 70000, 4294967295));
  EXPECT_THAT(IdsIn(run, Numbers(65537, 4294967295)), ElementsAre(2, 3));
}

TEST(RunFile, IsRemovedWithItsCompanions) {
  const TempFile folder("a.run", "");
  for (const char* companion : {"-journal", "-wal", "-shm"}) std::ofstream(folder.Path() + companion) << "x";
  TslTool::RemoveRun(folder.Path());
  EXPECT_TRUE(std::filesystem::is_empty(folder.Folder()));
}

TEST(RunFile, MayHaveACalibrationForATune) {
  const SmallRun run;
  EXPECT_EQ(TslTool::RunReader(run.Path()).CalibrationOf(1), nullptr);
  const std::vector<TslBL::MZCalPt> points = {{L"\u00e4", 100, 2000}, {L"b", 200.25, 4010.5}};
  const std::string calibrated = run.Folder() + "/calibrated.run";
  {
    TslTool::RunWriter writer(calibrated, "");
    writer.AddTune(1, DemoTune());
    writer.AddTune(2, DemoTune());
    writer.AddCalibration(1, points);
    writer.Finish();
  }
  const TslTool::RunReader reader(calibrated);
  ASSERT_NE(reader.CalibrationOf(1), nullptr);
  EXPECT_EQ(*reader.CalibrationOf(1), points);
  EXPECT_EQ(reader.CalibrationOf(2), nullptr);
}

TEST(RunFile, ADamagedCalibrationIsAnErrorThatNamesItsTable) {
  const SmallRun run;
  run.Change("CREATE TABLE calibration(tune_id, name, mz, mass_dac)");
  run.Change("INSERT INTO calibration VALUES (1, 'a', 'x', 5)");
  EXPECT_THAT(ErrorOfRun(run.Path()), testing::HasSubstr("table calibration: "));
}

// A run with a method.
class MethodRun {
 public:
  explicit MethodRun(const TslBL::Method& method) {
    RunWriter writer(Path(), "");
    writer.AddMethod(method);
    writer.AddTune(1, DemoTune());
    writer.AddScan(RawScan(1, {1, 2}));
    writer.Finish();
  }
  std::string Path() const { return folder_.Folder() + "/method.run"; }
  void Change(const std::string& sql) const { Database(Path(), Database::Mode::Create).Execute(sql); }

 private:
  TempFile folder_{"x", ""};
};

TEST(RunFile, MayHoldTheMethodThatAcquiredIt) {
  const SmallRun without;
  EXPECT_EQ(RunReader(without.Path()).AcquiredBy(), nullptr);
  TslBL::Method method = SampleMethod();
  method.Tunes[1].ControlData.MZLow = 100.123456789;
  const MethodRun run(method);
  const RunReader reader(run.Path());
  ASSERT_NE(reader.AcquiredBy(), nullptr);
  EXPECT_EQ(*reader.AcquiredBy(), method);
}

TEST(RunFile, AMethodKeepsItsNumbersOfRecords) {
  TslBL::Method method = SampleMethod();
  method.TuneRuns.at(2).Records = 7;
  const MethodRun run(method);
  EXPECT_EQ(RunReader(run.Path()).AcquiredBy()->TuneRuns.at(2).Records, 7U);
}

TEST(RunFile, OtherProgramsFindTheMethod) {
  const MethodRun run(SampleMethod());
  const Database database(run.Path(), Database::Mode::Read);
  Statement rows(database, "SELECT record, document FROM method");
  ASSERT_TRUE(rows.Next());
  EXPECT_EQ(rows.Bytes(0), TslBL::ToBytes(SampleMethod()));
  EXPECT_THAT(std::string(rows.Bytes(1)), HasSubstr("<TuneRunPair Id=\"7\">"));
  EXPECT_FALSE(rows.Next());
}

TEST(RunFile, ADamagedMethodIsAnErrorThatNamesItsTable) {
  const struct {
    const char* sql;
    const char* error;
  } kCases[] = {
      {"UPDATE method SET record = x'09000000'", "table method: Unknown Method version."},
      {"UPDATE method SET record = substr(record, 1, 40)", "table method: Unknown IonSource version."},
      {"UPDATE method SET record = CAST(record || x'00' AS BLOB)",
       "table method: Bytes behind the record: 1."},
      {"UPDATE method SET document = '<Method/>'", "table method: its document lacks tune run 2"},
      {"INSERT INTO method SELECT * FROM method", "table method: holds more than one method"},
      {"ALTER TABLE method RENAME COLUMN record TO bytes", "table method: no such column: record"},
  };
  for (const auto& [sql, error] : kCases) {
    const MethodRun run(SampleMethod());
    run.Change(sql);
    EXPECT_EQ(ErrorOfRun(run.Path()), error) << sql;
  }
  for (const char* document : {"", "<Tune/>", "<Method"}) {
    const MethodRun run(SampleMethod());
    run.Change("UPDATE method SET document = '" + std::string(document) + "'");
    EXPECT_THAT(ErrorOfRun(run.Path()), testing::StartsWith("table method: ")) << document;
  }
}

}  // namespace
}  // namespace tests
