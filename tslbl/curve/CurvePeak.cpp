#include <tslbl/curve/CurvePeak.h>

#include <tslbl/records/Archive.h>

namespace TslBL {

void Describe(Archive& ar, CurvePeak& p) {
  if (const auto element = ar.Element(L"Peak")) {
    DescribePeakTop(ar, p);
    DescribePeakShape(ar, p);
  }
}

}  // namespace TslBL
