#include <tslbl/closed/common/StringTable.h>

#include <tslbl/closed/common/MessageId.h>
#include <tslbl/closed/common/Text.h>
#include <algorithm>
#include <iterator>

namespace TslCommon {
namespace {

// The wording is what users and their procedures know: it stays as it stands, the uneven
// ones too. A name without a text does not compile, nor does a number with two.
#pragma GCC diagnostic error "-Wswitch"

// clang-format off
const wchar_t* TextOf(MessageId id) {
  switch (id) {
    case kNoMessage:                 return L"";
    case kUnableToBaseline:          return L"Unable to baseline.";
    case kUnableToSubtractBaseline:  return L"Unable to subtract baseline.";
    case kUnableToNoise:             return L"Unable to noise.";
    case kUnableToPeakDetect:        return L"Unable to peak detect.";
    case kUnableToSmooth:            return L"Unable to smooth.";
    case kUnableToThreshold:         return L"Unable to threshold.";
    case kUnableToSubtractThreshold: return L"Unable to subtract threshold.";
    case kLensesMixed:               return L"You cannot mix steppable and non-steppable lenses.";
    case kTooFewMZCalPts:            return L"There must be at least two m/z calibration points.";
    case kBadMZCalPt:                return L"m/z calibration point %d is invalid.  %s";
    case kMZCalPtsNotRising:         return L"m/z and mass DAC values must be greater than previous m/z calibration point.";
    case kTooFewQ1CalPts:            return L"There must be at least two Q1 step calibration points for this field.";
    case kRetentionFormat:           return L"RET (%M.%f)";
    case kBadQ1CalPt:                return L"Q1 step calibration point at m/z %0.2f is invalid.  %s";
    case kNoPeaksDetected:           return L"Peak detect found no peaks.";
    case kCalibrantPassesNeighbor:   return L"Calibrants cannot be moved beyond neighboring calibrants.";
    case kNoPeakAtLocation:          return L"There are no available peaks at this location.";
    case kCalibrantAtLocation:       return L"There is already an active calibrant at this location.";
    case kBadCurveDefinition:        return L"Curve definition %c contains an invalid %s.";
    case kBadCharacter:              return L"character";
    case kBadRangeLetter:            return L"range letter";
    case kBadCurveNumber:            return L"curve number";
    case kFullRangeTitle:            return L"Full %s";
    case kRangeTitle:                return L"%.1f to %.1f %s";
    case kCurveDefinitionEmpty:      return L"Curve definition %c results in an empty spectrum.";
    case kSingleValue:               return L"Single Value";
    case kOutOfRange:                return L"%s is out of range.  Valid values are %0.2f to %0.2f.";
    case kNewTune:                   return L"New Tune";
    case kHighBelowLow:              return L"High m/z must be greater than or equal to low m/z.";
    case kEndPlateFarFromCapEnter:   return L"Endplate and capillary entrance can be at most 1000 volts apart.";
    case kCylinderFarFromEndPlate:   return L"Endplate and cylinder can be at most 6000 volts apart.";
    case kInvalidSyringeModel:       return L"Invalid syringe model.";
    case kInvalidQ1Field:            return L"Invalid Q1 step calibration field.";
    case kInvalidRampField:          return L"Invalid ramp field.";
    case kCalibrantNotFound:         return L"The specified calibrant could not be found.";
    case kCalibrantClashes:          return L"There is already a calibrant with that name.";
    case kFieldNotDefined:           return L"The specified field is not defined for this calibration point.";
    case kNoPointsForField:          return L"There are no calibration points defined for this field.";
    case kAmplitudeLabel:            return L"Amplitude";
    case kMassLabel:                 return L"Mass";
    case kResolutionLabel:           return L"Resolution";
    case kWidthLabel:                return L"Width";
    case kHighOfScanOnly:            return L"Acquisition type must be Scan to set High m/z value.";
    case kSpanOfSimOnly:             return L"Acquisition type must be Sim to set Sim with Span value.";
    case kBadSpan:                   return L"Sim with Span value must be either No Span, 0.2, 0.4, 0.6, 0.8, or 1.0.";
    case kNoSeriesFound:             return L"No Charge State Deconvolution results found with current settings.";
    case kNoSeriesEngine:            return L"Unable to load Charge State Deconvolution COM controls.";
    case kCalibrantExists:           return L"There is already a calibrant with that m/z.";
    case kCapExitFarFromSkimmer:     return L"Capillary Exit and Skimmer can be at most 370 volts apart.";
    case kBadAuxGas:                 return L"APCI Aux Gas Pressure must be 0 or greater than 14";
    case kBadVapTemp:                return L"APCI Vaporizer Temperature must be 25 or greater than 149";
  }
  return L"";
}

const wchar_t* TextOf(DocumentErrorId id) {
  switch (id) {
    case kElementMissing: return L"The document lacks the element \"%s\".";
    case kValueNotValid:  return L"The document holds a value that is not valid.";
  }
  return L"";
}
// clang-format on

struct FieldName {
  unsigned id;
  const wchar_t* text;
};

constexpr FieldName kFieldNames[] = {
    {kFieldNameBase + 0, L"Ion Source Type"},
    {kFieldNameBase + 1, L"Cylinder Lens"},
    {kFieldNameBase + 2, L"Endplate"},
    {kFieldNameBase + 3, L"Capillary Entrance"},
    {kFieldNameBase + 4, L"Endplate Temperature"},
    {kFieldNameBase + 5, L"Drying Gas Temp."},
    {kFieldNameBase + 6, L"APCI Vaporizer Temp."},
    {kFieldNameBase + 7, L"Drying Gas Flow Rate"},
    {kFieldNameBase + 8, L"Nebulizer 1 Gas Pressure"},
    {kFieldNameBase + 9, L"Acquisition Function"},
    {kFieldNameBase + 10, L"m/z"},
    {kFieldNameBase + 11, L"Low m/z"},
    {kFieldNameBase + 12, L"High m/z"},
    {kFieldNameBase + 13, L"Step Size"},
    {kFieldNameBase + 14, L"Mass DAC"},
    {kFieldNameBase + 15, L"Ion Polarity"},
    {kFieldNameBase + 16, L"Initial Settling Delay"},
    {kFieldNameBase + 17, L"Step Settling Delay"},
    {kFieldNameBase + 18, L"Pulse Counting Delay"},
    {kFieldNameBase + 19, L"Pulse Counting Delay"},
    {kFieldNameBase + 20, L"Scans Per Spectrum"},
    {kFieldNameBase + 21, L"IOPoint Type"},
    {kFieldNameBase + 22, L"Capillary Exit"},
    {kFieldNameBase + 23, L"Skimmer"},
    {kFieldNameBase + 24, L"Q0 RF Amplitude"},
    {kFieldNameBase + 25, L"Q0 Offset"},
    {kFieldNameBase + 26, L"Q0 Exit Lens 1"},
    {kFieldNameBase + 27, L"Q0 Exit Lens 2"},
    {kFieldNameBase + 28, L"High Energy Dynode"},
    {kFieldNameBase + 29, L"Detector Gain"},
    {kFieldNameBase + 30, L"Signal Threshold"},
    {kFieldNameBase + 31, L"Q1 RF/DC or RF Only"},
    {kFieldNameBase + 32, L"Q1 Resolution"},
    {kFieldNameBase + 33, L"Q1 Coarse Resolution"},
    {kFieldNameBase + 34, L"Q1 Offset Voltage"},
    {kFieldNameBase + 35, L"Q1 Entrance Lens Voltage"},
    {kFieldNameBase + 36, L"Q1 IonGuide"},
    {kFieldNameBase + 37, L"Nebulizer 2 Gas On"},
    {kFieldNameBase + 38, L"Cal Gas Valve 2 On"},
    {kFieldNameBase + 39, L"Cal Sample 1 On"},
    {kFieldNameBase + 40, L"Cal Sample 2 On"},
    {kFieldNameBase + 41, L"Cal Gas Valve On"},
    {kFieldNameBase + 42, L"Q1 Pole DC Connection"},
    {kFieldNameBase + 43, L"Syringe Make"},
    {kFieldNameBase + 44, L"Syringe Model"},
    {kFieldNameBase + 45, L"Syringe Diameter"},
    {kFieldNameBase + 46, L"Syringe Flow Rate"},
    {kFieldNameBase + 47, L"Tune Record Name"},
    {kFieldNameBase + 48, L"Comment"},
    {kFieldNameBase + 49, L"Last Saved"},
    {kFieldNameBase + 50, L"Calibration Points"},
    {kFieldNameBase + 51, L"Q1 Step Calibration"},
    {kFieldNameBase + 52, L"Control by Current"},
    {kFieldNameBase + 53, L"Corona Current"},
    {kFieldNameBase + 54, L"Corona Voltage"},
    {kFieldNameBase + 55, L"APCI Aux Gas Pressure"},
    {kFieldNameBase + 56, L"Nebulizing Gas On"},
};
static_assert(std::ranges::adjacent_find(kFieldNames, std::ranges::greater_equal{}, &FieldName::id) ==
                  std::end(kFieldNames),
              "Lookup is a binary search.");

}  // namespace

std::wstring TslLoadString(HINSTANCE, unsigned id) {
  const auto* row = std::ranges::lower_bound(kFieldNames, id, {}, &FieldName::id);
  if (row != std::end(kFieldNames) && row->id == id) return row->text;
  return TextOf(static_cast<MessageId>(id));
}

std::string TslLoadNarrowStr(HINSTANCE module, unsigned id) { return ToUtf8(TslLoadString(module, id)); }

std::wstring LoadTslCommonResourceStr(unsigned id) { return TextOf(static_cast<DocumentErrorId>(id)); }

}  // namespace TslCommon
