#include <tslbl/closed/common/StringTable.h>

#include <tslbl/closed/common/Text.h>
#include <algorithm>
#include <iterator>
#include <span>

namespace TslCommon {
namespace {

struct Row {
  unsigned id;
  const wchar_t* text;
};

// Sorted by number. The wording is what users and their procedures know: it stays as it
// stands, the uneven ones too.
constexpr Row kMessages[] = {
    {101, L"Unable to baseline."},
    {102, L"Unable to subtract baseline."},
    {103, L"Unable to noise."},
    {104, L"Unable to peak detect."},
    {105, L"Unable to smooth."},
    {106, L"Unable to threshold."},
    {107, L"Unable to subtract threshold."},
    {109, L"You cannot mix steppable and non-steppable lenses."},
    {110, L"There must be at least two m/z calibration points."},
    {111, L"m/z calibration point %d is invalid.  %s"},
    {112, L"m/z and mass DAC values must be greater than previous m/z calibration point."},
    {113, L"There must be at least two Q1 step calibration points for this field."},
    {114, L"RET (%M.%f)"},
    {116, L"Q1 step calibration point at m/z %0.2f is invalid.  %s"},
    {124, L"Peak detect found no peaks."},
    {125, L"Calibrants cannot be moved beyond neighboring calibrants."},
    {126, L"There are no available peaks at this location."},
    {127, L"There is already an active calibrant at this location."},
    {130, L"Curve definition %c contains an invalid %s."},
    {131, L"character"},
    {132, L"range letter"},
    {133, L"curve number"},
    {134, L"Full %s"},
    {135, L"%.1f to %.1f %s"},
    {136, L"Curve definition %c results in an empty spectrum."},
    {139, L"Single Value"},
    {145, L"%s is out of range.  Valid values are %0.2f to %0.2f."},
    {146, L"New Tune"},
    {147, L"High m/z must be greater than or equal to low m/z."},
    {148, L"Endplate and capillary entrance can be at most 1000 volts apart."},
    {149, L"Endplate and cylinder can be at most 6000 volts apart."},
    {150, L"Invalid syringe model."},
    {151, L"Invalid Q1 step calibration field."},
    {152, L"Invalid ramp field."},
    {153, L"The specified calibrant could not be found."},
    {154, L"There is already a calibrant with that name."},
    {155, L"The specified field is not defined for this calibration point."},
    {156, L"There are no calibration points defined for this field."},
    {157, L"Amplitude"},
    {158, L"Mass"},
    {159, L"Resolution"},
    {196, L"Width"},
    {212, L"Acquisition type must be Scan to set High m/z value."},
    {213, L"Acquisition type must be Sim to set Sim with Span value."},
    {214, L"Sim with Span value must be either No Span, 0.2, 0.4, 0.6, 0.8, or 1.0."},
    {215, L"No Charge State Deconvolution results found with current settings."},
    {216, L"Unable to load Charge State Deconvolution COM controls."},
    {224, L"There is already a calibrant with that m/z."},
    {225, L"Capillary Exit and Skimmer can be at most 370 volts apart."},
    {231, L"APCI Aux Gas Pressure must be 0 or greater than 14"},
    {232, L"APCI Vaporizer Temperature must be 25 or greater than 149"},
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

constexpr Row kDocumentErrors[] = {
    {1051, L"The document lacks the element \"%s\"."},
    {1056, L"The document holds a value that is not valid."},
};

constexpr bool Ascends(std::span<const Row> rows) {
  return std::ranges::adjacent_find(rows, std::ranges::greater_equal{}, &Row::id) == rows.end();
}
static_assert(Ascends(kMessages) && Ascends(kDocumentErrors), "Lookup is a binary search.");

std::wstring Find(std::span<const Row> rows, unsigned id) {
  const auto row = std::ranges::lower_bound(rows, id, {}, &Row::id);
  return row != rows.end() && row->id == id ? row->text : L"";
}

}  // namespace

std::wstring TslLoadString(HINSTANCE, unsigned id) { return Find(kMessages, id); }
std::string TslLoadNarrowStr(HINSTANCE module, unsigned id) { return ToUtf8(TslLoadString(module, id)); }
std::wstring LoadTslCommonResourceStr(unsigned id) { return Find(kDocumentErrors, id); }

}  // namespace TslCommon
