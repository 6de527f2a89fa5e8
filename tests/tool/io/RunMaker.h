#pragma once
// Small runs for tests.

#include <string>
#include <vector>

#include <tool/TempFile.h>
#include <tool/frame/InputError.h>
#include <tool/io/RunFile.h>
#include <tool/io/Sqlite.h>
#include <tool/simulate/Simulator.h>

namespace tests {

inline TslBL::RawSpectrum RawScan(std::uint32_t id, const std::vector<double>& counts) {
  TslBL::RawSpectrum raw;
  raw.info.Id = id;
  raw.info.TimeStamp = id * 1000;
  raw.info.TuneId = 1;
  for (const double count : counts) raw.info.TIC += count;
  raw.counts = counts;
  return raw;
}

inline const TslBL::Tune& DemoTune() {
  static const TslBL::Tune tune = TslTool::Simulator(1).Tune();
  return tune;
}

// A run of three scans at 1, 2 and 3 s, in a folder of its own.
class SmallRun {
 public:
  SmallRun() {
    TslTool::RunWriter writer(Path(), "Small");
    writer.AddTune(1, DemoTune());
    for (const TslBL::RawSpectrum& scan : Scans()) writer.AddScan(scan);
    writer.Finish();
  }

  std::string Path() const { return folder_.Folder() + "/small.run"; }
  std::string Folder() const { return folder_.Folder(); }
  static std::vector<TslBL::RawSpectrum> Scans() {
    std::vector<double> wide(300);
    for (std::size_t i = 0; i < wide.size(); ++i) wide[i] = static_cast<double>(i * i % 97);
    return {RawScan(1, {1, 2, 3}), RawScan(2, wide), RawScan(3, {0.25, 1e9})};
  }
  // Changes the file as another program could.
  void Change(const std::string& sql) const {
    TslTool::Database(Path(), TslTool::Database::Mode::Create).Execute(sql);
  }

 private:
  TempFile folder_{"x", ""};
};

// The scans that a reader has not yet handed out.
inline std::vector<TslBL::RawSpectrum> Rest(TslTool::RunReader& reader) {
  std::vector<TslBL::RawSpectrum> scans;
  std::uint32_t number = 0;
  for (TslBL::RawSpectrum raw; reader.Next(number, raw);) {
    reader.TuneOf(number, raw);
    scans.push_back(raw);
  }
  return scans;
}

inline std::vector<TslBL::RawSpectrum> ReadRun(const std::string& file,
                                               const TslTool::ScanFilter& filter = {}) {
  TslTool::RunReader reader(file, filter);
  return Rest(reader);
}

// The message without the file's name; empty if the run can be read.
inline std::string ErrorOfRun(const std::string& file) {
  try {
    ReadRun(file);
  } catch (const TslTool::InputError& error) {
    return error.Place() + ": " + error.Reason();
  }
  return "";
}

}  // namespace tests
