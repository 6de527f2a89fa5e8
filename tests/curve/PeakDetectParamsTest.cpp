#include <RecordCheck.h>

#include <tslbl/curve/PeakDetectParams.h>

using namespace TslBL;
using namespace tests;

namespace {

// Every field differs from its default; the flags alternate, so that two of them cannot
// trade places unseen.
PeakDetectParams SamplePeakDetectParams() {
  PeakDetectParams p;
  p.FullSearch = false;
  p.SearchStart = 6.5;
  p.SearchEnd = 2000.5;
  p.SNInUse = false;
  p.SN = 11;
  p.ThresholdInUse = true;
  p.RelAmplInUse = true;
  p.RelAmpl = 12.5;
  p.AbsAreaInUse = false;
  p.AbsArea = 13.5;
  p.RelAreaInUse = true;
  p.RelArea = 14.5;
  p.FWHMGTInUse = false;
  p.FWHMGT = 0.25;
  p.FWHMLTInUse = true;
  p.FWHMLT = 0.75;
  p.PeakCntInUse = false;
  p.PeakCnt = 15;
  p.MaxValley = 16.5;
  p.RetentionType = PeakDetectParams::CentroidTopPercent;
  p.Retention = 17.5;
  p.FindFeatureAlgorithm = PeakDetectParams::Sorted;
  p.Display = false;
  return p;
}

PeakDetectParams Read(const std::wstring& inside) {
  return FromXml<PeakDetectParams>(L"<PeakDetect>" + inside + L"</PeakDetect>", SamplePeakDetectParams());
}

PeakDetectParams WithRetention(const std::wstring& attributesAndText) {
  return Read(L"<Search Type='Full'/><Retention " + attributesAndText + L"</Retention>");
}

const std::wstring kLimits =
    L"<SN InUse='true'>21</SN><Threshold InUse='false'/><RelAmpl InUse='false'>22.5</RelAmpl>"
    L"<AbsArea InUse='true'>23.5</AbsArea><RelArea InUse='false'>24.5</RelArea>"
    L"<FWHMGT InUse='true'>25.5</FWHMGT><FWHMLT InUse='false'>26.5</FWHMLT>"
    L"<PeakCnt InUse='true'>27</PeakCnt><MaxValley>28.5</MaxValley>";
const std::wstring kRest =
    L"<Retention Type='Peak Top'/><FindFeatAlg>Sequential</FindFeatAlg><Display>true</Display>";

}  // namespace

TEST(AllRecords, PeakDetectParams) {
  CheckRecord<PeakDetectParams>({
      {"FullSearch", [](auto& p) { p.FullSearch = false; }},
      // The limits of a search of the whole curve have no place in a document.
      {"SearchStart", [](auto& p) { p.SearchStart = 1.5; }, BinaryOnly},
      {"SearchEnd", [](auto& p) { p.SearchEnd = 1.5; }, BinaryOnly},
      {"SearchStart of a partial search", [](auto& p) { p.FullSearch = false, p.SearchStart = 1.5; }},
      {"SearchEnd of a partial search", [](auto& p) { p.FullSearch = false, p.SearchEnd = 1.5; }},
      {"SNInUse", [](auto& p) { p.SNInUse = false; }},
      {"SN", [](auto& p) { p.SN = 1; }},
      {"ThresholdInUse", [](auto& p) { p.ThresholdInUse = true; }},
      {"RelAmplInUse", [](auto& p) { p.RelAmplInUse = true; }},
      {"RelAmpl", [](auto& p) { p.RelAmpl = 1.5; }},
      {"AbsAreaInUse", [](auto& p) { p.AbsAreaInUse = true; }},
      {"AbsArea", [](auto& p) { p.AbsArea = 1.5; }},
      {"RelAreaInUse", [](auto& p) { p.RelAreaInUse = true; }},
      {"RelArea", [](auto& p) { p.RelArea = 1.5; }},
      {"FWHMGTInUse", [](auto& p) { p.FWHMGTInUse = true; }},
      {"FWHMGT", [](auto& p) { p.FWHMGT = 1.5; }},
      {"FWHMLTInUse", [](auto& p) { p.FWHMLTInUse = true; }},
      {"FWHMLT", [](auto& p) { p.FWHMLT = 1.5; }},
      {"PeakCntInUse", [](auto& p) { p.PeakCntInUse = true; }},
      {"PeakCnt", [](auto& p) { p.PeakCnt = 2; }},
      {"MaxValley", [](auto& p) { p.MaxValley = 1.5; }},
      {"RetentionType", [](auto& p) { p.RetentionType = PeakDetectParams::PeakTop; }},
      {"Retention", [](auto& p) { p.Retention = 1.5; }},
      {"FindFeatureAlgorithm", [](auto& p) { p.FindFeatureAlgorithm = PeakDetectParams::Sorted; }},
      {"Display", [](auto& p) { p.Display = false; }},
  });
}
TEST(Golden, PeakDetectParams) { CheckGolden(SamplePeakDetectParams(), "PeakDetectParams.v2"); }

TEST(PeakDetectParams, ReadsVersion1AsSequential) {
  PeakDetectParams expected = SamplePeakDetectParams();
  expected.FindFeatureAlgorithm = PeakDetectParams::Sequential;
  EXPECT_EQ(FromBytes<PeakDetectParams>(GoldenBytes("PeakDetectParams.v1"), SamplePeakDetectParams()),
            expected);
}

TEST(PeakDetectParams, HasItsDefaults) {
  const PeakDetectParams p;
  EXPECT_TRUE(p.FullSearch);
  EXPECT_EQ(p.SearchStart, 5.0);
  EXPECT_EQ(p.SearchEnd, 3000.0);
  EXPECT_TRUE(p.SNInUse);
  EXPECT_EQ(p.SN, 4u);
  EXPECT_FALSE(p.ThresholdInUse);
  EXPECT_FALSE(p.RelAmplInUse);
  EXPECT_EQ(p.RelAmpl, 0.0);
  EXPECT_FALSE(p.AbsAreaInUse);
  EXPECT_EQ(p.AbsArea, 0.0);
  EXPECT_FALSE(p.RelAreaInUse);
  EXPECT_EQ(p.RelArea, 0.0);
  EXPECT_FALSE(p.FWHMGTInUse);
  EXPECT_EQ(p.FWHMGT, 0.01);
  EXPECT_FALSE(p.FWHMLTInUse);
  EXPECT_EQ(p.FWHMLT, 0.01);
  EXPECT_FALSE(p.PeakCntInUse);
  EXPECT_EQ(p.PeakCnt, 1u);
  EXPECT_EQ(p.MaxValley, 25.0);
  EXPECT_EQ(p.RetentionType, PeakDetectParams::CentroidTopPercent);
  EXPECT_EQ(p.Retention, 75.0);
  EXPECT_EQ(p.FindFeatureAlgorithm, PeakDetectParams::Sequential);
  EXPECT_TRUE(p.Display);
}

TEST(PeakDetectParams, PresetForMassSpectraTakesTheTopQuarter) {
  PeakDetectParams expected;
  expected.Retention = 25.0;
  EXPECT_EQ(PeakDetectParams::DefaultMS(), expected);
}

TEST(PeakDetectParams, PresetForIonChromatogramsHasItsOwnLimits) {
  PeakDetectParams expected;
  expected.SearchStart = 0.0;
  expected.SearchEnd = 1000.0;
  expected.FWHMGT = 500.0;
  expected.FWHMLT = 1000.0;
  EXPECT_EQ(PeakDetectParams::DefaultIC(), expected);
}

TEST(PeakDetectParams, NamesItsFeatureAlgorithms) {
  EXPECT_EQ(PeakDetectParams::ToString(PeakDetectParams::Sequential), L"Sequential");
  EXPECT_EQ(PeakDetectParams::ToString(PeakDetectParams::Sorted), L"Sorted");
  EXPECT_EQ(PeakDetectParams::ToString(static_cast<PeakDetectParams::FindFeatureAlgorithms>(2)), L"Unknown");
}

TEST(PeakDetectParams, HasItsNumbers) {
  EXPECT_EQ(PeakDetectParams::PeakTop, 0u);
  EXPECT_EQ(PeakDetectParams::CentroidTopPercent, 1u);
  EXPECT_EQ(PeakDetectParams::Sequential, 0u);
  EXPECT_EQ(PeakDetectParams::Sorted, 1u);
}

TEST(PeakDetectParams, RefusesUnknownVersions) {
  for (const std::uint32_t version : {0u, 3u, 0xFFFFFFFFu}) {
    const std::string bytes = Bytes(version) + ToBytes(PeakDetectParams()).substr(4);
    EXPECT_EQ(ReadFailure<PeakDetectParams>(bytes, SamplePeakDetectParams()),
              "Unknown PeakDetectParams version.");
  }
}

TEST(PeakDetectParams, CutShortTellsWhichVersionItWas) {
  const struct {
    const char* golden;
    const char* failure;
  } rows[] = {{"PeakDetectParams.v2", "Error reading PeakDetectParams"},
              {"PeakDetectParams.v1", "Error reading version 1 of PeakDetectParams"}};
  for (const auto& [golden, failure] : rows) {
    const std::string whole = GoldenBytes(golden);
    for (std::size_t length = 4; length < whole.size(); ++length)
      EXPECT_EQ(ReadFailure<PeakDetectParams>(whole.substr(0, length), SamplePeakDetectParams()), failure)
          << length << " bytes";
  }
}

TEST(PeakDetectParams, CutShortWithinItsVersionIsOfNoVersion) {
  EXPECT_EQ(ReadFailure<PeakDetectParams>(Bytes(2u).substr(0, 3)), "Unknown PeakDetectParams version.");
}

TEST(PeakDetectParams, WritesXml) {
  EXPECT_EQ(ToXml(SamplePeakDetectParams()),
            L"<PeakDetect>\n"
            L"  <Search Type=\"Partial\" Start=\"6.5\" End=\"2000.5\" />\n"
            L"  <SN InUse=\"false\">11</SN>\n"
            L"  <Threshold InUse=\"true\" />\n"
            L"  <RelAmpl InUse=\"true\">12.5</RelAmpl>\n"
            L"  <AbsArea InUse=\"false\">13.5</AbsArea>\n"
            L"  <RelArea InUse=\"true\">14.5</RelArea>\n"
            L"  <FWHMGT InUse=\"false\">0.25</FWHMGT>\n"
            L"  <FWHMLT InUse=\"true\">0.75</FWHMLT>\n"
            L"  <PeakCnt InUse=\"false\">15</PeakCnt>\n"
            L"  <MaxValley>16.5</MaxValley>\n"
            L"  <Retention Type=\"Centroid Top Percent\">17.5</Retention>\n"
            L"  <FindFeatAlg>Sorted</FindFeatAlg>\n"
            L"  <Display>false</Display>\n"
            L"</PeakDetect>\n");
}

TEST(PeakDetectParams, AFullSearchHasNoLimitsInXml) {
  EXPECT_NE(ToXml(PeakDetectParams()).find(L"  <Search Type=\"Full\" />\n"), std::wstring::npos);
}

TEST(PeakDetectParams, APeakTopHasNoPercentageInXml) {
  PeakDetectParams p;
  p.RetentionType = PeakDetectParams::PeakTop;
  EXPECT_NE(ToXml(p).find(L"  <Retention Type=\"Peak Top\" />\n"), std::wstring::npos);
}

TEST(PeakDetectParams, WritesValuesWithoutANameAsUnknown) {
  PeakDetectParams p;
  p.RetentionType = static_cast<PeakDetectParams::RetentionTypes>(2);
  p.FindFeatureAlgorithm = static_cast<PeakDetectParams::FindFeatureAlgorithms>(2);
  EXPECT_NE(ToXml(p).find(L"<Retention Type=\"Unknown\" />"), std::wstring::npos);
  EXPECT_NE(ToXml(p).find(L"<FindFeatAlg>Unknown</FindFeatAlg>"), std::wstring::npos);
  EXPECT_EQ(FromBytes<PeakDetectParams>(ToBytes(p)), p);
}

TEST(PeakDetectParams, ReadsTheXmlThatItWrites) {
  EXPECT_EQ(FromXml<PeakDetectParams>(ToXml(SamplePeakDetectParams())), SamplePeakDetectParams());
}

TEST(PeakDetectParams, ReadsEveryElement) {
  PeakDetectParams expected = SamplePeakDetectParams();
  expected.FullSearch = true;
  expected.SNInUse = true;
  expected.SN = 21;
  expected.ThresholdInUse = false;
  expected.RelAmplInUse = false;
  expected.RelAmpl = 22.5;
  expected.AbsAreaInUse = true;
  expected.AbsArea = 23.5;
  expected.RelAreaInUse = false;
  expected.RelArea = 24.5;
  expected.FWHMGTInUse = true;
  expected.FWHMGT = 25.5;
  expected.FWHMLTInUse = false;
  expected.FWHMLT = 26.5;
  expected.PeakCntInUse = true;
  expected.PeakCnt = 27;
  expected.MaxValley = 28.5;
  expected.RetentionType = PeakDetectParams::PeakTop;
  expected.FindFeatureAlgorithm = PeakDetectParams::Sequential;
  expected.Display = true;
  EXPECT_EQ(Read(L"<Search Type='Full' Start='1' End='2'/>" + kLimits + kRest), expected);
}

TEST(PeakDetectParams, StaysAsItIsWithoutItsElement) {
  EXPECT_EQ(FromXml<PeakDetectParams>(L"<Other/>", SamplePeakDetectParams()), SamplePeakDetectParams());
}

TEST(PeakDetectParams, WithoutSearchReadsNothing) {
  EXPECT_EQ(Read(kLimits + kRest), SamplePeakDetectParams());
}

TEST(PeakDetectParams, WithSearchAloneReadsIt) {
  PeakDetectParams expected = SamplePeakDetectParams();
  expected.SearchStart = 1.5;
  expected.SearchEnd = 2.5;
  EXPECT_EQ(Read(L"<Search Type='Partial' Start='1.5' End='2.5'/>"), expected);
}

TEST(PeakDetectParams, WithoutRetentionReadsNothingBehindIt) {
  const auto p = Read(L"<Search Type='Full'/>" + kLimits +
                      L"<FindFeatAlg>Sequential</FindFeatAlg><Display>true</Display>");
  EXPECT_EQ(p.MaxValley, 28.5);
  EXPECT_EQ(p.RetentionType, PeakDetectParams::CentroidTopPercent);
  EXPECT_EQ(p.Retention, 17.5);
  EXPECT_EQ(p.FindFeatureAlgorithm, PeakDetectParams::Sorted);
  EXPECT_FALSE(p.Display);
}

TEST(PeakDetectParams, WithRetentionAndWithoutFindFeatAlgIsSequential) {
  const auto p = WithRetention(L"Type='Peak Top'>");
  EXPECT_EQ(p.FindFeatureAlgorithm, PeakDetectParams::Sequential);
  EXPECT_FALSE(p.Display);
}

TEST(PeakDetectParams, SearchIsFullForFullAlone) {
  for (const wchar_t* type : {L"Full", L"fULL"})
    EXPECT_TRUE(Read(std::wstring(L"<Search Type='") + type + L"'/>").FullSearch);
  for (const wchar_t* type : {L"Partial", L"", L"Whole", L"Full "}) {
    PeakDetectParams full;
    EXPECT_FALSE(FromXml<PeakDetectParams>(
                     std::wstring(L"<PeakDetect><Search Type='") + type + L"'/></PeakDetect>", full)
                     .FullSearch);
  }
}

TEST(PeakDetectParams, AFullSearchDoesNotReadLimits) {
  const auto p = Read(L"<Search Type='Full' Start='1' End='2'/>");
  EXPECT_EQ(p.SearchStart, 6.5);
  EXPECT_EQ(p.SearchEnd, 2000.5);
}

TEST(PeakDetectParams, RetentionIsPeakTopForAnyOtherType) {
  for (const wchar_t* type : {L"Centroid Top Percent", L"CENTROID top PERCENT"})
    EXPECT_EQ(WithRetention(std::wstring(L"Type='") + type + L"'>").RetentionType,
              PeakDetectParams::CentroidTopPercent);
  for (const wchar_t* type : {L"Peak Top", L"", L"Centroid", L"1"})
    EXPECT_EQ(WithRetention(std::wstring(L"Type='") + type + L"'>").RetentionType, PeakDetectParams::PeakTop);
}

TEST(PeakDetectParams, RetentionHasItsPercentageWithCentroidTopPercentOnly) {
  EXPECT_EQ(WithRetention(L"Type='Centroid Top Percent'>33.5").Retention, 33.5);
  EXPECT_EQ(WithRetention(L"Type='Peak Top'>33.5").Retention, 17.5);
}

TEST(PeakDetectParams, FindFeatAlgIsSequentialForAnyOtherText) {
  const std::wstring before = L"<Search Type='Full'/><Retention Type='Peak Top'/><FindFeatAlg>";
  for (const wchar_t* text : {L"Sorted", L"sORTED"})
    EXPECT_EQ(Read(before + text + L"</FindFeatAlg>").FindFeatureAlgorithm, PeakDetectParams::Sorted);
  for (const wchar_t* text : {L"Sequential", L"", L"1", L"Unknown"})
    EXPECT_EQ(Read(before + text + L"</FindFeatAlg>").FindFeatureAlgorithm, PeakDetectParams::Sequential);
}

TEST(PeakDetectParams, ALimitKeepsWhatItsElementLacks) {
  const auto p =
      Read(L"<Search Type='Full'/><SN>21</SN><RelAmpl InUse='false'/><PeakCnt InUse='x'>y</PeakCnt>");
  PeakDetectParams expected = SamplePeakDetectParams();
  expected.FullSearch = true;
  expected.SN = 21;
  expected.RelAmplInUse = false;
  EXPECT_EQ(p, expected);
}

TEST(PeakDetectParams, Dumps) {
  EXPECT_EQ(DumpOf(SamplePeakDetectParams()),
            L"  Search:\tPartial\r\n"
            L"  Start:\t6.5\r\n"
            L"  End:\t2000.5\r\n"
            L"  SN:\tfalse, 11\r\n"
            L"  Threshold:\ttrue\r\n"
            L"  RelAmpl:\ttrue, 12.5\r\n"
            L"  AbsArea:\tfalse, 13.5\r\n"
            L"  RelArea:\ttrue, 14.5\r\n"
            L"  FWHMGT:\tfalse, 0.25\r\n"
            L"  FWHMLT:\ttrue, 0.75\r\n"
            L"  PeakCnt:\tfalse, 15\r\n"
            L"  MaxValley:\t16.5\r\n"
            L"  Retention:\tCentroid Top Percent, 17.5\r\n"
            L"  FindFeatAlg:\tSorted\r\n"
            L"  Display:\tfalse\r\n");
}
