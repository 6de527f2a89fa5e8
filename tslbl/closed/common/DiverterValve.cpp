#include <tslbl/closed/common/DiverterValve.h>

namespace TslCommon {

std::wstring DiverterValve::ToStr(const DiverterValve& valve) {
  switch (valve.State()) {
    case kToSource:
      return L"Source";
    case kToWaste:
      return L"Waste";
    default:
      return L"Unknown";
  }
}

}  // namespace TslCommon
