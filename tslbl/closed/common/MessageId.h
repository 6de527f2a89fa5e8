#pragma once
// The names of the messages of the string table. The numbers are known to the applications
// above and never change.
//
// A new message is a name here and its text in StringTable.cpp, which does not compile
// without one.
//
// For the sources of the library; not part of the library's interface.

namespace TslCommon {

enum MessageId : unsigned {
  kNoMessage = 0,  // an empty text
  kUnableToBaseline = 101,
  kUnableToSubtractBaseline = 102,
  kUnableToNoise = 103,
  kUnableToPeakDetect = 104,
  kUnableToSmooth = 105,
  kUnableToThreshold = 106,
  kUnableToSubtractThreshold = 107,
  kLensesMixed = 109,
  kTooFewMZCalPts = 110,
  kBadMZCalPt = 111,
  kMZCalPtsNotRising = 112,
  kTooFewQ1CalPts = 113,
  kRetentionFormat = 114,
  kBadQ1CalPt = 116,
  kNoPeaksDetected = 124,
  kCalibrantPassesNeighbor = 125,
  kNoPeakAtLocation = 126,
  kCalibrantAtLocation = 127,
  kBadCurveDefinition = 130,
  kBadCharacter = 131,
  kBadRangeLetter = 132,
  kBadCurveNumber = 133,
  kFullRangeTitle = 134,
  kRangeTitle = 135,
  kCurveDefinitionEmpty = 136,
  kSingleValue = 139,
  kOutOfRange = 145,
  kNewTune = 146,
  kHighBelowLow = 147,
  kEndPlateFarFromCapEnter = 148,
  kCylinderFarFromEndPlate = 149,
  kInvalidSyringeModel = 150,
  kInvalidQ1Field = 151,
  kInvalidRampField = 152,
  kCalibrantNotFound = 153,
  kCalibrantClashes = 154,
  kFieldNotDefined = 155,
  kNoPointsForField = 156,
  kAmplitudeLabel = 157,
  kMassLabel = 158,
  kResolutionLabel = 159,
  kWidthLabel = 196,
  kHighOfScanOnly = 212,
  kSpanOfSimOnly = 213,
  kBadSpan = 214,
  kNoSeriesFound = 215,
  kNoSeriesEngine = 216,
  kCalibrantExists = 224,
  kCapExitFarFromSkimmer = 225,
  kBadAuxGas = 231,
  kBadVapTemp = 232,
};

// Those of document errors, which are a table of their own.
enum DocumentErrorId : unsigned {
  kElementMissing = 1051,
  kValueNotValid = 1056,
};

}  // namespace TslCommon
