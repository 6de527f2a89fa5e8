#include <RecordCheck.h>

#include <tslbl/records/OPDParams.h>

using namespace TslBL;
using namespace tests;

namespace {

OPDParams SampleOPDParams() {
  OPDParams p;
  p.FullRange = false;
  p.Ranges = {{false, 100.5, 200.25}, {true, 300.0, 400.0}};
  p.MinAmplPercentCmnEndPt = 51;
  p.ResolutionThreshold = 1502;
  p.MinDeltaCentroidPkMax = 0.375;
  p.NumSmoothPts = 5;
  p.MinPeakAmplitude = 4000000000;
  p.MaxPeaks = 11;
  p.FittingFunc = OPDParams::HookeJeeves;
  p.ViewResults = false;
  p.SingleGroup = true;
  return p;
}

OPDParams WithRange(const std::wstring& attributes) {
  return FromXml<OPDParams>(L"<OPD><Ranges><Range " + attributes + L"/></Ranges></OPD>");
}

OPDParams WithFittingFunc(const std::wstring& text) {
  return FromXml<OPDParams>(L"<OPD><FittingFunc>" + text + L"</FittingFunc></OPD>");
}

}  // namespace

TEST(AllRecords, OPDParams) {
  CheckRecord<OPDParams>({
      {"FullRange", [](auto& r) { r.FullRange = false; }},
      {"Ranges", [](auto& r) { r.Ranges.resize(2); }},
      {"Ranges.Enable", [](auto& r) { r.Ranges[1].Enable = false; }},
      {"Ranges.LowMZ", [](auto& r) { r.Ranges[1].LowMZ = 6.0; }},
      {"Ranges.HighMZ", [](auto& r) { r.Ranges[1].HighMZ = 6.0; }},
      {"MinAmplPercentCmnEndPt", [](auto& r) { r.MinAmplPercentCmnEndPt = 1; }},
      {"ResolutionThreshold", [](auto& r) { r.ResolutionThreshold = 2; }},
      {"MinDeltaCentroidPkMax", [](auto& r) { r.MinDeltaCentroidPkMax = 0.5; }},
      {"NumSmoothPts", [](auto& r) { r.NumSmoothPts = 7; }},
      {"MinPeakAmplitude", [](auto& r) { r.MinPeakAmplitude = 4294967295u; }},
      {"MaxPeaks", [](auto& r) { r.MaxPeaks = 3; }},
      {"FittingFunc", [](auto& r) { r.FittingFunc = OPDParams::HookeJeeves; }},
      {"ViewResults", [](auto& r) { r.ViewResults = false; }},
      {"SingleGroup", [](auto& r) { r.SingleGroup = true; }},
  });
}
TEST(Golden, OPDParams) { CheckGolden(SampleOPDParams(), "OPDParams.v1"); }
TEST(CutShort, OPDParams) { CheckCutShort(SampleOPDParams()); }

TEST(OPDParams, HasItsDefaults) {
  const OPDParams p;
  EXPECT_TRUE(p.FullRange);
  EXPECT_TRUE(p.Ranges.empty());
  EXPECT_EQ(p.MinAmplPercentCmnEndPt, 50u);
  EXPECT_EQ(p.ResolutionThreshold, 1500u);
  EXPECT_EQ(p.MinDeltaCentroidPkMax, 0.2);
  EXPECT_EQ(p.NumSmoothPts, 3u);
  EXPECT_EQ(p.MinPeakAmplitude, 10u);
  EXPECT_EQ(p.MaxPeaks, 10u);
  EXPECT_EQ(p.FittingFunc, OPDParams::MarquardtLevenberg);
  EXPECT_TRUE(p.ViewResults);
  EXPECT_FALSE(p.SingleGroup);
}

TEST(OPDParams, PresetForMassSpectraIsTheDefault) { EXPECT_EQ(OPDParams::DefaultMS(), OPDParams()); }

TEST(OPDParams, RefusesUnknownVersions) {
  for (const std::uint32_t version : {0u, 2u})
    EXPECT_EQ(ReadFailure<OPDParams>(Bytes(version), SampleOPDParams()), "Unknown OPDParams version.");
}

TEST(OPDParams, DoesNotTrustTheCountOfRanges) {
  EXPECT_EQ(ReadFailure<OPDParams>(Bytes(1u, true, 0xFFFFFFFFu, true)), "Unexpected end of stream.");
}

TEST(OPDParams, WritesXml) {
  EXPECT_EQ(ToXml(SampleOPDParams()),
            L"<OPD>\n"
            L"  <FullRange>false</FullRange>\n"
            L"  <Ranges>\n"
            L"    <Range Enable=\"false\" LowMZ=\"100.5\" HighMZ=\"200.25\" />\n"
            L"    <Range Enable=\"true\" LowMZ=\"300\" HighMZ=\"400\" />\n"
            L"  </Ranges>\n"
            L"  <MinAmplPercentCmnEndPt>51</MinAmplPercentCmnEndPt>\n"
            L"  <ResolutionThreshold>1502</ResolutionThreshold>\n"
            L"  <MinDeltaCentroidPkMax>0.375</MinDeltaCentroidPkMax>\n"
            L"  <NumSmoothPts>5</NumSmoothPts>\n"
            L"  <MinPeakAmplitude>4000000000</MinPeakAmplitude>\n"
            L"  <MaxPeaks>11</MaxPeaks>\n"
            L"  <FittingFunc>HookeJeeves</FittingFunc>\n"
            L"  <ViewResults>false</ViewResults>\n"
            L"  <SingleGroup>true</SingleGroup>\n"
            L"</OPD>\n");
}

TEST(OPDParams, ReadsTheXmlThatItWrites) {
  EXPECT_EQ(FromXml<OPDParams>(ToXml(SampleOPDParams())), SampleOPDParams());
}

TEST(OPDParams, StaysAsItIsWithoutItsElement) {
  EXPECT_EQ(FromXml<OPDParams>(L"<Other/>", SampleOPDParams()), SampleOPDParams());
}

TEST(OPDParams, KeepsWhatTheDocumentLacks) {
  EXPECT_EQ(FromXml<OPDParams>(L"<OPD/>", SampleOPDParams()), SampleOPDParams());
}

TEST(OPDParams, DoublesKeepSixDigitsInXml) {
  OPDParams p;
  p.MinDeltaCentroidPkMax = 1.2345678;
  EXPECT_EQ(FromXml<OPDParams>(ToXml(p)).MinDeltaCentroidPkMax, 1.23457);
}

TEST(OPDParams, TextThatIsNoNumberLeavesItsField) {
  const auto read = FromXml<OPDParams>(
      L"<OPD><MaxPeaks>abc</MaxPeaks><MinDeltaCentroidPkMax>abc</MinDeltaCentroidPkMax></OPD>",
      SampleOPDParams());
  EXPECT_EQ(read, SampleOPDParams());
}

TEST(OPDParams, ReadRangesReplaceTheOldOnes) {
  const auto read = FromXml<OPDParams>(L"<OPD><Ranges><Range LowMZ='7'/></Ranges></OPD>", SampleOPDParams());
  EXPECT_EQ(read.Ranges, (std::vector<OPDRange>{{true, 7.0, 3000.0}}));
}

TEST(OPDRange, WithoutAttributesIsEnabledFrom5To3000) {
  EXPECT_EQ(WithRange(L"").Ranges, (std::vector<OPDRange>{{true, 5.0, 3000.0}}));
}

TEST(OPDRange, ReadsEachAttributeAlone) {
  EXPECT_EQ(WithRange(L"Enable='false'").Ranges[0], (OPDRange{false, 5.0, 3000.0}));
  EXPECT_EQ(WithRange(L"LowMZ='8'").Ranges[0], (OPDRange{true, 8.0, 3000.0}));
  EXPECT_EQ(WithRange(L"HighMZ='9'").Ranges[0], (OPDRange{true, 5.0, 9.0}));
}

TEST(OPDParams, FittingFuncIsHookeJeevesForAnyOtherText) {
  for (const wchar_t* text : {L"HookeJeeves", L"Unknown", L"", L"0", L"Marquardt"})
    EXPECT_EQ(WithFittingFunc(text).FittingFunc, OPDParams::HookeJeeves);
  for (const wchar_t* text : {L"MarquardtLevenberg", L"MARQUARDTlevenberg"})
    EXPECT_EQ(WithFittingFunc(text).FittingFunc, OPDParams::MarquardtLevenberg);
}

TEST(OPDParams, FittingFuncWithoutANameIsWrittenAsUnknown) {
  OPDParams p;
  p.FittingFunc = static_cast<OPDParams::FittingFuncs>(2);
  EXPECT_NE(ToXml(p).find(L"<FittingFunc>Unknown</FittingFunc>"), std::wstring::npos);
  EXPECT_EQ(FromBytes<OPDParams>(ToBytes(p)), p);
}

TEST(OPDParams, DumpsEveryFieldAndRange) {
  EXPECT_EQ(DumpOf(SampleOPDParams()),
            L"  FullRange:\tfalse\r\n"
            L"  Enable:\tfalse\r\n  LowMZ:\t100.5\r\n  HighMZ:\t200.25\r\n"
            L"  Enable:\ttrue\r\n  LowMZ:\t300\r\n  HighMZ:\t400\r\n"
            L"  MinAmplPercentCmnEndPt:\t51\r\n"
            L"  ResolutionThreshold:\t1502\r\n"
            L"  MinDeltaCentroidPkMax:\t0.375\r\n"
            L"  NumSmoothPts:\t5\r\n"
            L"  MinPeakAmplitude:\t4000000000\r\n"
            L"  MaxPeaks:\t11\r\n"
            L"  FittingFunc:\tHookeJeeves\r\n"
            L"  ViewResults:\tfalse\r\n"
            L"  SingleGroup:\ttrue\r\n");
}
