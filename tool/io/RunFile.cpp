#include <tool/io/RunFile.h>

#include <tool/frame/FileLock.h>
#include <tool/frame/InputError.h>
#include <tool/io/Counts.h>
#include <tool/io/ForeignKinds.h>
#include <tool/io/Snapshot.h>
#include <tslbl/Version.h>
#include <tslbl/closed/common/Text.h>
#include <tslbl/records/RecordForms.h>
#include <algorithm>
#include <cmath>
#include <ctime>
#include <filesystem>
#include <stdexcept>

namespace TslTool {
namespace {

// "TSLR": how other programs, file(1) among them, know a run.
constexpr std::int64_t kApplicationId = 0x54534C52;
constexpr std::int64_t kFormat = 1;

constexpr const char* kSchema = R"sql(
  CREATE TABLE run(key TEXT PRIMARY KEY NOT NULL, value TEXT NOT NULL);
  CREATE TABLE tune(id INTEGER PRIMARY KEY, name TEXT NOT NULL, record BLOB NOT NULL, document TEXT NOT NULL);
  CREATE TABLE scan(number INTEGER PRIMARY KEY, id INTEGER NOT NULL, time_stamp INTEGER NOT NULL,
                    tune_id INTEGER NOT NULL REFERENCES tune(id), tic REAL NOT NULL, points INTEGER NOT NULL,
                    encoding TEXT NOT NULL, counts BLOB NOT NULL);
)sql";

// Runs `read`; what SQLite or a record finds wrong becomes an InputError with the place.
template <class Read>
auto AtPlace(const std::string& file, const std::string& place, Read read) {
  try {
    return read();
  } catch (const InputError&) {
    throw;
  } catch (const std::bad_alloc&) {
    throw;
  } catch (const std::exception& e) {
    std::string reason = e.what();
    if (reason.starts_with(file + ": ")) reason.erase(0, file.size() + 2);
    throw InputError(file, place, reason);
  }
}

std::uint32_t Unsigned32(const Statement& row, int column, const char* name) {
  const std::int64_t value = row.Integer(column);
  if (value < 0 || value > std::numeric_limits<std::uint32_t>::max())
    throw std::runtime_error(std::string(name) + " " + std::to_string(value) + " is out of range");
  return static_cast<std::uint32_t>(value);
}

// Bytes of a method do not keep how many spectra a run takes, documents not all digits of its tunes.
TslBL::Method MethodOf(std::string_view record, std::string_view document) {
  auto method = TslBL::FromBytes<TslBL::Method>(record);
  const auto read = TslBL::FromXml<TslBL::Method>(TslCommon::FromUtf8(std::string(document)));
  for (auto& [id, run] : method.TuneRuns) {
    const auto same = read.TuneRuns.find(id);
    if (same == read.TuneRuns.end())
      throw std::runtime_error("its document lacks tune run " + std::to_string(id));
    run.Records = same->second.Records;
  }
  return method;
}

std::string PlaceOf(std::uint32_t number) { return "scan " + std::to_string(number); }

}  // namespace

RunWriter::RunWriter(const std::string& file, const std::string& title) {
  CreateExclusive(file);
  try {
    database_.emplace(file, Database::Mode::Create);
    Begin(title);
  } catch (...) {
    database_.reset();
    RemoveRun(file);
    throw;
  }
}

void RunWriter::Begin(const std::string& title) {
  // To turn a file to its log, and back in Finish, is one write within its first sector, so a
  // journal on the disk would make it no safer. But one that a killed writer leaves would have
  // to be rolled back, which readers must not do.
  database_->SetJournalMode("memory");
  database_->SetJournalMode("wal");
  database_->Execute("PRAGMA synchronous = NORMAL; BEGIN;");
  database_->Execute("PRAGMA application_id = " + std::to_string(kApplicationId));
  database_->Execute(kSchema);
  Statement insert(*database_, "INSERT INTO run VALUES (?, ?)");
  const std::pair<std::string, std::string> rows[] = {{"format", std::to_string(kFormat)},
                                                      {"writer", "tslbl " TSLBL_VERSION},
                                                      {"created", std::to_string(std::time(nullptr))},
                                                      {"title", title}};
  for (const auto& [key, value] : rows) {
    insert.Bind(1, std::string_view(key));
    insert.Bind(2, std::string_view(value));
    insert.Run();
  }
  database_->Execute("COMMIT");
  insertScan_ = std::make_unique<Statement>(*database_,
                                            "INSERT INTO scan(id, time_stamp, tune_id, tic, points, "
                                            "encoding, counts) VALUES (?, ?, ?, ?, ?, ?, ?)");
}

void RunWriter::AddTune(std::uint32_t id, const TslBL::Tune& tune) {
  Statement insert(*database_, "INSERT INTO tune VALUES (?, ?, ?, ?)");
  const std::string name = TslCommon::ToUtf8(tune.Info.Name);
  const std::string record = TslBL::ToBytes(tune);
  const std::string document = TslCommon::ToUtf8(TslBL::ToXml(tune));
  insert.Bind(1, std::int64_t{id});
  insert.Bind(2, std::string_view(name));
  insert.BindBlob(3, record);
  insert.Bind(4, std::string_view(document));
  insert.Run();
}

void RunWriter::AddCalibration(std::uint32_t tuneId, const std::vector<TslBL::MZCalPt>& points) {
  database_->Execute(
      "CREATE TABLE IF NOT EXISTS calibration(tune_id INTEGER NOT NULL REFERENCES tune(id), name TEXT NOT "
      "NULL, "
      "mz REAL NOT NULL, mass_dac REAL NOT NULL)");
  Statement insert(*database_, "INSERT INTO calibration VALUES (?, ?, ?, ?)");
  for (const TslBL::MZCalPt& point : points) {
    const std::string name = TslCommon::ToUtf8(point.Name);
    insert.Bind(1, std::int64_t{tuneId});
    insert.Bind(2, std::string_view(name));
    insert.Bind(3, point.MZ);
    insert.Bind(4, point.MassDAC);
    insert.Run();
  }
}

void RunWriter::AddMethod(const TslBL::Method& method) {
  database_->Execute("CREATE TABLE method(record BLOB NOT NULL, document TEXT NOT NULL)");
  Statement insert(*database_, "INSERT INTO method VALUES (?, ?)");
  const std::string record = TslBL::ToBytes(method);
  const std::string document = TslCommon::ToUtf8(TslBL::ToXml(method));
  insert.BindBlob(1, record);
  insert.Bind(2, std::string_view(document));
  insert.Run();
}

void RunWriter::AddScan(const TslBL::RawSpectrum& raw) {
  PackedCounts packed = PackCounts(raw.counts);
  AddScan({0, raw.info, static_cast<std::uint32_t>(raw.counts.size()), std::move(packed.encoding),
           std::move(packed.bytes)});
}

void RunWriter::AddScan(const PackedScan& packed) {
  insertScan_->Bind(1, std::int64_t{packed.info.Id});
  insertScan_->Bind(2, std::int64_t{packed.info.TimeStamp});
  insertScan_->Bind(3, std::int64_t{packed.info.TuneId});
  insertScan_->Bind(4, packed.info.TIC);
  insertScan_->Bind(5, std::int64_t{packed.points});
  insertScan_->Bind(6, std::string_view(packed.encoding));
  insertScan_->BindBlob(7, packed.counts);
  insertScan_->Run();
}

void RunWriter::Finish() {
  insertScan_.reset();
  database_->Execute("PRAGMA wal_checkpoint(TRUNCATE)");
  try {
    database_->SetJournalMode("memory");
  } catch (const SqliteError& error) {
    if (error.Code() != SQLITE_BUSY) throw;  // a reader has it open, to whom the log belongs as well
  }
}

int PolarityOf(const TslBL::Tune& tune) {
  return tune.ControlData.PolarityType == TslCommon::PolarityNegative ? -1 : 1;
}

void RemoveRun(const std::string& file) {
  std::error_code ignored;
  for (const char* companion : {"", "-journal", "-wal", "-shm"})
    std::filesystem::remove(file + companion, ignored);
}

RunReader::RunReader(const std::string& file, const ScanFilter& filter)
    : database_(AtPlace(file, "", [&] { return OpenSnapshot(file); })), filter_(filter) {
  AtPlace(file, "", [this] { ReadHeader(); });
  AtPlace(file, "", [this] { ReadTunes(); });
  AtPlace(file, "table calibration", [this] { ReadCalibrations(); });
  AtPlace(file, "table method", [this] { ReadMethod(); });
  AtPlace(file, "table scan", [&] {
    Statement count(*database_, "SELECT count(*) FROM scan");
    count.Next();
    count_ = static_cast<std::uint64_t>(count.Integer(0));
    // Without a wish nothing is compared, so that no row with odd values stays unseen. The
    // time is compared in the unit and with the rounding that the user is shown.
    const std::string wish =
        filter.WantsAll() ? "" : "WHERE number BETWEEN ? AND ? AND time_stamp / 1000.0 BETWEEN ? AND ? ";
    scans_ = std::make_unique<Statement>(
        *database_, "SELECT number, id, time_stamp, tune_id, tic, points, encoding, counts FROM scan " +
                        wish + "ORDER BY number");
    if (wish.empty()) return;
    scans_->Bind(1, std::int64_t{filter.firstNumber});
    scans_->Bind(2, std::int64_t{filter.lastNumber});
    scans_->Bind(3, filter.rtFrom);
    scans_->Bind(4, filter.rtTo);
  });
}

void RunReader::ReadHeader() {
  Statement version(*database_, "PRAGMA schema_version");
  if (version.Next() && version.Integer(0) == 0)
    throw std::runtime_error("is empty, as a run is whose writer was ended at once");
  Statement id(*database_, "PRAGMA application_id");
  if (!id.Next() || id.Integer(0) != kApplicationId)
    throw std::runtime_error(DescribeDatabase(database_->File()));
  Statement rows(*database_, "SELECT key, value FROM run");
  std::string format;
  while (rows.Next()) {
    if (rows.Bytes(0) == "format") format = rows.Bytes(1);
    if (rows.Bytes(0) == "title") title_ = rows.Bytes(1);
  }
  if (format != std::to_string(kFormat))
    throw std::runtime_error("has run format \"" + format + "\"; this program reads " +
                             std::to_string(kFormat));
}

void RunReader::ReadTunes() {
  Statement rows(*database_, "SELECT id, record FROM tune");
  while (rows.Next()) {
    const std::uint32_t id = Unsigned32(rows, 0, "tune id");
    AtPlace(database_->File(), "tune " + std::to_string(id),
            [&] { TslBL::ReadBytes(rows.Bytes(1), tunes_[id]); });
  }
}

bool RunReader::HasTable(const std::string& name) const {
  Statement tables(*database_, "SELECT 1 FROM sqlite_master WHERE type = 'table' AND name = ?");
  tables.Bind(1, std::string_view(name));
  return tables.Next();
}

void RunReader::ReadMethod() {
  if (!HasTable("method")) return;
  Statement rows(*database_, "SELECT record, document FROM method");
  while (rows.Next()) {
    if (method_) throw std::runtime_error("holds more than one method");
    method_ = MethodOf(rows.Bytes(0), rows.Bytes(1));
  }
}

void RunReader::ReadCalibrations() {
  if (!HasTable("calibration")) return;
  Statement rows(*database_, "SELECT tune_id, name, mz, mass_dac FROM calibration ORDER BY tune_id, mz");
  while (rows.Next()) {
    const std::uint32_t id = Unsigned32(rows, 0, "tune id");
    const std::wstring name = TslCommon::FromUtf8(std::string(rows.Bytes(1)));
    calibrations_[id].emplace_back(name, rows.Real(2), rows.Real(3));
  }
}

const std::vector<TslBL::MZCalPt>* RunReader::CalibrationOf(std::uint32_t tuneId) const {
  const auto found = calibrations_.find(tuneId);
  return found == calibrations_.end() ? nullptr : &found->second;
}

Scan RunReader::HeadOf(const PackedScan& packed) const {
  Scan scan;
  scan.number = packed.number;
  scan.rtSeconds = packed.info.TimeStamp / 1000.0;
  scan.msLevel = kRunLevel;
  const auto tune = tunes_.find(packed.info.TuneId);
  if (tune != tunes_.end()) scan.polarity = PolarityOf(tune->second);
  return scan;
}

bool RunReader::Next(std::uint32_t& number, TslBL::RawSpectrum& raw) {
  PackedScan scan;
  if (!Next(scan)) return false;
  number = scan.number;
  Unpack(scan, raw);
  return true;
}

bool RunReader::Next(PackedScan& scan) {
  while (NextRow(scan))
    if (filter_.WantsNumber(scan.number)) return true;
  return false;
}

bool RunReader::NextRow(PackedScan& scan) {
  const std::string behind = last_ == 0 ? "first scan" : "behind scan " + std::to_string(last_);
  if (!AtPlace(database_->File(), behind, [this] { return scans_->Next(); })) return false;
  scan.number = AtPlace(database_->File(), behind, [this] { return Unsigned32(*scans_, 0, "scan number"); });
  last_ = scan.number;
  AtPlace(database_->File(), PlaceOf(scan.number), [&] {
    scan.info.Id = Unsigned32(*scans_, 1, "id");
    scan.info.TimeStamp = Unsigned32(*scans_, 2, "time stamp");
    scan.info.TuneId = Unsigned32(*scans_, 3, "tune id");
    scan.info.TIC = scans_->Real(4);
    if (!std::isfinite(scan.info.TIC)) throw std::runtime_error("tic is not a finite number");
    scan.points = Unsigned32(*scans_, 5, "number of points");
    scan.encoding = scans_->Bytes(6);
    scan.counts = scans_->Bytes(7);
  });
  return true;
}

void RunReader::Unpack(const PackedScan& scan, TslBL::RawSpectrum& raw) const {
  AtPlace(database_->File(), PlaceOf(scan.number), [&] {
    raw.info = scan.info;
    UnpackCounts(scan.encoding, scan.counts, scan.points, raw.counts);
    if (!std::ranges::all_of(raw.counts, [](double c) { return std::isfinite(c); }))
      throw std::runtime_error("counts hold a value that is no number");
  });
}

const TslBL::Tune& RunReader::TuneOf(std::uint32_t number, const TslBL::RawSpectrum& raw) const {
  const auto found = tunes_.find(raw.info.TuneId);
  if (found == tunes_.end())
    throw InputError(database_->File(), PlaceOf(number),
                     "tune " + std::to_string(raw.info.TuneId) + " is not in the run");
  return found->second;
}

}  // namespace TslTool
