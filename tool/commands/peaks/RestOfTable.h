#pragma once
// What is left to do for a table that was interrupted.

#include <tool/commands/peaks/Evaluation.h>
#include <tool/commands/peaks/PeakFile.h>
#include <tool/io/SpectrumSource.h>
#include <memory>
#include <string>

namespace TslTool {

// The spectra from the last one that an earlier process finished, of those that are wanted now. What it wrote
// must be what comes first of them; scans without a peak do not show in a table, and are evaluated again to
// see that. Of a file in which a scan does not have a higher number than the one before it nothing can be
// told, and it is read once more to know. Throws InputError, and leaves the table alone, where that does not
// fit.
std::unique_ptr<SpectrumSource> RestOfTable(const std::string& input, const SpectrumChoice& wanted,
                                            const Evaluation& evaluation, const TableEnd& done,
                                            PeakFile& peaks);

}  // namespace TslTool
