#include <tslbl/tune/Control.h>

#include <tslbl/closed/common/Text.h>
#include <tslbl/records/Archive.h>

namespace TslBL {
namespace {

constexpr CodeText kTypes[] = {{Control::Scan, L"Scan"}, {Control::Sim, L"Sim"}};
constexpr CodeText kQ1MZTypes[] = {{Control::RF_DC, L"RF_DC"}, {Control::RF_Only, L"RF_Only"}};

constexpr Codes kPolarities{.toText =
                                [](std::uint32_t polarity) {
                                  return PolarityToWStr(static_cast<PolarityTypes>(polarity), L"Unknown");
                                },
                            .fromText = [](const std::wstring& text) -> std::uint32_t {
                              return PolarityFromWStr(text, PolarityPositive);
                            }};

std::wstring OneLine(const IOPoint& lens) {
  switch (lens.Type) {
    case IOPoint::SingleType:
      return ToText(lens.Single);
    case IOPoint::CalibratedType:
      return L"Calibrated " + ToText(lens.Calibrated);
    case IOPoint::FunctionType:
      return L"Function " + ToText(lens.Start) + L" to " + ToText(lens.End) + L" by " + ToText(lens.StepSize);
  }
  return L"Unknown";
}

// A lens stands in an element of its own name. A log needs its value only.
void Lens(Archive& ar, const wchar_t* name, IOPoint& lens) {
  if (ar.Dumping()) return ar.Line(name, OneLine(lens));
  if (const auto element = ar.Element(name)) ar.Nested(lens);
}

void DescribeAcquisition(Archive& ar, Control& control) {
  ar.Enum(L"Type", control.Type, {.rows = kTypes, .exact = true});
  ar(L"MZLow", control.MZLow);
  ar(L"MZHi", control.MZHi);
  ar(L"MZStepSize", control.MZStepSize);
  ar.Enum(L"PolarityType", control.PolarityType, kPolarities);
  ar(L"InitSettleDelay", control.InitSettleDelay);
  ar(L"StepSettleDelay", control.StepSettleDelay);
  ar(L"PulseCountDelaySCAN", control.PulseCountDelay);
  ar(L"ScansPerSpec", control.ScansPerSpec);
}

void DescribeOptics(Archive& ar, Control& control) {
  Lens(ar, L"CapExit", control.CapExit);
  Lens(ar, L"Skimmer", control.Skimmer);
  Lens(ar, L"Q0RFAmpl", control.Q0RFAmpl);
  Lens(ar, L"Q0Offset", control.Q0Offset);
  Lens(ar, L"Q0Exit1", control.Q0Exit1);
  Lens(ar, L"Q0Exit2", control.Q0Exit2);
  ar(L"HEDynode", control.HEDynode);
  ar(L"DetectorGain", control.DetectorGain);
  ar(L"SignalThreshold", control.SignalThreshold);
  ar.Enum(L"Q1MZType", control.Q1MZType, {.rows = kQ1MZTypes, .exact = true});
  Lens(ar, L"Q1Resolution", control.Q1Resolution);
  Lens(ar, L"Q1CoarseResolution", control.Q1CoarseResolution);
  Lens(ar, L"Q1Offset", control.Q1Offset);
  // No user sets the entrance lens: a document does not carry it.
  if (!ar.Xml()) Lens(ar, L"Q1Enter", control.Q1Enter);
  Lens(ar, L"Q1IonGuide", control.Q1IonGuide);
  ar(L"Q1PolePolarity", control.Q1PolePolarity);
}

}  // namespace

void Control::Overwrite(const Control& other) {
  Skimmer = other.Skimmer;
  Q0RFAmpl = other.Q0RFAmpl;
  Q0Offset = other.Q0Offset;
  Q0Exit1 = other.Q0Exit1;
  Q0Exit2 = other.Q0Exit2;
  HEDynode = other.HEDynode;
  DetectorGain = other.DetectorGain;
  SignalThreshold = other.SignalThreshold;
  Q1MZType = other.Q1MZType;
  Q1Resolution = other.Q1Resolution;
  Q1CoarseResolution = other.Q1CoarseResolution;
  Q1Offset = other.Q1Offset;
  Q1Enter = other.Q1Enter;
  Q1IonGuide = other.Q1IonGuide;
  Q1PolePolarity = other.Q1PolePolarity;
}

void Describe(Archive& ar, Control& control) {
  ar.Version(1, "Unknown Control version.");
  if (const auto element = ar.Element(L"Control")) {
    DescribeAcquisition(ar, control);
    DescribeOptics(ar, control);
  }
}

}  // namespace TslBL
