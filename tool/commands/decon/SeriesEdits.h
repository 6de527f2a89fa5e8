#pragma once
// Edits of charge state series, as a user gives them.

#include <cstdint>
#include <map>
#include <string>
#include <vector>

namespace TslTool {

struct SeriesEdit {
  enum Kind { AddSeries, RemoveSeries, AddPeaks, RemovePeaks };
  Kind kind;
  std::string series;      // its label, such as UA; of AddSeries "resolved" or "unresolved"
  std::vector<double> mz;  // of peaks; none for RemoveSeries

  bool operator==(const SeriesEdit&) const = default;
};

// In the order in which they are made, by scan number.
using SeriesEditsByScan = std::map<std::uint32_t, std::vector<SeriesEdit>>;

// Reads a file of edits (EditLines.h): lines such as "SCAN add-series unresolved MZ MZ", "SCAN remove-series
// UA", "SCAN add-peaks UA MZ", "SCAN remove-peaks RB MZ MZ". Throws InputError with the line and the value
// that is wrong.
SeriesEditsByScan ReadSeriesEdits(const std::string& file);

// What an option of this kind gives: "UA" for RemoveSeries, else "SERIES:MZ,MZ,...". Throws UsageError.
SeriesEdit ParseSeriesEdit(const std::string& option, SeriesEdit::Kind kind, const std::string& text);

}  // namespace TslTool
