#pragma once
// A window of m/z and time that the data-dependent logic of the instrument leaves out, or alone
// looks at.

#include <tslbl/Export.h>
#include <tslbl/records/Record.h>
#include <cstdint>

namespace TslBL {

struct TSLBL_API DDFilter : Record<DDFilter> {
  DDFilter() = default;
  DDFilter(double mzStart, double mzEnd, std::uint32_t timeStart, std::uint32_t timeEnd)
      : MZStart(mzStart), MZEnd(mzEnd), TimeStart(timeStart), TimeEnd(timeEnd) {}

  double MZStart = 0.0;  // m/z
  double MZEnd = 0.0;
  std::uint32_t TimeStart = 0;
  std::uint32_t TimeEnd = 0;
};
TSLBL_API void Describe(Archive& ar, DDFilter& filter);

}  // namespace TslBL
