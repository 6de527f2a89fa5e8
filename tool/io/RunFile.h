#pragma once
// A run: the scans of one acquisition as the instrument delivered them, with the tunes that
// acquired them, in one SQLite file that other programs can query. While it is written, and
// after a writer was killed, FILE-wal stands beside it and belongs to it, and FILE-shm, which
// SQLite makes again where it is missing.
//
//   run(key TEXT PRIMARY KEY, value TEXT)            "format", "writer", "created", "title"
//   tune(id INTEGER PRIMARY KEY, name, record, document)   the tune as binary record and XML
//   calibration(tune_id INTEGER, name TEXT, mz REAL, mass_dac REAL)   only where the m/z axis of scans is not
//                                                    that of their tune: the points that make it
//   method(record, document)                         only where a method made it: one row, the method as
//                                                    binary record and XML
//   scan(number INTEGER PRIMARY KEY, id, time_stamp, tune_id, tic, points, encoding, counts)
//
// number counts from 1; id, time_stamp (milliseconds), tune_id and tic (counts) are those of
// RawSpectrumInfo; counts holds `points` pulse counts, one a mass DAC step, see Counts.h.
//
// Each scan is a transaction of its own: a writer that is killed, at whatever moment, loses at
// most the scan in hand. A reader holds one scan at a time, whatever the length of the run, and
// may read while another process writes.

#include <tool/io/Scan.h>
#include <tool/io/Sqlite.h>
#include <tslbl/method/Method.h>
#include <tslbl/spectrum/RawSpectrum.h>
#include <tslbl/tune/Tune.h>
#include <cstdint>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace TslTool {

// A scan as it stands in the file, its counts still packed.
struct PackedScan {
  std::uint32_t number = 0;
  TslBL::RawSpectrumInfo info;
  std::uint32_t points = 0;
  std::string encoding;
  std::string counts;
};

class RunWriter {
 public:
  // Creates the file, which must not exist. Throws std::runtime_error with its name.
  RunWriter(const std::string& file, const std::string& title);
  void AddTune(std::uint32_t id, const TslBL::Tune& tune);
  // The points that make the m/z axis of the scans of a tune, instead of its own.
  void AddCalibration(std::uint32_t tuneId, const std::vector<TslBL::MZCalPt>& points);
  // The method that acquires the scans; at most one.
  void AddMethod(const TslBL::Method& method);
  // Scans come in order; the first has number 1.
  void AddScan(const TslBL::RawSpectrum& raw);
  // One of another run as it is; its number there counts for nothing.
  void AddScan(const PackedScan& packed);
  // Makes it one file without companions, or keeps them if somebody reads it just now, for whom
  // it waits 5 s. A writer that goes without it leaves a run that can be read all the same.
  void Finish();

 private:
  void Begin(const std::string& title);

  std::optional<Database> database_;
  std::unique_ptr<Statement> insertScan_;
};

// A scan of this instrument has one stage.
inline constexpr int kRunLevel = 1;

// 1 or -1.
int PolarityOf(const TslBL::Tune& tune);

// Removes a run that is of no use, with the companions that an unfinished one has.
void RemoveRun(const std::string& file);

class RunReader {
 public:
  // What is written from now on is not seen. Throws InputError if the file is no run, or
  // damaged. Every scan is handed out unless `filter` asks for some by number or time.
  explicit RunReader(const std::string& file, const ScanFilter& filter = {});

  // Fills `raw` with the next scan; false when there is none left. Throws InputError that
  // names the scan.
  bool Next(std::uint32_t& number, TslBL::RawSpectrum& raw);
  // The same in two steps, so that another thread can do the unpacking: Unpack may be called
  // on any number of threads while the reader is there.
  bool Next(PackedScan& scan);
  void Unpack(const PackedScan& scan, TslBL::RawSpectrum& raw) const;

  // What choosing scans goes by: number, time, level and polarity.
  Scan HeadOf(const PackedScan& scan) const;

  std::uint64_t Count() const { return count_; }  // scans in the file, wanted or not
  const std::string& Title() const { return title_; }
  const std::map<std::uint32_t, TslBL::Tune>& Tunes() const { return tunes_; }
  // The method that acquired it; null for a run without one. Its tunes are those of the run, by their ids.
  const TslBL::Method* AcquiredBy() const { return method_ ? &*method_ : nullptr; }
  // The points that make the m/z axis of the scans of a tune; null where these are the tune's own.
  const std::vector<TslBL::MZCalPt>* CalibrationOf(std::uint32_t tuneId) const;
  // The tune that acquired a scan. Throws InputError if the run lacks it.
  const TslBL::Tune& TuneOf(std::uint32_t number, const TslBL::RawSpectrum& raw) const;

 private:
  void ReadHeader();
  void ReadTunes();
  void ReadCalibrations();
  void ReadMethod();
  bool HasTable(const std::string& name) const;
  bool NextRow(PackedScan& scan);

  std::unique_ptr<Database> database_;
  std::string title_;
  std::uint64_t count_ = 0;
  std::map<std::uint32_t, TslBL::Tune> tunes_;
  std::map<std::uint32_t, std::vector<TslBL::MZCalPt>> calibrations_;
  std::optional<TslBL::Method> method_;
  std::unique_ptr<Statement> scans_;
  std::uint32_t last_ = 0;  // number of the scan read last
  ScanFilter filter_;
};

}  // namespace TslTool
