#include <tslbl/tune/MZCalPt.h>

#include <tslbl/records/Archive.h>

namespace TslBL {
namespace {
constexpr double kTolerance = 1e-6;
}

void Describe(Archive& ar, MZCalPt& point) {
  ar.Version(1, "Unknown MZCalPt version.");
  if (const auto element = ar.Element(L"MZCal")) {
    ar.Attribute(L"Name", point.Name);
    ar.Near({Archive::Place::Attribute, L"MZ"}, point.MZ, kTolerance);
    ar.Near({Archive::Place::Attribute, L"MassDAC"}, point.MassDAC, kTolerance);
  }
}

}  // namespace TslBL
