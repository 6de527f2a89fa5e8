#pragma once
// The fields of a tune, by number. The numbers stand in stored calibration points and in
// the limit overrides of a site: they never change. FieldTable.h tells more of each field.
//
// Numbers 18 and 19 are one field, the dwell, with limits of its own for a scan and for a
// SIM. Of the source fields, 52 to 56 are those of an APCI probe, some of which share a
// place in the record with an ESI field; see IonSource.

#include <tslbl/Export.h>
#include <tslbl/records/Common.h>
#include <cstdint>
#include <string>

namespace TslBL {

struct TSLBL_API TuneField {
  enum Id : std::uint32_t {
    SourceType = 0,
    Cylinder = 1,
    EndPlate = 2,
    CapEnter = 3,
    EndPlateTemp = 4,
    DryGasTemp = 5,
    ApciVapTemp = 6,
    DryGasFlow = 7,
    Neb1GasPres = 8,
    ControlType = 9,
    MZ = 10,
    MZLow = 11,
    MZHi = 12,
    MZStepSize = 13,
    MassDAC = 14,
    PolarityType = 15,
    InitSettleDelay = 16,
    StepSettleDelay = 17,
    PulseCountDelayScan = 18,
    PulseCountDelaySim = 19,
    ScansPerSpec = 20,
    IOPointType = 21,
    CapExit = 22,
    Skimmer = 23,
    Q0RFAmpl = 24,
    Q0Offset = 25,
    Q0Exit1 = 26,
    Q0Exit2 = 27,
    HEDynode = 28,
    DetectorGain = 29,
    SignalThreshold = 30,
    Q1MZType = 31,
    Q1Resolution = 32,
    Q1CoarseResolution = 33,
    Q1Offset = 34,
    Q1Enter = 35,
    Q1IonGuide = 36,
    Neb2GasOn = 37,
    CalValve2On = 38,
    CalSample1On = 39,
    CalSample2On = 40,
    CalValveOn = 41,
    Q1PolePolarity = 42,
    Manufacturer = 43,
    Model = 44,
    Diameter = 45,
    FlowRate = 46,
    Name = 47,
    Comment = 48,
    LastSave = 49,
    MZCalPts = 50,
    Q1CalPts = 51,
    ControlByCurrent = 52,
    CoronaCurrent = 53,
    CoronaVoltage = 54,
    ApciAuxGas = 55,
    ApciNebGas = 56,
    kFieldCount,  // no field; a new one stands before it, with the next number
  };

  // Whether a number names a field.
  static bool IsField(Id field);
  // The name that a user knows. Throws VexException for a number that names no field.
  static std::wstring FieldToString(Id field);
  // The tag in documents; "Unknown" for a field without one.
  static std::wstring FieldToXmlTag(Id field);
  // Whether a ramp may step the field to find its best value.
  static bool IsFieldRampable(Id field);
  // Whether the field may follow m/z during a scan, by the tune's Q1 calibration points.
  static bool IsFieldSteppable(Id field);

  // The tag of a field in a Q1 calibration point, and back. These are fewer than the
  // fields: "Unknown" stands for any other, and a tag without a field gives SourceType.
  // Case matters.
  static std::wstring FieldToPointTag(Id field);
  static Id PointTagToField(const std::wstring& tag);
};

}  // namespace TslBL
