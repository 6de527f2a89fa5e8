#include <tslbl/tune/Control.h>

#include "RecordCheck.h"
#include "tune/Samples.h"

namespace {

using namespace tests;

TEST(AllRecords, Control) {
  CheckRecord<Control>({
      {"Type", [](auto& r) { r.Type = Control::Sim; }},
      {"MZLow", [](auto& r) { r.MZLow = 1; }},
      {"MZHi", [](auto& r) { r.MZHi = 2; }},
      {"MZStepSize", [](auto& r) { r.MZStepSize = 3; }},
      {"PolarityType", [](auto& r) { r.PolarityType = PolarityNegative; }},
      {"InitSettleDelay", [](auto& r) { r.InitSettleDelay = 4; }},
      {"StepSettleDelay", [](auto& r) { r.StepSettleDelay = 5; }},
      {"PulseCountDelay", [](auto& r) { r.PulseCountDelay = 6; }},
      {"ScansPerSpec", [](auto& r) { r.ScansPerSpec = 4294967295; }},
      {"CapExit", [](auto& r) { r.CapExit = SingleLens(8); }},
      {"Skimmer", [](auto& r) { r.Skimmer = SingleLens(9); }},
      {"Q0RFAmpl", [](auto& r) { r.Q0RFAmpl = SingleLens(10); }},
      {"Q0Offset", [](auto& r) { r.Q0Offset = SingleLens(11); }},
      {"Q0Exit1", [](auto& r) { r.Q0Exit1 = SingleLens(12); }},
      {"Q0Exit2", [](auto& r) { r.Q0Exit2 = SingleLens(13); }},
      {"HEDynode", [](auto& r) { r.HEDynode = -14; }},
      {"DetectorGain", [](auto& r) { r.DetectorGain = -15; }},
      {"SignalThreshold", [](auto& r) { r.SignalThreshold = 16; }},
      {"Q1MZType", [](auto& r) { r.Q1MZType = Control::RF_Only; }},
      {"Q1Resolution", [](auto& r) { r.Q1Resolution = SingleLens(17); }},
      {"Q1CoarseResolution", [](auto& r) { r.Q1CoarseResolution = SingleLens(18); }},
      {"Q1Offset", [](auto& r) { r.Q1Offset = SingleLens(19); }},
      {"Q1Enter", [](auto& r) { r.Q1Enter = SingleLens(20); }, BinaryOnly},
      {"Q1IonGuide", [](auto& r) { r.Q1IonGuide = SingleLens(21); }},
      {"Q1PolePolarity", [](auto& r) { r.Q1PolePolarity = true; }},
  });
}

TEST(Golden, Control) { CheckGolden(SampleControl(), "Control.v1"); }
TEST(Control, CutShortIsRefused) { CheckCutShort(SampleControl()); }

TEST(Control, OfAnUnknownVersionIsRefused) {
  for (const std::uint32_t version : {0u, 2u})
    EXPECT_EQ(ReadFailure<Control>(Bytes(version), SampleControl()), "Unknown Control version.");
}

TEST(Control, ALensOfAnUnknownVersionIsRefused) {
  std::string bytes = ToBytes(Control());
  constexpr std::size_t kCapExit = 4 + 4 + 3 * 8 + 5 * 4;
  bytes[kCapExit] = 9;
  EXPECT_EQ(ReadFailure<Control>(bytes), "Unknown IOPoint version.");
}

TEST(Control, LosesItsEntranceLensInADocument) {
  Control expected = SampleControl();
  expected.Q1Enter = IOPoint();
  // Of a calibrated lens a document holds the calibrated value alone.
  expected.CapExit = IOPoint();
  expected.CapExit.Type = IOPoint::CalibratedType;
  expected.CapExit.Calibrated = -2.25;
  EXPECT_EQ(FromXml<Control>(ToXml(SampleControl())), expected);
}

std::wstring LensXml(const std::wstring& name, const std::wstring& type, const std::wstring& value) {
  return L"  <" + name + L">\n    <IOPt Type=\"" + type + L"\">" + value + L"</IOPt>\n  </" + name + L">\n";
}

TEST(Control, IsAnElementControl) {
  EXPECT_EQ(ToXml(SampleControl()),
            L"<Control>\n"
            L"  <Type>Sim</Type>\n"
            L"  <MZLow>500.5</MZLow>\n"
            L"  <MZHi>0.4</MZHi>\n"
            L"  <MZStepSize>0.1</MZStepSize>\n"
            L"  <PolarityType>Negative</PolarityType>\n"
            L"  <InitSettleDelay>650</InitSettleDelay>\n"
            L"  <StepSettleDelay>20</StepSettleDelay>\n"
            L"  <PulseCountDelaySCAN>1000</PulseCountDelaySCAN>\n"
            L"  <ScansPerSpec>3</ScansPerSpec>\n" +
                LensXml(L"CapExit", L"Calibrated", L"-2.25") + LensXml(L"Skimmer", L"Single", L"18") +
                LensXml(L"Q0RFAmpl", L"Single", L"600") + LensXml(L"Q0Offset", L"Single", L"-8") +
                LensXml(L"Q0Exit1", L"Single", L"-0.4") + LensXml(L"Q0Exit2", L"Single", L"-90") +
                L"  <HEDynode>-7000</HEDynode>\n"
                L"  <DetectorGain>-1400</DetectorGain>\n"
                L"  <SignalThreshold>12</SignalThreshold>\n"
                L"  <Q1MZType>RF_Only</Q1MZType>\n" +
                LensXml(L"Q1Resolution", L"Single", L"0.5") +
                LensXml(L"Q1CoarseResolution", L"Single", L"0.75") + LensXml(L"Q1Offset", L"Single", L"-1") +
                LensXml(L"Q1IonGuide", L"Single", L"-12.6") +
                L"  <Q1PolePolarity>true</Q1PolePolarity>\n"
                L"</Control>\n");
}

TEST(Control, ALensWithoutItsElementStaysAsItIs) {
  const std::wstring xml =
      L"<Control><Skimmer/><Q0Offset><IOPt Type=\"Single\">3</IOPt></Q0Offset></Control>";
  Control expected = SampleControl();
  expected.Q0Offset = SingleLens(3);
  EXPECT_EQ(FromXml(xml, SampleControl()), expected);
}

struct EnumText {
  const wchar_t* xml;
  std::uint32_t type;
  std::uint32_t q1MZType;
  std::uint32_t polarity;
};

TEST(Control, TextsOfTypesHaveTheirCaseThoseOfPolarityDoNot) {
  const EnumText rows[] = {
      {L"<Control><Type>Scan</Type><Q1MZType>RF_DC</Q1MZType><PolarityType>Positive</PolarityType></Control>",
       0, 0, 0},
      {L"<Control><Type>Sim</Type><Q1MZType>RF_Only</Q1MZType><PolarityType>negative</PolarityType></"
       L"Control>",
       1, 1, 1},
      {L"<Control><Type>sim</Type><Q1MZType>rf_only</Q1MZType><PolarityType>NEGATIVE</PolarityType></"
       L"Control>",
       0, 0, 1},
      {L"<Control><Type>Both</Type><Q1MZType>x</Q1MZType><PolarityType>Neither</PolarityType></Control>", 0,
       0, 0},
  };
  for (const EnumText& row : rows) {
    const Control read = FromXml(row.xml, SampleControl());
    EXPECT_EQ(read.Type, row.type) << row.xml;
    EXPECT_EQ(read.Q1MZType, row.q1MZType) << row.xml;
    EXPECT_EQ(read.PolarityType, row.polarity) << row.xml;
  }
}

TEST(Control, NumbersWithoutATextAreUnknown) {
  Control control;
  control.Type = static_cast<Control::Types>(2);
  control.Q1MZType = static_cast<Control::Q1MZTypes>(2);
  control.PolarityType = static_cast<PolarityTypes>(2);
  const std::wstring xml = ToXml(control);
  for (const wchar_t* element :
       {L"<Type>Unknown</Type>", L"<Q1MZType>Unknown</Q1MZType>", L"<PolarityType>Unknown</PolarityType>"})
    EXPECT_NE(xml.find(element), std::wstring::npos) << element;
}

TEST(Control, DumpHasALineForEachField) {
  const std::wstring dump = DumpOf(SampleControl());
  EXPECT_EQ(std::count(dump.begin(), dump.end(), L'\n'), 25);
  EXPECT_NE(dump.find(L"  CapExit:\tCalibrated -2.25\r\n  Skimmer:\t18\r\n"), std::wstring::npos);
  EXPECT_NE(dump.find(L"  Q1Enter:\t10\r\n"), std::wstring::npos);
}

TEST(Control, OverwriteTakesTheOpticsAndKeepsTheAcquisition) {
  Control control;
  control.Type = Control::Scan;
  control.CapExit = SingleLens(99);
  const Control before = control;
  control.Overwrite(SampleControl());

  Control expected = SampleControl();
  expected.Type = before.Type;
  expected.MZLow = before.MZLow;
  expected.MZHi = before.MZHi;
  expected.MZStepSize = before.MZStepSize;
  expected.PolarityType = before.PolarityType;
  expected.InitSettleDelay = before.InitSettleDelay;
  expected.StepSettleDelay = before.StepSettleDelay;
  expected.PulseCountDelay = before.PulseCountDelay;
  expected.ScansPerSpec = before.ScansPerSpec;
  expected.CapExit = before.CapExit;
  EXPECT_EQ(control, expected);
}

}  // namespace
