#pragma once
// The acquisition function and the ion path, from the capillary exit to the detector.
//
// Each lens is stored relative to the one before it. In a SIM, MZLow is the centre m/z and
// MZHi the span; see Tune::IsSimWithSpan. The record holds zeros until DevTuneRules sets
// working values.

#include <tslbl/Export.h>
#include <tslbl/closed/common/Polarity.h>
#include <tslbl/records/Record.h>
#include <tslbl/tune/IOPoint.h>
#include <cstdint>

namespace TslBL {

struct TSLBL_API Control : Record<Control> {
  enum Types : std::uint32_t { Scan = 0, Sim = 1 };
  enum Q1MZTypes : std::uint32_t { RF_DC = 0, RF_Only = 1 };
  // The spans of a SIM, in fifths of one m/z.
  enum SimWithSpanTypes : std::uint32_t {
    NoSpan = 0,
    Span0_2 = 1,
    Span0_4 = 2,
    Span0_6 = 3,
    Span0_8 = 4,
    Span1_0 = 5,
    Span1_2 = 6,
    Span1_4 = 7,
    Span1_6 = 8,
    Span1_8 = 9,
    Span2_0 = 10,
  };

  Types Type = Scan;
  double MZLow = 0.0;
  double MZHi = 0.0;
  double MZStepSize = 0.0;
  PolarityTypes PolarityType = PolarityPositive;
  std::uint32_t InitSettleDelay = 0;  // microseconds
  std::uint32_t StepSettleDelay = 0;  // microseconds
  std::uint32_t PulseCountDelay = 0;  // microseconds, the dwell
  std::uint32_t ScansPerSpec = 0;
  IOPoint CapExit;
  IOPoint Skimmer;
  IOPoint Q0RFAmpl;
  IOPoint Q0Offset;
  IOPoint Q0Exit1;
  IOPoint Q0Exit2;
  std::int32_t HEDynode = 0;      // volts
  std::int32_t DetectorGain = 0;  // volts
  std::uint32_t SignalThreshold = 0;
  Q1MZTypes Q1MZType = RF_DC;
  IOPoint Q1Resolution;
  IOPoint Q1CoarseResolution;
  IOPoint Q1Offset;
  IOPoint Q1Enter;  // not in documents
  IOPoint Q1IonGuide;
  bool Q1PolePolarity = false;

  // Takes the other's ion optics, Skimmer to Q1PolePolarity, and keeps the acquisition
  // settings and the capillary exit.
  void Overwrite(const Control& other);
};
TSLBL_API void Describe(Archive& ar, Control& control);

}  // namespace TslBL
