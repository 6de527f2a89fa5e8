#pragma once
// How long the valve stands where.

#include <tslbl/method/ValveMethod.h>
#include <string>
#include <vector>

namespace TslTool {

struct ValveSpan {
  double from;  // seconds from the start on
  double to;
  TslCommon::DiverterValve state;
};

// Up to the end of the method, in seconds; what lies behind it is left out.
std::vector<ValveSpan> ValveSpans(TslBL::DiverterValveMethod program, double end);

}  // namespace TslTool
