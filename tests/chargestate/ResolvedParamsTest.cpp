#include <tslbl/chargestate/ResolvedParams.h>

#include <RecordCheck.h>
#include <chargestate/LimitsOf.h>
#include <chargestate/SampleParams.h>

using namespace tests;

namespace {

using Integers = std::pair<std::uint32_t, std::uint32_t>;
using Doubles = std::pair<double, double>;

ResolvedParams Reading(const std::wstring& children) {
  return FromXml<ResolvedParams>(L"<Resolved>" + children + L"</Resolved>", SampleResolved());
}

}  // namespace

TEST(AllRecords, ResolvedParams) {
  CheckRecord<ResolvedParams>({
      {"MMFunction", [](auto& r) { r.MMFunction = ResolvedParams::WeightedAvg; }},
      {"ScoreFunction", [](auto& r) { r.ScoreFunction = ResolvedParams::CrossCorr; }},
      {"MinScore", [](auto& r) { r.MinScore = 0.5; }},
      {"AvgMolecule", [](auto& r) { r.AvgMolecule = AvgMoleculeInfo::Custom; }},
      {"Name", [](auto& r) { r.CustomAvgMole.Name = L"n"; }},
      {"Formula", [](auto& r) { r.CustomAvgMole.Formula = L"f"; }},
      {"AtomProbThresh", [](auto& r) { r.AtomProbThresh = 0.25; }},
      {"MoleProbThresh", [](auto& r) { r.MoleProbThresh = 0.25; }},
      {"MaxIsoGaps", [](auto& r) { r.MaxIsoGaps = 1; }},
      {"MaxCS", [](auto& r) { r.MaxCS = 1; }},
      {"CsAccuracy", [](auto& r) { r.CsAccuracy = 1; }},
      {"MinResolution", [](auto& r) { r.MinResolution = 1; }},
      {"MaxResolution", [](auto& r) { r.MaxResolution = 1; }},
      {"MinSN", [](auto& r) { r.MinSN = 1; }},
      {"MzAccuracy", [](auto& r) { r.MzAccuracy = 1; }},
  });
}
TEST(Golden, ResolvedParams) { CheckGolden(SampleResolved(), "ResolvedParams.v1"); }
TEST(CutShort, ResolvedParams) { CheckCutShort(SampleResolved()); }

TEST(ResolvedParams, HasItsDefaults) {
  const ResolvedParams p;
  EXPECT_EQ(p.MMFunction, 0u);
  EXPECT_EQ(p.ScoreFunction, 0u);
  EXPECT_EQ(p.MinScore, 0.6);
  EXPECT_EQ(p.AvgMolecule, 0u);
  EXPECT_EQ(p.CustomAvgMole, AvgMoleculeInfo());
  EXPECT_EQ(p.AtomProbThresh, 0.000001);
  EXPECT_EQ(p.MoleProbThresh, 0.000001);
  EXPECT_EQ(p.MaxIsoGaps, 0u);
  EXPECT_EQ(p.MaxCS, 3u);
  EXPECT_EQ(p.CsAccuracy, 1000u);
  EXPECT_EQ(p.MinResolution, 1000u);
  EXPECT_EQ(p.MaxResolution, 5000u);
  EXPECT_EQ(p.MinSN, 3u);
  EXPECT_EQ(p.MzAccuracy, 1000u);
}

TEST(ResolvedParams, HasLimitsForForms) {
  EXPECT_EQ(LimitsOf(ResolvedParams::GetMinScoreLimits), Doubles(0.0, 1.0));
  EXPECT_EQ(LimitsOf(ResolvedParams::GetAtomProbThreshLimits), Doubles(0.0, 1.0));
  EXPECT_EQ(LimitsOf(ResolvedParams::GetMoleProbThreshLimits), Doubles(0.0, 1.0));
  EXPECT_EQ(LimitsOf(ResolvedParams::GetMaxIsotopeGapsLimits), Integers(0, 3));
  EXPECT_EQ(LimitsOf(ResolvedParams::GetMaxChargeStateLimits), Integers(1, 100));
  EXPECT_EQ(LimitsOf(ResolvedParams::GetChargeStateAccuracyLimits), Integers(1, 10000));
  EXPECT_EQ(LimitsOf(ResolvedParams::GetMZAccurayLimits), Integers(1, 10000));
  EXPECT_EQ(LimitsOf(ResolvedParams::GetResolutionLimits), Integers(1000, 65000));
  EXPECT_EQ(LimitsOf(ResolvedParams::GetMinimumSNLimits), Integers(1, 100));
}

TEST(ResolvedParams, HoldsValuesBeyondTheLimits) {
  ResolvedParams p;
  p.MinScore = 7.0;
  p.MaxCS = 0;
  EXPECT_EQ(FromBytes<ResolvedParams>(ToBytes(p)), p);
  EXPECT_EQ(FromXml<ResolvedParams>(ToXml(p)), p);
}

TEST(ResolvedParams, GivesTheAverageMoleculeInUse) {
  ResolvedParams p = SampleResolved();
  EXPECT_EQ(p.GetAvgMoleculeInfo().Name, L"RNA-gine");
  p.AvgMolecule = AvgMoleculeInfo::Custom;
  EXPECT_EQ(p.GetAvgMoleculeInfo(), SampleAvgMolecule());
  p.CustomAvgMole = {};
  EXPECT_EQ(p.GetAvgMoleculeInfo(), AvgMoleculeInfo());
  p.AvgMolecule = static_cast<AvgMoleculeInfo::AvgMolecule>(9);
  EXPECT_EQ(p.GetAvgMoleculeInfo().Name, L"Averagine");
}

TEST(ResolvedParams, RefusesUnknownVersions) {
  for (const std::uint32_t version : {0u, 2u})
    EXPECT_EQ(ReadFailure<ResolvedParams>(Bytes(version), SampleResolved()), "Unknown Resolved version.");
}

TEST(ResolvedParams, WritesXml) {
  EXPECT_EQ(ToXml(SampleResolved()),
            L"<Resolved>\n"
            L"  <MMFunction>WeightedAvg</MMFunction>\n"
            L"  <ScoreFunction>CrossCorr</ScoreFunction>\n"
            L"  <MinScore>0.75</MinScore>\n"
            L"  <AvgMolecule>RNAgine</AvgMolecule>\n"
            L"  <CustomAvgMole>\n"
            L"    <Name>Sugar</Name>\n"
            L"    <Formula>C6 H10 O5</Formula>\n"
            L"  </CustomAvgMole>\n"
            L"  <AtomProbThresh>0.0025</AtomProbThresh>\n"
            L"  <MoleProbThresh>0.005</MoleProbThresh>\n"
            L"  <MaxIsoGaps>2</MaxIsoGaps>\n"
            L"  <MaxCS>20</MaxCS>\n"
            L"  <CsAccuracy>1001</CsAccuracy>\n"
            L"  <MinResolution>2002</MinResolution>\n"
            L"  <MaxResolution>6003</MaxResolution>\n"
            L"  <MinSN>4</MinSN>\n"
            L"  <MzAccuracy>1005</MzAccuracy>\n"
            L"</Resolved>\n");
}

TEST(ResolvedParams, KeepsWhatTheDocumentLacks) {
  EXPECT_EQ(Reading(L""), SampleResolved());
  EXPECT_EQ(FromXml<ResolvedParams>(L"<Other/>", SampleResolved()), SampleResolved());
}

TEST(ResolvedParams, ReadsFunctionsWhateverTheCase) {
  EXPECT_EQ(Reading(L"<MMFunction>weightedAVG</MMFunction>").MMFunction, ResolvedParams::WeightedAvg);
  EXPECT_EQ(Reading(L"<ScoreFunction>crosscorr</ScoreFunction>").ScoreFunction, ResolvedParams::CrossCorr);
  for (const wchar_t* text : {L"Average", L"Unknown", L"", L"1"}) {
    EXPECT_EQ(Reading(std::wstring(L"<MMFunction>") + text + L"</MMFunction>").MMFunction,
              ResolvedParams::Average);
    EXPECT_EQ(Reading(std::wstring(L"<ScoreFunction>") + text + L"</ScoreFunction>").ScoreFunction,
              ResolvedParams::SumDev);
  }
}

TEST(ResolvedParams, ReadsTheAverageMoleculeWhateverTheCase) {
  const std::pair<const wchar_t*, AvgMoleculeInfo::AvgMolecule> rows[] = {
      {L"Averagine", AvgMoleculeInfo::Averagine}, {L"dnagine", AvgMoleculeInfo::DNAgine},
      {L"RNAGINE", AvgMoleculeInfo::RNAgine},     {L"custom", AvgMoleculeInfo::Custom},
      {L"RNA-gine", AvgMoleculeInfo::Averagine},  {L"Unknown", AvgMoleculeInfo::Averagine},
      {L"", AvgMoleculeInfo::Averagine}};
  for (const auto& [text, molecule] : rows)
    EXPECT_EQ(Reading(std::wstring(L"<AvgMolecule>") + text + L"</AvgMolecule>").AvgMolecule, molecule);
}

TEST(ResolvedParams, WritesOtherNumbersAsUnknown) {
  ResolvedParams p;
  p.MMFunction = static_cast<ResolvedParams::MMFunctions>(2);
  p.ScoreFunction = static_cast<ResolvedParams::ScoreFunctions>(2);
  p.AvgMolecule = static_cast<AvgMoleculeInfo::AvgMolecule>(4);
  for (const wchar_t* name : {L"MMFunction", L"ScoreFunction", L"AvgMolecule"}) {
    EXPECT_NE(ToXml(p).find(std::wstring(L"<") + name + L">Unknown<"), std::wstring::npos);
    EXPECT_NE(DumpOf(p).find(std::wstring(L"  ") + name + L":\tUnknown\r\n"), std::wstring::npos);
  }
  EXPECT_EQ(FromBytes<ResolvedParams>(ToBytes(p)), p);
}

TEST(ResolvedParams, DumpsItsFields) {
  EXPECT_EQ(DumpOf(SampleResolved()),
            L"  MMFunction:\tWeightedAvg\r\n"
            L"  ScoreFunction:\tCrossCorr\r\n"
            L"  MinScore:\t0.75\r\n"
            L"  AvgMolecule:\tRNAgine\r\n"
            L"  Name:\tSugar\r\n"
            L"  Formula:\tC6 H10 O5\r\n"
            L"  AtomProbThresh:\t0.0025\r\n"
            L"  MoleProbThresh:\t0.005\r\n"
            L"  MaxIsoGaps:\t2\r\n"
            L"  MaxCS:\t20\r\n"
            L"  CsAccuracy:\t1001\r\n"
            L"  MinResolution:\t2002\r\n"
            L"  MaxResolution:\t6003\r\n"
            L"  MinSN:\t4\r\n"
            L"  MzAccuracy:\t1005\r\n");
}
