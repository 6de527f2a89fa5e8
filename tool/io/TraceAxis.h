#pragma once
// Puts the points of a trace in the order of their times where it is certain that they are one trace.

#include <tool/io/Trace.h>
#include <cstdint>
#include <string>
#include <vector>

namespace TslTool {

struct SettledTimes {
  std::vector<std::string> notes;     // what was put in order without a doubt, one sentence each
  std::vector<std::string> warnings;  // what was odd
};

// The points of `trace` stand as in `file`, each in its line of `lines`. Times that descend are turned round;
// others that are out of order are sorted. Points of one time, as exports have that round it, become one with
// their mean. `secondsPerUnit` takes times of messages back to those of the file.
//
// Throws InputError that names the line where times begin again, so that a good part is run through twice: of
// several traces in one column nothing tells which of them is meant. Also where a mean is beyond the numbers.
SettledTimes SettleTimes(const std::string& file, std::vector<std::uint64_t> lines, double secondsPerUnit,
                         Trace& trace);

}  // namespace TslTool
