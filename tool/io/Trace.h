#pragma once
// A curve over time of a foreign file.

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace TslTool {

struct Trace {
  std::string name;             // as the file has it
  std::string title;            // what it shows, if the file tells; else empty
  std::vector<double> seconds;  // ascending strictly
  std::vector<double> values;   // as many, finite
};

struct Traces {
  std::vector<Trace> all;
  std::vector<std::string> notes;     // what was taken for what, one sentence each
  std::vector<std::string> warnings;  // what was odd but readable
};

// How many seconds a word for a unit of time stands for: s, min, ms, h and their longer forms, in any case.
std::optional<double> SecondsInWord(std::string_view word);

// The same of the name of a column, by any word of it: "Time (min)", "rt_s".
std::optional<double> SecondsInName(std::string_view name);

// The short word for such a unit: "min" for 60. Empty for any other number.
std::string_view UnitOfSeconds(double seconds);

}  // namespace TslTool
