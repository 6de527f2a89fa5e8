#include <tslbl/tune/TuneField.h>

#include <gtest/gtest.h>

#include <tslbl/records/VexException.h>
#include <vector>

namespace {

using namespace TslBL;

enum Use { Plain, Ramped, Stepped };

struct Row {
  std::uint32_t id;
  TuneField::Id field;
  const wchar_t* tag;
  const wchar_t* name;
  Use use = Plain;
};

const Row kFields[] = {
    {0, TuneField::SourceType, L"Source", L"Ion Source Type"},
    {1, TuneField::Cylinder, L"Cylinder", L"Cylinder Lens", Ramped},
    {2, TuneField::EndPlate, L"EndPlate", L"Endplate", Ramped},
    {3, TuneField::CapEnter, L"CapEnter", L"Capillary Entrance", Ramped},
    {4, TuneField::EndPlateTemp, L"EndPlateTemp", L"Endplate Temperature"},
    {5, TuneField::DryGasTemp, L"DryGasTemp", L"Drying Gas Temp.", Ramped},
    {6, TuneField::ApciVapTemp, L"ApciVapTemp", L"APCI Vaporizer Temp.", Ramped},
    {7, TuneField::DryGasFlow, L"DryGasFlow", L"Drying Gas Flow Rate", Ramped},
    {8, TuneField::Neb1GasPres, L"Neb1GasPres", L"Nebulizer 1 Gas Pressure", Ramped},
    {9, TuneField::ControlType, L"Type", L"Acquisition Function"},
    {10, TuneField::MZ, L"MZ", L"m/z"},
    {11, TuneField::MZLow, L"MZLow", L"Low m/z"},
    {12, TuneField::MZHi, L"MZHi", L"High m/z"},
    {13, TuneField::MZStepSize, L"MZStepSize", L"Step Size"},
    {14, TuneField::MassDAC, L"MassDAC", L"Mass DAC"},
    {15, TuneField::PolarityType, L"PolarityType", L"Ion Polarity"},
    {16, TuneField::InitSettleDelay, L"InitSettleDelay", L"Initial Settling Delay"},
    {17, TuneField::StepSettleDelay, L"StepSettleDelay", L"Step Settling Delay"},
    {18, TuneField::PulseCountDelayScan, L"PulseCountDelaySCAN", L"Pulse Counting Delay"},
    {19, TuneField::PulseCountDelaySim, L"PulseCountDelaySCAN", L"Pulse Counting Delay"},
    {20, TuneField::ScansPerSpec, L"ScansPerSpec", L"Scans Per Spectrum"},
    {21, TuneField::IOPointType, L"Type", L"IOPoint Type"},
    {22, TuneField::CapExit, L"CapExit", L"Capillary Exit", Stepped},
    {23, TuneField::Skimmer, L"Skimmer", L"Skimmer", Stepped},
    {24, TuneField::Q0RFAmpl, L"Q0RFAmpl", L"Q0 RF Amplitude", Stepped},
    {25, TuneField::Q0Offset, L"Q0Offset", L"Q0 Offset", Stepped},
    {26, TuneField::Q0Exit1, L"Q0Exit1", L"Q0 Exit Lens 1", Stepped},
    {27, TuneField::Q0Exit2, L"Q0Exit2", L"Q0 Exit Lens 2", Stepped},
    {28, TuneField::HEDynode, L"HEDynode", L"High Energy Dynode", Ramped},
    {29, TuneField::DetectorGain, L"DetectorGain", L"Detector Gain", Ramped},
    {30, TuneField::SignalThreshold, L"SignalThreshold", L"Signal Threshold", Ramped},
    {31, TuneField::Q1MZType, L"Q1MZType", L"Q1 RF/DC or RF Only"},
    {32, TuneField::Q1Resolution, L"Q1Resolution", L"Q1 Resolution", Stepped},
    {33, TuneField::Q1CoarseResolution, L"Q1CoarseResolution", L"Q1 Coarse Resolution", Ramped},
    {34, TuneField::Q1Offset, L"Q1Offset", L"Q1 Offset Voltage", Stepped},
    {35, TuneField::Q1Enter, L"Not Used", L"Q1 Entrance Lens Voltage"},
    {36, TuneField::Q1IonGuide, L"Q1IonGuide", L"Q1 IonGuide", Stepped},
    {37, TuneField::Neb2GasOn, L"Neb2GasOn", L"Nebulizer 2 Gas On"},
    {38, TuneField::CalValve2On, L"CalValve2On", L"Cal Gas Valve 2 On"},
    {39, TuneField::CalSample1On, L"CalSample1On", L"Cal Sample 1 On"},
    {40, TuneField::CalSample2On, L"CalSample2On", L"Cal Sample 2 On"},
    {41, TuneField::CalValveOn, L"CalValveOn", L"Cal Gas Valve On"},
    {42, TuneField::Q1PolePolarity, L"Q1PolePolarity", L"Q1 Pole DC Connection"},
    {43, TuneField::Manufacturer, L"Manufacturer", L"Syringe Make"},
    {44, TuneField::Model, L"Model", L"Syringe Model"},
    {45, TuneField::Diameter, L"Diameter", L"Syringe Diameter"},
    {46, TuneField::FlowRate, L"FlowRate", L"Syringe Flow Rate"},
    {47, TuneField::Name, L"Name", L"Tune Record Name"},
    {48, TuneField::Comment, L"Comment", L"Comment"},
    {49, TuneField::LastSave, L"LastSave", L"Last Saved"},
    {50, TuneField::MZCalPts, L"MZCalPts", L"Calibration Points"},
    {51, TuneField::Q1CalPts, L"Unknown", L"Q1 Step Calibration"},
    {52, TuneField::ControlByCurrent, L"Unknown", L"Control by Current"},
    {53, TuneField::CoronaCurrent, L"Unknown", L"Corona Current"},
    {54, TuneField::CoronaVoltage, L"Unknown", L"Corona Voltage"},
    {55, TuneField::ApciAuxGas, L"Unknown", L"APCI Aux Gas Pressure"},
    {56, TuneField::ApciNebGas, L"Unknown", L"Nebulizing Gas On"},
};

static_assert(std::size(kFields) == TuneField::kFieldCount);

constexpr auto kNoField = TuneField::kFieldCount;

TEST(TuneField, HasItsNumberTagNameAndUses) {
  for (const Row& row : kFields) {
    SCOPED_TRACE(row.id);
    EXPECT_EQ(row.field, row.id);
    EXPECT_EQ(TuneField::FieldToXmlTag(row.field), row.tag);
    EXPECT_EQ(TuneField::FieldToString(row.field), row.name);
    EXPECT_EQ(TuneField::IsFieldRampable(row.field), row.use != Plain);
    EXPECT_EQ(TuneField::IsFieldSteppable(row.field), row.use == Stepped);
  }
}

TEST(TuneField, TwentyFieldsCanBeRampedAndNineStepped) {
  int ramped = 0;
  int stepped = 0;
  for (std::uint32_t id = 0; id < 1000; ++id) {
    ramped += TuneField::IsFieldRampable(static_cast<TuneField::Id>(id));
    stepped += TuneField::IsFieldSteppable(static_cast<TuneField::Id>(id));
  }
  EXPECT_EQ(ramped, 20);
  EXPECT_EQ(stepped, 9);
}

TEST(TuneField, ANumberThatNamesNoFieldHasNoName) {
  for (const std::uint32_t id : {std::uint32_t{kNoField}, 4294967295u}) {
    try {
      TuneField::FieldToString(static_cast<TuneField::Id>(id));
      ADD_FAILURE() << "no exception";
    } catch (const VexException& e) {
      EXPECT_EQ(e.Message(),
                L"Field to string map for field id " + std::to_wstring(id) + L" does not exist.");
    }
  }
}

TEST(TuneField, ANumberThatNamesNoFieldHasTheTagUnknownAndNoUse) {
  EXPECT_EQ(TuneField::FieldToXmlTag(kNoField), L"Unknown");
  EXPECT_FALSE(TuneField::IsFieldRampable(kNoField));
  EXPECT_FALSE(TuneField::IsFieldSteppable(kNoField));
}

struct PointTag {
  std::uint32_t id;
  const wchar_t* tag;
};
const std::vector<PointTag> kPointTags = {
    {22, L"CapExit"},  {23, L"Skimmer"},   {24, L"Q0RFAmpl"},     {25, L"Q0Offset"},
    {26, L"Q0Exit1"},  {27, L"Q0Exit2"},   {32, L"Q1Resolution"}, {33, L"Q1CoarseResolution"},
    {34, L"Q1Offset"}, {36, L"Q1IonGuide"}};

TEST(TuneField, TenFieldsHaveATagInACalibrationPoint) {
  for (const auto& [id, tag] : kPointTags) {
    EXPECT_EQ(TuneField::FieldToPointTag(static_cast<TuneField::Id>(id)), tag);
    EXPECT_EQ(TuneField::PointTagToField(tag), id);
  }
}

TEST(TuneField, NoOtherFieldHasATagInACalibrationPoint) {
  std::size_t known = 0;
  for (std::uint32_t id = 0; id <= 60; ++id)
    known += TuneField::FieldToPointTag(static_cast<TuneField::Id>(id)) != L"Unknown";
  EXPECT_EQ(known, kPointTags.size());
}

TEST(TuneField, AnotherTextIsNoTagOfACalibrationPoint) {
  for (const wchar_t* text : {L"capexit", L"CapExit ", L"Unknown", L"Cylinder", L"Not Used", L""})
    EXPECT_EQ(TuneField::PointTagToField(text), 0u) << text;
}

}  // namespace
