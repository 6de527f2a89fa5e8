#include <gtest/gtest.h>

#include <tslbl/closed/common/StringTable.h>
#include <map>

namespace {

using namespace TslCommon;

// The words and the numbers that users, their procedures and the applications above know.
const std::map<unsigned, const wchar_t*> kMessages = {
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
};

const std::map<unsigned, const wchar_t*> kFieldNames = {
    {0, L"Ion Source Type"},
    {1, L"Cylinder Lens"},
    {2, L"Endplate"},
    {3, L"Capillary Entrance"},
    {4, L"Endplate Temperature"},
    {5, L"Drying Gas Temp."},
    {6, L"APCI Vaporizer Temp."},
    {7, L"Drying Gas Flow Rate"},
    {8, L"Nebulizer 1 Gas Pressure"},
    {9, L"Acquisition Function"},
    {10, L"m/z"},
    {11, L"Low m/z"},
    {12, L"High m/z"},
    {13, L"Step Size"},
    {14, L"Mass DAC"},
    {15, L"Ion Polarity"},
    {16, L"Initial Settling Delay"},
    {17, L"Step Settling Delay"},
    {18, L"Pulse Counting Delay"},
    {19, L"Pulse Counting Delay"},
    {20, L"Scans Per Spectrum"},
    {21, L"IOPoint Type"},
    {22, L"Capillary Exit"},
    {23, L"Skimmer"},
    {24, L"Q0 RF Amplitude"},
    {25, L"Q0 Offset"},
    {26, L"Q0 Exit Lens 1"},
    {27, L"Q0 Exit Lens 2"},
    {28, L"High Energy Dynode"},
    {29, L"Detector Gain"},
    {30, L"Signal Threshold"},
    {31, L"Q1 RF/DC or RF Only"},
    {32, L"Q1 Resolution"},
    {33, L"Q1 Coarse Resolution"},
    {34, L"Q1 Offset Voltage"},
    {35, L"Q1 Entrance Lens Voltage"},
    {36, L"Q1 IonGuide"},
    {37, L"Nebulizer 2 Gas On"},
    {38, L"Cal Gas Valve 2 On"},
    {39, L"Cal Sample 1 On"},
    {40, L"Cal Sample 2 On"},
    {41, L"Cal Gas Valve On"},
    {42, L"Q1 Pole DC Connection"},
    {43, L"Syringe Make"},
    {44, L"Syringe Model"},
    {45, L"Syringe Diameter"},
    {46, L"Syringe Flow Rate"},
    {47, L"Tune Record Name"},
    {48, L"Comment"},
    {49, L"Last Saved"},
    {50, L"Calibration Points"},
    {51, L"Q1 Step Calibration"},
    {52, L"Control by Current"},
    {53, L"Corona Current"},
    {54, L"Corona Voltage"},
    {55, L"APCI Aux Gas Pressure"},
    {56, L"Nebulizing Gas On"},
};

// Looks up every number of a range, so that a text under a wrong number is found, too.
void CheckAll(const std::map<unsigned, const wchar_t*>& rows, unsigned base, unsigned count) {
  for (unsigned id = 0; id < count; ++id) {
    const auto row = rows.find(id);
    EXPECT_EQ(TslLoadString(ModuleHandle(), base + id), row != rows.end() ? row->second : L"") << base + id;
  }
}

TEST(StringTable, HoldsEveryMessageUnderItsNumber) { CheckAll(kMessages, 0, kFieldNameBase); }

TEST(StringTable, HoldsTheNameOfEveryTuneField) { CheckAll(kFieldNames, kFieldNameBase, 200); }

TEST(StringTable, HasNoTextForAnUnknownNumber) {
  EXPECT_EQ(TslLoadString(ModuleHandle(), 108), L"");
  EXPECT_EQ(TslLoadString(ModuleHandle(), 0xFFFFFFFF), L"");
  EXPECT_EQ(TslLoadNarrowStr(ModuleHandle(), 0), "");
}

TEST(StringTable, GivesNarrowTexts) {
  EXPECT_EQ(TslLoadNarrowStr(ModuleHandle(), 124), "Peak detect found no peaks.");
}

TEST(StringTable, HoldsTheTextsOfDocumentErrorsApart) {
  EXPECT_EQ(LoadTslCommonResourceStr(1051), L"The document lacks the element \"%s\".");
  EXPECT_EQ(LoadTslCommonResourceStr(1056), L"The document holds a value that is not valid.");
  EXPECT_EQ(LoadTslCommonResourceStr(101), L"");
  EXPECT_EQ(TslLoadString(ModuleHandle(), 1051), L"");
}

}  // namespace
