#include <tslbl/tune/IOPoint.h>

#include <tslbl/records/Archive.h>

namespace TslBL {
namespace {

constexpr CodeText kTypes[] = {{IOPoint::SingleType, L"Single"},
                               {IOPoint::CalibratedType, L"Calibrated"},
                               {IOPoint::FunctionType, L"Function"}};

// A document holds what the type needs and no more.
void DescribeElement(Archive& ar, IOPoint& lens) {
  // Without an attribute the lens is single, too.
  if (ar.Reading()) lens.Type = IOPoint::SingleType;
  ar.EnumAttribute(L"Type", lens.Type, {.rows = kTypes});
  switch (lens.Type) {
    case IOPoint::SingleType:
      return ar.Text(L"Single", lens.Single);
    case IOPoint::CalibratedType:
      return ar.Text(L"Calibrated", lens.Calibrated);
    case IOPoint::FunctionType:
      ar(L"Start", lens.Start);
      ar(L"End", lens.End);
      ar(L"StepSize", lens.StepSize);
  }
}

}  // namespace

void Describe(Archive& ar, IOPoint& lens) {
  ar.Version(1, "Unknown IOPoint version.");
  if (ar.Xml()) {
    if (const auto element = ar.Element(L"IOPt")) DescribeElement(ar, lens);
    return;
  }
  ar.Enum(L"Type", lens.Type, {.rows = kTypes});
  ar(L"Single", lens.Single);
  ar(L"Calibrated", lens.Calibrated);
  ar(L"Start", lens.Start);
  ar(L"End", lens.End);
  ar(L"StepSize", lens.StepSize);
  // The instrument no longer runs functions; their files stay readable.
  if (ar.ReadingBinary() && lens.Type == IOPoint::FunctionType) {
    lens.Type = IOPoint::CalibratedType;
    lens.Calibrated = lens.StepSize;
  }
}

}  // namespace TslBL
