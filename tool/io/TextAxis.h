#pragma once
// Puts the points of a text in the order of m/z where it is certain that they are one spectrum.

#include <cstdint>
#include <string>
#include <vector>

#include <tool/io/ColumnNames.h>
#include <tool/io/Scan.h>

namespace TslTool {

// `lines` are those of the points. Small disorder is put in order as Axis.h says; points that descend are
// turned round, others sorted. Returns a sentence for each, and for a first line that looks like a heading
// or a last one that looks like a total: far off lines that are even; the first also if its m/z is that of
// the next.
//
// Throws InputError that names the line where the points are several spectra: m/z runs through a range for a
// second time, or many points that are out of order share an m/z; where only the first line is out of order;
// and where the amplitudes ascend instead. `columns` are those that m/z and amplitude were read from.
std::vector<std::string> SettleTextAxis(const std::string& file, const std::vector<std::uint64_t>& lines,
                                        const ColumnPair& columns, Scan& scan);

}  // namespace TslTool
