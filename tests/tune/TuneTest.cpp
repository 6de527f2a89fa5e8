#include <tslbl/tune/Tune.h>

#include <tslbl/closed/common/XMLResultException.h>
#include <tslbl/records/Archive.h>
#include <limits>

#include "RecordCheck.h"
#include "tune/Samples.h"

namespace {

using namespace tests;

TEST(AllRecords, Tune) {
  CheckRecord<Tune>({
      {"Info", [](auto& r) { r.Info.Name = L"name"; }},
      {"Source", [](auto& r) { r.Source.EndPlate = 1; }},
      {"ControlData", [](auto& r) { r.ControlData.MZLow = 2; }},
      {"SyringeData", [](auto& r) { r.SyringeData.FlowRate = 3; }},
      {"MZCalPts",
       [](auto& r) {
         r.MZCalPts = {{L"a", 1, 2}, {L"b", 3, 4}};
       }},
      {"Q1CalPts",
       [](auto& r) {
         r.Q1CalPts = {SampleQ1CalPt(), Q1CalPt(1, L"x")};
       }},
  });
}

TEST(Golden, Tune) { CheckGolden(SampleTune(), "Tune.v3"); }
TEST(Tune, CutShortIsRefused) { CheckCutShort(SampleTune()); }

TEST(Tune, OfAnUnknownVersionIsRefused) {
  for (const std::uint32_t version : {0u, 4u})
    EXPECT_EQ(ReadFailure<Tune>(Bytes(version), SampleTune()), "Unknown Tune version.");
}

TEST(Tune, OfAnOldVersionCutShortIsRefused) {
  for (const char* name : {"Tune.v1", "Tune.v2"}) {
    const std::string whole = GoldenBytes(name);
    for (std::size_t length = 0; length < whole.size(); ++length)
      EXPECT_NE(ReadFailure<Tune>(whole.substr(0, length)), "") << name << " " << length;
  }
}

TEST(Tune, WithACountBeyondTheStreamIsRefused) {
  std::string bytes = ToBytes(Tune());
  bytes.replace(bytes.size() - 8, 8, Bytes(4294967295u));
  EXPECT_EQ(ReadFailure<Tune>(bytes, SampleTune()), "Unknown MZCalPt version.");
}

// The source of an ESI tune; an APCI one differs in names and has two elements more.
std::wstring SourceXml(bool apci) {
  const std::wstring cylinder = apci ? L"Corona" : L"Cylinder";
  const std::wstring pressure = apci ? L"ApciAuxGas" : L"Neb1GasPres";
  const std::wstring valve = apci ? L"ApciNebGas" : L"CalValveOn";
  return std::wstring(L"  <Source>\n    <Type>") + (apci ? L"APCI (1)" : L"ESI (0)") + L"</Type>\n    <" +
         cylinder + L">0</" + cylinder +
         L">\n"
         L"    <EndPlate>0</EndPlate>\n"
         L"    <CapEnter>0</CapEnter>\n"
         L"    <EndPlateTemp>Off</EndPlateTemp>\n"
         L"    <DryGasTemp>0</DryGasTemp>\n"
         L"    <ApciVapTemp>0</ApciVapTemp>\n"
         L"    <DryGasFlow>0</DryGasFlow>\n"
         L"    <" +
         pressure + L">0</" + pressure +
         L">\n"
         L"    <Neb2GasOn>false</Neb2GasOn>\n"
         L"    <CalValve2On>false</CalValve2On>\n"
         L"    <CalSample1On>false</CalSample1On>\n"
         L"    <CalSample2On>false</CalSample2On>\n"
         L"    <" +
         valve + L">false</" + valve + L">\n" +
         (apci ? L"    <ControlByCurrent>true</ControlByCurrent>\n    <CoronaCurrent>1</CoronaCurrent>\n"
               : L"") +
         L"  </Source>\n";
}

std::wstring LensXml(const std::wstring& name) {
  return L"    <" + name + L">\n      <IOPt Type=\"Single\">0</IOPt>\n    </" + name + L">\n";
}

std::wstring ControlXml() {
  return L"  <Control>\n"
         L"    <Type>Scan</Type>\n"
         L"    <MZLow>0</MZLow>\n"
         L"    <MZHi>0</MZHi>\n"
         L"    <MZStepSize>0</MZStepSize>\n"
         L"    <PolarityType>Positive</PolarityType>\n"
         L"    <InitSettleDelay>0</InitSettleDelay>\n"
         L"    <StepSettleDelay>0</StepSettleDelay>\n"
         L"    <PulseCountDelaySCAN>0</PulseCountDelaySCAN>\n"
         L"    <ScansPerSpec>0</ScansPerSpec>\n" +
         LensXml(L"CapExit") + LensXml(L"Skimmer") + LensXml(L"Q0RFAmpl") + LensXml(L"Q0Offset") +
         LensXml(L"Q0Exit1") + LensXml(L"Q0Exit2") +
         L"    <HEDynode>0</HEDynode>\n"
         L"    <DetectorGain>0</DetectorGain>\n"
         L"    <SignalThreshold>0</SignalThreshold>\n"
         L"    <Q1MZType>RF_DC</Q1MZType>\n" +
         LensXml(L"Q1Resolution") + LensXml(L"Q1CoarseResolution") + LensXml(L"Q1Offset") +
         LensXml(L"Q1IonGuide") +
         L"    <Q1PolePolarity>false</Q1PolePolarity>\n"
         L"  </Control>\n";
}

std::wstring DocumentOf(bool apci) {
  return L"<Tune>\n"
         L"  <Info>\n"
         L"    <Name>Mine</Name>\n"
         L"    <Comment>Kept</Comment>\n"
         L"    <LastSave>7</LastSave>\n"
         L"  </Info>\n" +
         SourceXml(apci) + ControlXml() +
         L"  <Syringe>\n"
         L"    <Manufacturer>Hamilton</Manufacturer>\n"
         L"    <Model Name=\"1725\" Diameter=\"2.3\" />\n"
         L"    <FlowRate>180</FlowRate>\n"
         L"  </Syringe>\n"
         L"  <MZCalPts>\n"
         L"    <MZCal Name=\"Low\" MZ=\"5\" MassDAC=\"100\" />\n"
         L"    <MZCal Name=\"High\" MZ=\"3000\" MassDAC=\"60000\" />\n"
         L"  </MZCalPts>\n"
         L"  <Q1CalPts>\n"
         L"    <Q1Cal Name=\"Point\" MZ=\"100\">\n"
         L"      <IOPtFlds>\n"
         L"        <IOPtFld Name=\"Skimmer\">18</IOPtFld>\n"
         L"      </IOPtFlds>\n"
         L"    </Q1Cal>\n"
         L"  </Q1CalPts>\n"
         L"</Tune>\n";
}

Tune DocumentTune(Probes::ProbeTypes probe) {
  Tune tune;
  tune.Info.Name = L"Mine";
  tune.Info.Comment = L"Kept";
  tune.Info.LastSave = 7;
  tune.Source.Type = probe;
  tune.SyringeData = SampleSyringe();
  tune.MZCalPts = {{L"Low", 5, 100}, {L"High", 3000, 60000}};
  tune.Q1CalPts = {Q1CalPt(100, L"Point")};
  tune.Q1CalPts[0].Fields[TuneField::Skimmer] = 18;
  return tune;
}

TEST(Tune, OfAnEsiProbeAsADocument) {
  EXPECT_EQ(ToXml(DocumentTune(Probes::ESI)), DocumentOf(false));
  EXPECT_EQ(FromXml<Tune>(DocumentOf(false)), DocumentTune(Probes::ESI));
}

TEST(Tune, OfAnApciProbeAsADocument) {
  EXPECT_EQ(ToXml(DocumentTune(Probes::APCI)), DocumentOf(true));
  EXPECT_EQ(FromXml<Tune>(DocumentOf(true)), DocumentTune(Probes::APCI));
}

TEST(Tune, MustStandInItsDocument) {
  for (const wchar_t* xml : {L"<Method/>", L"<Other><Tune/></Other>"}) {
    Tune tune = SampleTune();
    TslCommon::XMLParser parser;
    ASSERT_TRUE(parser.LoadText(xml));
    EXPECT_THROW(tune.Serialize(parser), TslCommon::XMLResultException) << xml;
    EXPECT_EQ(tune, SampleTune());
  }
}

TEST(Tune, WithoutListsHasNoPoints) {
  Tune expected = SampleTune();
  expected.MZCalPts.clear();
  expected.Q1CalPts.clear();
  EXPECT_EQ(FromXml(L"<Tune/>", SampleTune()), expected);
}

TEST(Tune, IsReadAsOneOfSeveral) {
  TslCommon::XMLParser parser;
  ASSERT_TRUE(
      parser.LoadText(L"<Tunes><Tune><Info><Name>a</Name></Info></Tune>"
                      L"<Tune><Info><Name>b</Name></Info></Tune></Tunes>"));
  Tune first;
  Tune second;
  parser.StartNode(L"Tunes");
  first.Serialize(parser);
  second.Serialize(parser);
  EXPECT_EQ(first.Info.Name + second.Info.Name, L"ab");
}

TEST(Tune, ComparesListsBySizeAndElement) {
  Tune other = SampleTune();
  other.MZCalPts.pop_back();
  EXPECT_FALSE(other == SampleTune());
  other = SampleTune();
  other.Q1CalPts[1].Fields[TuneField::CapExit] = 1;
  EXPECT_FALSE(other == SampleTune());
  other = SampleTune();
  other.MZCalPts[1].MZ += 1e-7;
  EXPECT_TRUE(other == SampleTune()) << "within the tolerance of a point";
}

TEST(Tune, EqualsItselfWhateverItHolds) {
  Tune tune;
  tune.ControlData.MZLow = std::numeric_limits<double>::quiet_NaN();
  EXPECT_TRUE(tune == tune);
  EXPECT_FALSE(tune == Tune(tune));
}

Tune Sim(double span) {
  Tune tune;
  tune.ControlData.Type = Control::Sim;
  tune.ControlData.MZHi = span;
  return tune;
}

TEST(SimWithSpan, IsAnEvenNumberOfTenthsUpToTwo) {
  for (const double span : {0.2, 0.4, 0.6, 0.8, 1.0, 1.2, 1.4, 1.6, 1.8, 2.0, 0.25, 1.05})
    EXPECT_TRUE(Sim(span).IsSimWithSpan()) << span;
}

TEST(SimWithSpan, IsNoOtherSpan) {
  constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
  for (const double span :
       {0.0, 0.1, 0.19, 0.3, 0.5, 0.7, 0.9, 1.1, 1.3, 1.5, 1.7, 1.9, 2.01, 2.2, 4.0, -0.4, 1e300, kNaN})
    EXPECT_FALSE(Sim(span).IsSimWithSpan()) << span;
}

TEST(SimWithSpan, IsNeverAScan) {
  Tune tune = Sim(0.4);
  tune.ControlData.Type = Control::Scan;
  EXPECT_FALSE(tune.IsSimWithSpan());
}

TEST(SimWithSpan, MayBeOfAnotherTypeThanSim) {
  Tune tune = Sim(0.4);
  tune.ControlData.Type = static_cast<Control::Types>(2);
  EXPECT_TRUE(tune.IsSimWithSpan());
}

Tune Scanning(double step, std::uint32_t settle, std::uint32_t dwell) {
  Tune tune;
  tune.ControlData.MZStepSize = step;
  tune.ControlData.StepSettleDelay = settle;
  tune.ControlData.PulseCountDelay = dwell;
  return tune;
}

TEST(ScanSpeed, IsTheStepOverItsTime) {
  EXPECT_EQ(Scanning(0.1, 0, 1000).QScanSpeed(), 100.0);
  EXPECT_EQ(Scanning(0.1, 500, 1500).QScanSpeed(), 50.0);
  EXPECT_EQ(Scanning(0.1, 0, 30).QScanSpeed(), 3333.0);
  EXPECT_EQ(Scanning(0.05, 0, 2000000).QScanSpeed(), 0.0);
}

TEST(ScanSpeed, AddsTheTimesIn32Bits) { EXPECT_EQ(Scanning(0.1, 4294967295, 1001).QScanSpeed(), 100.0); }

TEST(ScanSpeed, OfAStepWithoutTimeThrows) {
  for (const Tune& tune : {Scanning(0.1, 0, 0), Scanning(0.1, 4294967295, 1)}) {
    try {
      tune.QScanSpeed();
      ADD_FAILURE() << "no exception";
    } catch (const std::runtime_error& e) {
      EXPECT_STREQ(e.what(), "QScanSpeed: settle delay + pulse count equals zero.");
    }
  }
}

using Fields = std::map<TuneField::Id, double>;

Q1CalPt Point(double mz, const wchar_t* name, const Fields& fields) {
  Q1CalPt point(mz, name);
  point.Fields = fields;
  return point;
}

constexpr TuneField::Id kCapExit = TuneField::CapExit;
constexpr TuneField::Id kSkimmer = TuneField::Skimmer;

Tune Overwritten(std::vector<Q1CalPt> mine, std::vector<Q1CalPt> others) {
  Tune tune;
  Tune other;
  tune.Q1CalPts = std::move(mine);
  other.Q1CalPts = std::move(others);
  tune.Overwrite(other);
  return tune;
}

TEST(Overwrite, TakesOpticsAndMzCalibrationOnly) {
  Tune tune;
  tune.ControlData.CapExit = SingleLens(99);
  Tune expected = tune;
  expected.ControlData.Overwrite(SampleControl());
  expected.MZCalPts = SampleTune().MZCalPts;
  expected.Q1CalPts = {SampleQ1CalPt(), Q1CalPt(2721.9, L"High")};
  expected.Q1CalPts[0].Fields[kCapExit] = 0;  // this tune has no curve
  tune.Overwrite(SampleTune());
  EXPECT_EQ(tune, expected);
  EXPECT_EQ(tune.ControlData.CapExit, SingleLens(99));
}

TEST(Overwrite, APointTakesThePlaceNameAndFieldsOfItsPartner) {
  const Tune tune = Overwritten({Point(100, L"mine", {{kCapExit, 100}}), Point(200, L"", {{kCapExit, 200}})},
                                {Point(110, L"other", {{kCapExit, 7}, {kSkimmer, 8}})});
  EXPECT_EQ(tune.Q1CalPts.at(0), Point(110, L"other", {{kCapExit, 110}, {kSkimmer, 8}}));
}

TEST(Overwrite, APartnerWithoutACapillaryExitBringsNone) {
  const Tune tune =
      Overwritten({Point(100, L"mine", {{kCapExit, 100}})}, {Point(100, L"other", {{kSkimmer, 8}})});
  EXPECT_EQ(tune.Q1CalPts, (std::vector{Point(100, L"other", {{kSkimmer, 8}})}));
}

TEST(Overwrite, APointWithoutAPartnerKeepsItsCapillaryExitOnly) {
  const Tune tune = Overwritten({Point(100, L"mine", {{kCapExit, 100}, {kSkimmer, 1}})}, {});
  EXPECT_EQ(tune.Q1CalPts, (std::vector{Point(100, L"mine", {{kCapExit, 100}})}));
}

TEST(Overwrite, PartnersAreTenMzApartAtMost) {
  const auto mine = Point(100, L"mine", {});
  EXPECT_EQ(Overwritten({mine}, {Point(110, L"", {})}).Q1CalPts.size(), 1u);
  EXPECT_EQ(Overwritten({mine}, {Point(90, L"", {})}).Q1CalPts.size(), 1u);
  EXPECT_EQ(Overwritten({mine}, {Point(110.001, L"", {})}).Q1CalPts.size(), 2u);
  EXPECT_EQ(Overwritten({mine}, {Point(89.999, L"", {})}).Q1CalPts.size(), 2u);
}

TEST(Overwrite, TheFirstPointInReachIsThePartner) {
  const Tune tune =
      Overwritten({Point(100, L"mine", {})}, {Point(109, L"first", {}), Point(100, L"second", {})});
  EXPECT_EQ(tune.Q1CalPts.at(0).Name, L"first");
  EXPECT_EQ(tune.Q1CalPts.size(), 1u) << "the second lies within reach of the point as it now is";
}

TEST(Overwrite, PointsOfTheOtherWithoutAPartnerAreAppendedUnsorted) {
  const Tune tune =
      Overwritten({Point(500, L"mine", {{kCapExit, 50}}), Point(1000, L"", {{kCapExit, 100}})},
                  {Point(750, L"mid", {{kCapExit, 1}}), Point(100, L"low", {{kCapExit, 2}, {kSkimmer, 3}})});
  ASSERT_EQ(tune.Q1CalPts.size(), 4u);
  EXPECT_EQ(tune.Q1CalPts[2], Point(750, L"mid", {{kCapExit, 75}}));
  EXPECT_EQ(tune.Q1CalPts[3], Point(100, L"low", {{kCapExit, 50}, {kSkimmer, 3}}));
}

TEST(Overwrite, AnAppendedPointIsAPartnerOfThoseAfterIt) {
  const Tune tune = Overwritten({}, {Point(100, L"a", {}), Point(105, L"b", {}), Point(111, L"c", {})});
  ASSERT_EQ(tune.Q1CalPts.size(), 2u);
  EXPECT_EQ(tune.Q1CalPts[1].Name, L"c");
}

TEST(Overwrite, ByItselfChangesNothing) {
  Tune tune = SampleTune();
  tune.Overwrite(tune);
  EXPECT_EQ(tune, SampleTune());
}

TEST(Overwrite, ThatThrowsLeavesTheTune) {
  Tune tune = SampleTune();
  tune.Q1CalPts = {Point(100, L"", {{kCapExit, 1}}), Point(100, L"", {{kCapExit, 2}})};
  const Tune before = tune;
  Tune other;
  other.Q1CalPts = {Point(100, L"", {{kCapExit, 3}})};
  EXPECT_THROW(tune.Overwrite(other), std::runtime_error);
  EXPECT_EQ(tune, before);
}

// A run of tunes, as a document of several holds them.
struct TuneHolder : Record<TuneHolder> {
  Tune tune;
};
void Describe(Archive& ar, TuneHolder& holder) {
  if (const auto element = ar.Element(L"Holder")) ar.Nested(holder.tune);
}

TEST(TuneXml, IsRequiredInsideAnotherRecordToo) {
  EXPECT_THROW(FromXml<TuneHolder>(L"<Holder/>"), TslCommon::XMLResultException);
}

TEST(TuneXml, AForeignElementAmongTheCalibrationPointsIsNoPoint) {
  const Tune tune =
      FromXml<Tune>(L"<Tune><MZCalPts><Note/><MZCal MZ=\"5\" MassDAC=\"100\"/></MZCalPts></Tune>");
  ASSERT_EQ(tune.MZCalPts.size(), 1u);
  EXPECT_EQ(tune.MZCalPts[0].MassDAC, 100.0);
}

}  // namespace
