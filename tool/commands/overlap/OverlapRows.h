#pragma once
// What the command overlap reports of a spectrum: its data peaks, and behind those of a group the peaks that
// were fitted to it.

#include <tool/io/SpectrumSource.h>
#include <cstddef>
#include <cstdint>
#include <vector>

namespace TslTool {

struct OverlapRow {
  std::uint32_t group;  // 0: it stands alone
  std::size_t peak;     // number in the library's table, from 1: data peaks first, then fitted ones
  bool isFitted;
  double mz;
  double mzError;    // standard errors; NaN where they are not known, as of data peaks of a group
  double amplitude;  // the baseline included
  double area;       // above the baseline, amplitude times m/z
  double areaError;
  double width;      // at half height, m/z
  double chiSquare;  // reduced, of the group's fit; NaN of a data peak
};

// `loaded` has been deconvolved.
std::vector<OverlapRow> OverlapRows(const LoadedSpectrum& loaded);

}  // namespace TslTool
