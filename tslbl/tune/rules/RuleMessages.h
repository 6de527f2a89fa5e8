#pragma once
// The numbers of the messages of the tune's rules.
//
// For the sources of this room; not part of the library's interface.

namespace TslBL {

enum RuleMessage : unsigned {
  kTooFewMZCalPts = 110,
  kBadMZCalPt = 111,
  kMZCalPtsNotRising = 112,
  kTooFewQ1CalPts = 113,
  kBadQ1CalPt = 116,
  kSingleValue = 139,
  kOutOfRange = 145,
  kHighBelowLow = 147,
  kEndPlateFarFromCapEnter = 148,
  kCylinderFarFromEndPlate = 149,
  kInvalidSyringeModel = 150,
  kInvalidQ1Field = 151,
  kInvalidRampField = 152,
  kCalibrantNotFound = 153,
  kCalibrantClashes = 154,
  kFieldNotDefined = 155,
  kHighOfScanOnly = 212,
  kSpanOfSimOnly = 213,
  kBadSpan = 214,
  kCalibrantExists = 224,
  kCapExitFarFromSkimmer = 225,
  kBadAuxGas = 231,
  kBadVapTemp = 232,
};

}  // namespace TslBL
