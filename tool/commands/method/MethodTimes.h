#pragma once
// Where the time of a method goes.

#include <tslbl/method/MethodRules.h>
#include <cstdint>
#include <string>
#include <vector>

namespace TslTool {

// One run of an item, in seconds. The counting and the two kinds of settling are those of all its spectra.
struct ItemTimes {
  std::size_t period;
  std::size_t item;
  std::uint32_t spectra;
  double polaritySwitch;  // before it
  double initSettling;    // after the move to the first step
  double stepSettling;    // between steps
  double counting;

  double Total() const { return polaritySwitch + initSettling + stepSettling + counting; }
};

struct PeriodTimes {
  bool isFree;            // without end
  double polaritySwitch;  // before it
  double length;          // seconds; of one without end that of its loops
  std::uint32_t loops;
  double loop;  // seconds
  std::vector<ItemTimes> items;
};

// Of each time period; an item whose run or tune is not in the method, or whose tune takes no time that could
// be told, throws std::runtime_error with its place.
std::vector<PeriodTimes> TimesOf(const TslBL::MethodRules& rules);

}  // namespace TslTool
