#include <tslbl/chargestate/ChargeStateParams.h>

#include <RecordCheck.h>
#include <chargestate/LimitsOf.h>
#include <chargestate/SampleParams.h>
#include <tslbl/tune/FieldLimits.h>
#include <tslbl/tune/TuneField.h>

using namespace tests;

namespace {

ChargeStateParams Reading(const std::wstring& children) {
  return FromXml<ChargeStateParams>(L"<ChargeState>" + children + L"</ChargeState>",
                                    SampleChargeStateParams());
}
ChargeStateParams ReadingText(const wchar_t* name, const wchar_t* text) {
  return Reading(std::wstring(L"<") + name + L">" + text + L"</" + name + L">");
}

}  // namespace

// A full range does not come back from a document, so that the rows change one that is none.
TEST(AllRecords, ChargeStateParams) {
  CheckRecord<ChargeStateParams>({
      {"FullRange", [](auto& r) { r.FullRange = false; }},
      {"FullRange.StartMz", [](auto& r) { r.StartMz = 7.5; }},
      {"FullRange.EndMz", [](auto& r) { r.EndMz = 7.5; }},
      {"FullRange.Method", [](auto& r) { r.Method = ChargeStateParams::ResolvedOnly; }},
      {"FullRange.UseOPD", [](auto& r) { r.UseOPD = true; }},
      {"FullRange.MZAssign", [](auto& r) { r.MZAssign = ChargeStateParams::Centroid; }},
      {"FullRange.PkIntensity", [](auto& r) { r.PkIntensity = ChargeStateParams::Area; }},
      {"FullRange.AdductIon", [](auto& r) { r.AdductIon = AdductIonInfo::Potassium; }},
      {"FullRange.Symbol", [](auto& r) { r.CustomAdductIon.Symbol = L"s"; }},
      {"FullRange.MonoMass", [](auto& r) { r.CustomAdductIon.MonoMass = 7.5; }},
      {"FullRange.AvgMass", [](auto& r) { r.CustomAdductIon.AvgMass = 7.5; }},
      {"FullRange.MaxCSGaps", [](auto& r) { r.MaxCSGaps = 7; }},
      {"FullRange.MaxSpecies", [](auto& r) { r.MaxSpecies = 7; }},
      {"FullRange.MMFunction", [](auto& r) { r.Resolved.MMFunction = ResolvedParams::WeightedAvg; }},
      {"FullRange.ScoreFunction", [](auto& r) { r.Resolved.ScoreFunction = ResolvedParams::CrossCorr; }},
      {"FullRange.MinScore", [](auto& r) { r.Resolved.MinScore = 0.5; }},
      {"FullRange.AvgMolecule", [](auto& r) { r.Resolved.AvgMolecule = AvgMoleculeInfo::DNAgine; }},
      {"FullRange.Name", [](auto& r) { r.Resolved.CustomAvgMole.Name = L"n"; }},
      {"FullRange.Formula", [](auto& r) { r.Resolved.CustomAvgMole.Formula = L"f"; }},
      {"FullRange.AtomProbThresh", [](auto& r) { r.Resolved.AtomProbThresh = 0.5; }},
      {"FullRange.MoleProbThresh", [](auto& r) { r.Resolved.MoleProbThresh = 0.5; }},
      {"FullRange.MaxIsoGaps", [](auto& r) { r.Resolved.MaxIsoGaps = 7; }},
      {"FullRange.MaxCS", [](auto& r) { r.Resolved.MaxCS = 7; }},
      {"FullRange.CsAccuracy", [](auto& r) { r.Resolved.CsAccuracy = 7; }},
      {"FullRange.MinResolution", [](auto& r) { r.Resolved.MinResolution = 7; }},
      {"FullRange.MaxResolution", [](auto& r) { r.Resolved.MaxResolution = 7; }},
      {"FullRange.MinSN", [](auto& r) { r.Resolved.MinSN = 7; }},
      {"FullRange.ResolvedMzAccuracy", [](auto& r) { r.Resolved.MzAccuracy = 7; }},
      {"FullRange.MinCS", [](auto& r) { r.Unresolved.MinCS = 7; }},
      {"FullRange.UnresolvedMzAccuracy", [](auto& r) { r.Unresolved.MzAccuracy = 7; }},
      {"FullRange.MinDeconMass", [](auto& r) { r.Unresolved.MinDeconMass = 7; }},
      {"FullRange.MaxDeconMass", [](auto& r) { r.Unresolved.MaxDeconMass = 7; }},
  });
}
TEST(Golden, ChargeStateParams) { CheckGolden(SampleChargeStateParams(), "ChargeStateParams.v1"); }
TEST(CutShort, ChargeStateParams) { CheckCutShort(SampleChargeStateParams()); }

TEST(ChargeStateParams, HasItsDefaults) {
  const ChargeStateParams p;
  EXPECT_TRUE(p.FullRange);
  EXPECT_EQ(p.StartMz, 5.0);
  EXPECT_EQ(p.EndMz, 3000.0);
  EXPECT_EQ(p.Method, 0u);
  EXPECT_FALSE(p.UseOPD);
  EXPECT_EQ(p.MZAssign, 0u);
  EXPECT_EQ(p.PkIntensity, 0u);
  EXPECT_EQ(p.AdductIon, 0u);
  EXPECT_EQ(p.CustomAdductIon, AdductIonInfo());
  EXPECT_EQ(p.MaxCSGaps, 1u);
  EXPECT_EQ(p.MaxSpecies, 10u);
  EXPECT_EQ(p.Resolved, ResolvedParams());
  EXPECT_EQ(p.Unresolved, UnresolvedParams());
}

TEST(ChargeStateParams, HasLimitsForForms) {
  using Integers = std::pair<std::uint32_t, std::uint32_t>;
  EXPECT_EQ(LimitsOf(ChargeStateParams::GetMaxChargeStateGapsLimits), Integers(0, 10));
  EXPECT_EQ(LimitsOf(ChargeStateParams::GetNumberSpeciesLimits), Integers(1, 100));
}

TEST(ChargeStateParams, LimitsOfMZAreThoseOfTunesForESI) {
  const auto [min, max] = LimitsOf(ChargeStateParams::GetMZLimits);
  EXPECT_EQ(min, FieldLimits().QLimits(Probes::ESI, TuneField::MZLow).Min);
  EXPECT_EQ(max, FieldLimits().QLimits(Probes::ESI, TuneField::MZHi).Max);
}

TEST(ChargeStateParams, GivesTheAdductIonInUse) {
  ChargeStateParams p;
  EXPECT_EQ(p.GetAdductIonInfo().Symbol, L"H+");
  p.AdductIon = AdductIonInfo::Sodium;
  EXPECT_EQ(p.GetAdductIonInfo().Symbol, L"Na+");
  p.AdductIon = static_cast<AdductIonInfo::AdductIon>(5);
  EXPECT_EQ(p.GetAdductIonInfo().Symbol, L"H+");
}

TEST(ChargeStateParams, GivesTheCustomAdductIonAsItIs) {
  ChargeStateParams p;
  p.AdductIon = AdductIonInfo::Custom;
  EXPECT_EQ(p.GetAdductIonInfo(), AdductIonInfo());
  p.CustomAdductIon = SampleAdductIon();
  EXPECT_EQ(p.GetAdductIonInfo(), SampleAdductIon());
}

TEST(ChargeStateParams, RefusesUnknownVersions) {
  for (const std::uint32_t version : {0u, 2u})
    EXPECT_EQ(ReadFailure<ChargeStateParams>(Bytes(version), SampleChargeStateParams()),
              "Unknown ChargeStateParams version.");
}

TEST(ChargeStateParams, WritesXml) {
  const std::wstring xml = ToXml(SampleChargeStateParams());
  const std::wstring begin =
      L"<ChargeState>\n"
      L"  <Range>false</Range>\n"
      L"  <StartMz>400.5</StartMz>\n"
      L"  <EndMz>1600.25</EndMz>\n"
      L"  <Method>Unresolved</Method>\n"
      L"  <UseOPD>Yes</UseOPD>\n"
      L"  <MZAssign>Centroid</MZAssign>\n"
      L"  <PkIntensity>Area</PkIntensity>\n"
      L"  <AdductIon>Custom</AdductIon>\n"
      L"  <CustomAdductIon>\n"
      L"    <Symbol>Li+</Symbol>\n"
      L"    <MonoMass>7.01546</MonoMass>\n"
      L"    <AvgMass>6.9385</AvgMass>\n"
      L"  </CustomAdductIon>\n"
      L"  <MaxCSGaps>3</MaxCSGaps>\n"
      L"  <MaxSpecies>11</MaxSpecies>\n"
      L"  <Resolved>\n";
  EXPECT_EQ(xml.substr(0, begin.size()), begin);
  const std::wstring end =
      L"  </Resolved>\n"
      L"  <Unresolved>\n"
      L"    <MinCS>6</MinCS>\n"
      L"    <MzAccuracy>1007</MzAccuracy>\n"
      L"    <MinDeconMass>1008</MinDeconMass>\n"
      L"    <MaxDeconMass>50009</MaxDeconMass>\n"
      L"  </Unresolved>\n"
      L"</ChargeState>\n";
  EXPECT_EQ(xml.substr(xml.size() - end.size()), end);
}

TEST(ChargeStateParams, WritesCustomRecordsThatAreNotInUse) {
  const std::wstring xml = ToXml(ChargeStateParams());
  EXPECT_NE(xml.find(L"<CustomAdductIon>"), std::wstring::npos);
  EXPECT_NE(xml.find(L"<CustomAvgMole>"), std::wstring::npos);
}

TEST(ChargeStateParams, KeepsWhatTheDocumentLacks) {
  EXPECT_EQ(Reading(L""), SampleChargeStateParams());
  EXPECT_EQ(FromXml<ChargeStateParams>(L"<Other/>", SampleChargeStateParams()), SampleChargeStateParams());
}

TEST(ChargeStateParams, AFullRangeComesBackFromADocumentAsAPartialOne) {
  ChargeStateParams p;
  EXPECT_NE(ToXml(p).find(L"<Range>true</Range>"), std::wstring::npos);
  const auto read = FromXml<ChargeStateParams>(ToXml(p));
  EXPECT_FALSE(read.FullRange);
  p.FullRange = false;
  EXPECT_EQ(read, p);
}

TEST(ChargeStateParams, ARangeIsFullIfTheDocumentSaysFull) {
  for (const wchar_t* text : {L"Full", L"FULL", L"full"}) EXPECT_TRUE(ReadingText(L"Range", text).FullRange);
  for (const wchar_t* text : {L"true", L"1", L"Partial", L"", L"Full "})
    EXPECT_FALSE(ReadingText(L"Range", text).FullRange);
}

TEST(ChargeStateParams, ReadsTheMethodWhateverTheCase) {
  EXPECT_EQ(ReadingText(L"Method", L"resolved").Method, ChargeStateParams::ResolvedOnly);
  EXPECT_EQ(ReadingText(L"Method", L"UNRESOLVED").Method, ChargeStateParams::UnresolvedOnly);
  for (const wchar_t* text : {L"ResAndUnres", L"Unknown", L"", L"1"})
    EXPECT_EQ(ReadingText(L"Method", text).Method, ChargeStateParams::ResAndUnres);
}

TEST(ChargeStateParams, ReadsWhichPeaksAndHowWhateverTheCase) {
  EXPECT_TRUE(ReadingText(L"UseOPD", L"yes").UseOPD);
  EXPECT_EQ(ReadingText(L"MZAssign", L"centroid").MZAssign, ChargeStateParams::Centroid);
  EXPECT_EQ(ReadingText(L"PkIntensity", L"AREA").PkIntensity, ChargeStateParams::Area);
  for (const wchar_t* text : {L"true", L"1", L"", L"Unknown"}) {
    EXPECT_FALSE(ReadingText(L"UseOPD", text).UseOPD);
    EXPECT_EQ(ReadingText(L"MZAssign", text).MZAssign, ChargeStateParams::MaxAmplitude);
    EXPECT_EQ(ReadingText(L"PkIntensity", text).PkIntensity, ChargeStateParams::Amplitude);
  }
}

TEST(ChargeStateParams, ReadsTheAdductIonWhateverTheCase) {
  const std::pair<const wchar_t*, AdductIonInfo::AdductIon> rows[] = {
      {L"H+", AdductIonInfo::Proton},  {L"nh4+", AdductIonInfo::Ammonium}, {L"na+", AdductIonInfo::Sodium},
      {L"NA+", AdductIonInfo::Sodium}, {L"k+", AdductIonInfo::Potassium},  {L"CUSTOM", AdductIonInfo::Custom},
      {L"Li+", AdductIonInfo::Proton}, {L"", AdductIonInfo::Proton}};
  for (const auto& [text, ion] : rows) EXPECT_EQ(ReadingText(L"AdductIon", text).AdductIon, ion);
}

TEST(ChargeStateParams, WritesOtherNumbersAsUnknown) {
  ChargeStateParams p;
  p.Method = static_cast<ChargeStateParams::Methods>(3);
  p.MZAssign = static_cast<ChargeStateParams::MZAssigns>(2);
  p.PkIntensity = static_cast<ChargeStateParams::PkIntensities>(2);
  p.AdductIon = static_cast<AdductIonInfo::AdductIon>(5);
  for (const wchar_t* name : {L"Method", L"MZAssign", L"PkIntensity", L"AdductIon"}) {
    EXPECT_NE(ToXml(p).find(std::wstring(L"<") + name + L">Unknown<"), std::wstring::npos);
    EXPECT_NE(DumpOf(p).find(std::wstring(L"  ") + name + L":\tUnknown\r\n"), std::wstring::npos);
  }
  EXPECT_EQ(FromBytes<ChargeStateParams>(ToBytes(p)), p);
}

TEST(ChargeStateParams, DumpsItsFieldsWithNestedRecordsInTheirPlaces) {
  const ChargeStateParams p = SampleChargeStateParams();
  EXPECT_EQ(DumpOf(p),
            L"  Range:\tPartial\r\n"
            L"  StartMz:\t400.5\r\n"
            L"  EndMz:\t1600.25\r\n"
            L"  Method:\tUnresolved\r\n"
            L"  UseOPD:\tYes\r\n"
            L"  MZAssign:\tCentroid\r\n"
            L"  PkIntensity:\tArea\r\n"
            L"  AdductIon:\tCustom\r\n" +
                DumpOf(p.CustomAdductIon) +
                L"  MaxCSGaps:\t3\r\n"
                L"  MaxSpecies:\t11\r\n" +
                DumpOf(p.Resolved) + DumpOf(p.Unresolved));
}

TEST(ChargeStateParams, DumpsAFullRangeAndTheOtherTexts) {
  const std::wstring dump = DumpOf(ChargeStateParams());
  for (const wchar_t* line :
       {L"  Range:\tFull\r\n", L"  Method:\tResAndUnres\r\n", L"  UseOPD:\tNo\r\n",
        L"  MZAssign:\tMaxAmplitude\r\n", L"  PkIntensity:\tAmplitude\r\n", L"  AdductIon:\tH+\r\n"})
    EXPECT_NE(dump.find(line), std::wstring::npos) << TslCommon::ToUtf8(line);
}
