#pragma once
// The columns of a peak row, for every format that names them.

#include <tool/commands/peaks/ReportedPeak.h>
#include <cstdint>
#include <span>
#include <variant>

namespace TslTool {

using ColumnValue = std::variant<double, std::int64_t, bool>;

struct PeakColumn {
  const char* name;
  ColumnValue (*value)(const ReportedPeak& peak);
};

// First the most used, under short names: mz, amplitude, area, width,
// resolution, sn, height, and the standard errors mz_se, amplitude_se, area_se, and counted. Then the rest of
// the row by the names of its fields.
std::span<const PeakColumn> PeakColumns();

}  // namespace TslTool
