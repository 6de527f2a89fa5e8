#pragma once
// The values that an axis marks.

#include <tool/plot/Range.h>
#include <string>
#include <vector>

namespace TslTool {

struct Tick {
  double value;
  std::string text;
};

// Multiples of 1, 2 or 5 times a power of ten that divide the range into `parts` parts at most: two ticks at
// least for 5 parts and more, one for 3 and 4. The texts have as many digits as it takes to tell them apart;
// where an axis has values of ten million and more or steps below 0.00001, with powers of ten if that is
// shorter, as in "2.5e7". The range must be finite and not empty, as Range::Padded makes it.
std::vector<Tick> Ticks(const Range& range, int parts);

}  // namespace TslTool
