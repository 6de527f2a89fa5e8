#pragma once
// What the tests of mzML reading share.

#include <tool/TempFile.h>
#include <tool/frame/InputError.h>
#include <tool/io/MzMLMaker.h>
#include <tool/io/OpenScans.h>

#include <string>
#include <vector>

namespace tests {

inline const Values kAxis = {100, 100.5, 101.25, 102};
inline const Values kCounts = {1, 50, 7, 0};

// A defect of a spectrum is an error, as it is for a user who is strict.
inline std::vector<TslTool::Scan> ReadAll(const std::string& file, const TslTool::ScanFilter& filter = {}) {
  const auto source = TslTool::OpenScans(file);
  source->SetFilter(filter);
  std::vector<TslTool::Scan> scans;
  for (TslTool::Scan scan; source->Next(scan);) {
    if (scan.defect) throw TslTool::InputError(file, scan.defect->place, scan.defect->reason);
    scans.push_back(scan);
  }
  return scans;
}

inline std::vector<TslTool::Scan> ReadText(const std::string& text) {
  const TempFile file("run.mzML", text);
  return ReadAll(file.Path());
}

inline TslTool::Scan ReadArrays(const std::string& mzArray, const std::string& intensityArray) {
  return ReadText(MzML(SpectrumOf("scan=1", kAxis.size(), mzArray + intensityArray))).at(0);
}

// The message of the error without the file's name; empty if there is none.
inline std::string ErrorOf(const std::string& text) {
  try {
    ReadText(text);
  } catch (const TslTool::InputError& error) {
    return error.Place() + ": " + error.Reason();
  }
  return "";
}

inline std::string ErrorOfArrays(const std::string& arrays) {
  return ErrorOf(MzML(SpectrumOf("scan=1", 4, arrays)));
}

inline std::string MzArray() { return ArrayOf(kMz, BytesOf<double>(kAxis)); }
inline std::string IntensityArray() { return ArrayOf(kIntensity, BytesOf<double>(kCounts)); }

}  // namespace tests
