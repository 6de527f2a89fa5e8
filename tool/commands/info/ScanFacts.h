#pragma once
// What the command info tells of one spectrum.

#include <tool/io/Scan.h>
#include <cstdint>
#include <limits>
#include <optional>
#include <string>

namespace TslTool {

struct ScanFacts {
  static constexpr double kNone = std::numeric_limits<double>::quiet_NaN();

  std::uint32_t number = 0;
  std::string id;              // the file's own name for it; empty if it has none
  double rtSeconds = kNone;    // NaN: not told
  int msLevel = 0;             // 0: not told
  int polarity = 0;            // +1 or -1; 0: not told
  std::uint32_t function = 0;  // 0: not told
  Scan::Representation marked = Scan::Unknown;
  std::optional<Scan::Representation> judged;  // by the points; nothing of less than 3
  std::uint64_t points = 0;
  double mzFrom = kNone;  // NaN in a spectrum without points, like all that follow but the counts
  double mzTo = kNone;
  double tic = 0.0;  // sum of the amplitudes
  double basePeakMz = kNone;
  double basePeak = kNone;  // the highest amplitude, the first of equal ones
  std::uint64_t zeros = 0;  // amplitudes of 0

  // Whether the points speak against the mark.
  bool Differs() const { return judged && marked != Scan::Unknown && *judged != marked; }
};

ScanFacts FactsOf(const Scan& scan);

// "profile", "centroid" or "unknown"; "positive", "negative" or "unknown".
std::string NameOfRepresentation(Scan::Representation representation);
std::string NameOfPolarity(int polarity);

}  // namespace TslTool
