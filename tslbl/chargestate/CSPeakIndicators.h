#pragma once
// Where the charges of a series stand in the spectrum, to be drawn beside its peaks.

#include <tslbl/records/CSSeries.h>
#include <cstdint>
#include <string>
#include <vector>

namespace TslBL {

struct CSPeakIndicator {
  std::uint32_t Charge = 0;
  double MZ = 0.0;     // where the series places this charge
  bool Found = false;  // whether the series has a peak there
  std::wstring Label;  // "|t+5" for charge 5

  bool operator==(const CSPeakIndicator&) const = default;
};

struct CSPeakIndicators {
  CSSeries Series;
  std::vector<CSPeakIndicator> Indicators;
};

}  // namespace TslBL
