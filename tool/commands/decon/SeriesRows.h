#pragma once
// What the command decon reports of a spectrum: its series, the most intense first.

#include <tool/io/SpectrumSource.h>
#include <tslbl/chargestate/DeconSpectrum.h>
#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace TslTool {

// One peak of a series.
struct MemberRow {
  std::uint32_t charge;
  std::size_t peak;  // number in the library's table, from 1
  double mz;
  double intensity;  // of a peak that several series have, its part (PeakShares.h)
};

struct SeriesRow {
  std::string label;  // such as RA for the first resolved series, UB for the second unresolved one
  bool isResolved;
  std::uint32_t index;  // of the series in the spectrum
  double mass;          // Da, neutral: monoisotopic of a resolved series, average of an unresolved one
  double massError;     // standard error; NaN where it is not known
  double deviation;     // Da, standard deviation of the masses by the charges; NaN of one charge
  std::uint32_t lowCharge;
  std::uint32_t highCharge;
  double intensity;  // sum of the peaks' areas, or heights above the baseline, as CSParams has it
  std::vector<MemberRow> peaks;
};

// What an evaluated spectrum that has been deconvolved is.
const TslBL::DeconSpectrum& DeconvolvedOf(const LoadedSpectrum& loaded);

std::vector<SeriesRow> SeriesRows(const LoadedSpectrum& loaded);

}  // namespace TslTool
