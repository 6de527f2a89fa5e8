#pragma once
// A peak in the units of its curve's x axis, as it is reported. Element "Peak".

#include <tslbl/records/PeakValues.h>
#include <tslbl/records/Record.h>

namespace TslBL {

struct TSLBL_API CurvePeak : XmlRecord<CurvePeak>, PeakValues {};
TSLBL_API void Describe(Archive& ar, CurvePeak& p);

}  // namespace TslBL
