#include <tslbl/tune/IonSource.h>

#include "RecordCheck.h"
#include "tune/Samples.h"

namespace {

using namespace tests;

TEST(AllRecords, IonSource) {
  CheckRecord<IonSource>({
      {"Type", [](auto& r) { r.Type = Probes::APCI; }},
      {"Type.Cylinder", [](auto& r) { r.Cylinder = -1; }},
      {"Type.Neb1GasPres", [](auto& r) { r.Neb1GasPres = 4; }},
      {"Type.CalValveOn", [](auto& r) { r.CalValveOn = true; }},
      {"Cylinder", [](auto& r) { r.Cylinder = -1; }},
      {"EndPlate", [](auto& r) { r.EndPlate = -2; }},
      {"CapEnter", [](auto& r) { r.CapEnter = -3; }},
      {"EndPlateTemp", [](auto& r) { r.EndPlateTemp = IonSource::High; }},
      {"DryGasTemp", [](auto& r) { r.DryGasTemp = 4; }},
      {"ApciVapTemp", [](auto& r) { r.ApciVapTemp = 5; }},
      {"DryGasFlow", [](auto& r) { r.DryGasFlow = 6.5; }},
      {"Neb1GasPres", [](auto& r) { r.Neb1GasPres = 4000000000; }},
      {"Neb2GasOn", [](auto& r) { r.Neb2GasOn = true; }},
      {"CalValve2On", [](auto& r) { r.CalValve2On = true; }},
      {"CalSample1On", [](auto& r) { r.CalSample1On = true; }},
      {"CalSample2On", [](auto& r) { r.CalSample2On = true; }},
      {"CalValveOn", [](auto& r) { r.CalValveOn = true; }},
      {"ControlByCurrent", [](auto& r) { r.ControlByCurrent = false; }, BinaryOnly},
      {"CoronaCurrent", [](auto& r) { r.CoronaCurrent = 7.5; }, BinaryOnly},
  });
}

TEST(IonSource, OfAnApciProbeKeepsItsCoronaInADocument) {
  const IonSource apci = SampleIonSource(Probes::APCI);
  EXPECT_EQ(FromXml<IonSource>(ToXml(apci)), apci);
}

TEST(Golden, IonSource) { CheckGolden(SampleIonSource(), "IonSource.v3"); }
TEST(IonSource, CutShortIsRefused) { CheckCutShort(SampleIonSource()); }

TEST(IonSource, SwitchesStandInTheirOrder) {
  bool IonSource::*const switches[] = {&IonSource::Neb2GasOn,    &IonSource::CalValve2On,
                                       &IonSource::CalSample1On, &IonSource::CalSample2On,
                                       &IonSource::CalValveOn,   &IonSource::ControlByCurrent};
  constexpr std::size_t kFirstSwitch = 44;
  for (std::size_t i = 0; i < std::size(switches); ++i) {
    IonSource source;
    source.ControlByCurrent = false;
    source.*switches[i] = true;
    std::string expected(6, '\0');
    expected[i] = 1;
    EXPECT_EQ(ToBytes(source).substr(kFirstSwitch, 6), expected) << i;
  }
}

TEST(IonSource, OfAnUnknownVersionIsRefused) {
  for (const std::uint32_t version : {0u, 4u})
    EXPECT_EQ(ReadFailure<IonSource>(Bytes(version), SampleIonSource()), "Unknown IonSource version.");
}

// What the files of both older versions hold.
IonSource OldSource() {
  IonSource source = SampleIonSource(Probes::APCI);
  source.ControlByCurrent = true;
  source.CoronaCurrent = 1.0;
  return source;
}

TEST(Golden, IonSourceOfVersion2HasNoCorona) {
  EXPECT_EQ(FromBytes<IonSource>(GoldenBytes("IonSource.v2"), SampleIonSource()), OldSource());
}

TEST(Golden, IonSourceOfVersion1HasOneValve) {
  IonSource expected = OldSource();
  expected.Neb2GasOn = false;
  expected.CalSample1On = false;
  EXPECT_EQ(FromBytes<IonSource>(GoldenBytes("IonSource.v1"), SampleIonSource()), expected);
}

TEST(IonSource, OfAnOldVersionCutShortIsRefused) {
  for (const char* name : {"IonSource.v1", "IonSource.v2"}) {
    const std::string whole = GoldenBytes(name);
    for (std::size_t length = 4; length < whole.size(); ++length)
      EXPECT_EQ(ReadFailure<IonSource>(whole.substr(0, length)), "Unexpected end of stream.") << length;
  }
}

TEST(IonSource, OfAnEsiProbeIsAnElementSource) {
  EXPECT_EQ(ToXml(SampleIonSource(Probes::ESI)),
            L"<Source>\n"
            L"  <Type>ESI (0)</Type>\n"
            L"  <Cylinder>-4000</Cylinder>\n"
            L"  <EndPlate>-3500</EndPlate>\n"
            L"  <CapEnter>-4500</CapEnter>\n"
            L"  <EndPlateTemp>Medium</EndPlateTemp>\n"
            L"  <DryGasTemp>300</DryGasTemp>\n"
            L"  <ApciVapTemp>325</ApciVapTemp>\n"
            L"  <DryGasFlow>10.5</DryGasFlow>\n"
            L"  <Neb1GasPres>60</Neb1GasPres>\n"
            L"  <Neb2GasOn>true</Neb2GasOn>\n"
            L"  <CalValve2On>false</CalValve2On>\n"
            L"  <CalSample1On>true</CalSample1On>\n"
            L"  <CalSample2On>false</CalSample2On>\n"
            L"  <CalValveOn>true</CalValveOn>\n"
            L"</Source>\n");
}

TEST(IonSource, OfAnApciProbeHasTagsOfItsOwn) {
  EXPECT_EQ(ToXml(SampleIonSource(Probes::APCI)),
            L"<Source>\n"
            L"  <Type>APCI (1)</Type>\n"
            L"  <Corona>-4000</Corona>\n"
            L"  <EndPlate>-3500</EndPlate>\n"
            L"  <CapEnter>-4500</CapEnter>\n"
            L"  <EndPlateTemp>Medium</EndPlateTemp>\n"
            L"  <DryGasTemp>300</DryGasTemp>\n"
            L"  <ApciVapTemp>325</ApciVapTemp>\n"
            L"  <DryGasFlow>10.5</DryGasFlow>\n"
            L"  <ApciAuxGas>60</ApciAuxGas>\n"
            L"  <Neb2GasOn>true</Neb2GasOn>\n"
            L"  <CalValve2On>false</CalValve2On>\n"
            L"  <CalSample1On>true</CalSample1On>\n"
            L"  <CalSample2On>false</CalSample2On>\n"
            L"  <ApciNebGas>true</ApciNebGas>\n"
            L"  <ControlByCurrent>false</ControlByCurrent>\n"
            L"  <CoronaCurrent>4.25</CoronaCurrent>\n"
            L"</Source>\n");
}

TEST(IonSource, IsReadByTheTagsOfEitherProbe) {
  const IonSource read = FromXml<IonSource>(
      L"<Source><Type>ESI</Type><Corona>7</Corona><ApciAuxGas>8</ApciAuxGas><ApciNebGas>true</ApciNebGas></"
      L"Source>");
  EXPECT_EQ(read.Type, Probes::ESI);
  EXPECT_EQ(read.Cylinder, 7);
  EXPECT_EQ(read.Neb1GasPres, 8u);
  EXPECT_TRUE(read.CalValveOn);
}

TEST(IonSource, OfBothTagsTakesTheApciOneWhereverItStands) {
  const IonSource read = FromXml<IonSource>(
      L"<Source><Corona>1</Corona><Cylinder>2</Cylinder><Neb1GasPres>3</Neb1GasPres><ApciAuxGas>4</"
      L"ApciAuxGas>"
      L"<ApciNebGas>false</ApciNebGas><CalValveOn>true</CalValveOn></Source>");
  EXPECT_EQ(read.Cylinder, 1);
  EXPECT_EQ(read.Neb1GasPres, 4u);
  EXPECT_FALSE(read.CalValveOn);
}

TEST(IonSource, ReadsACoronaWhateverTheProbe) {
  const IonSource read = FromXml<IonSource>(
      L"<Source><ControlByCurrent>false</ControlByCurrent><CoronaCurrent>3</CoronaCurrent></Source>");
  EXPECT_FALSE(read.ControlByCurrent);
  EXPECT_EQ(read.CoronaCurrent, 3.0);
}

TEST(IonSource, TemperatureLevelsHaveTexts) {
  const wchar_t* const texts[] = {L"Off", L"Low", L"Medium", L"High"};
  for (std::uint32_t level = 0; level < 4; ++level) {
    IonSource source;
    source.EndPlateTemp = static_cast<IonSource::TempLevels>(level);
    const std::wstring element = std::wstring(L"<EndPlateTemp>") + texts[level] + L"</EndPlateTemp>";
    EXPECT_NE(ToXml(source).find(element), std::wstring::npos) << level;
    EXPECT_EQ(FromXml<IonSource>(L"<Source>" + element + L"</Source>").EndPlateTemp, source.EndPlateTemp);
  }
}

TEST(IonSource, ATemperatureLevelOfAnotherCaseOrWordIsOff) {
  for (const wchar_t* text : {L"high", L"HIGH", L"Hot", L"3", L""}) {
    const auto xml = std::wstring(L"<Source><EndPlateTemp>") + text + L"</EndPlateTemp></Source>";
    EXPECT_EQ(FromXml(xml, SampleIonSource()).EndPlateTemp, IonSource::Off) << text;
  }
}

TEST(IonSource, ATemperatureLevelOutsideTheTextsIsUnknown) {
  IonSource source;
  source.EndPlateTemp = static_cast<IonSource::TempLevels>(4);
  EXPECT_NE(ToXml(source).find(L"<EndPlateTemp>Unknown</EndPlateTemp>"), std::wstring::npos);
}

TEST(IonSource, AnUnknownProbeReadsAsEsi) {
  EXPECT_EQ(FromXml(L"<Source><Type>Laser</Type></Source>", SampleIonSource(Probes::APCI)).Type, Probes::ESI);
}

TEST(IonSource, EveryProbeKindSurvivesADocument) {
  for (std::uint32_t kind = 0; kind <= 7; ++kind) {
    IonSource source;
    source.Type = static_cast<Probes::ProbeTypes>(kind);
    EXPECT_EQ(FromXml<IonSource>(ToXml(source)).Type, source.Type);
  }
}

TEST(IonSource, DumpHasALineForEachField) {
  const std::wstring dump = DumpOf(SampleIonSource(Probes::ESI));
  EXPECT_EQ(std::count(dump.begin(), dump.end(), L'\n'), 16);
  EXPECT_EQ(dump.find(L"  Type:\tESI (0)\r\n  Cylinder:\t-4000\r\n"), 0u);
  EXPECT_NE(dump.find(L"  CoronaCurrent:\t4.25\r\n"), std::wstring::npos);
}

}  // namespace
