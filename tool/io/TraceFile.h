#pragma once
// Reads traces, as detectors write them, from a text file with a column of times and one or more of signals;
// the text may be gzip. Encodings, comments, separators, decimal marks and words before the numbers are those
// of TextFile.h.
//
// The column of times is the one that is called so, or the first if it is called x, or of two columns without
// names; each other column is a trace, and its empty cells are no points. Of a table that holds words as well
// the caller chooses the columns. The unit of the times is told by the name of their column, or by the
// caller, or taken as seconds with a warning.

#include <tool/io/ByteSource.h>
#include <tool/io/ColumnNames.h>
#include <tool/io/Trace.h>
#include <optional>
#include <string>
#include <vector>

namespace TslTool {

struct TraceChoice {
  // The time and the only signal (ColumnChoice::mz and amplitude); empty: as the file tells.
  ColumnChoice columns = {};
  std::optional<double> secondsPerUnit = std::nullopt;
};

// `warnings` are of the file as a whole. Throws InputError that names the line: for a text without a column
// of times, a row with another number of columns or with what is no number, several traces one below the
// other, and traces of less than two points. Other disorder of times is settled as TraceAxis.h says.
Traces ReadTraces(ByteSource source, const TraceChoice& choice, std::vector<std::string> warnings = {});

}  // namespace TslTool
