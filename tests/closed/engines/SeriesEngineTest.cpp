// Tests: SeriesEngine.cpp, EngineDocument.cpp, FailureText.h.
#include <tslbl/closed/engines/SeriesEngine.h>

#include <gtest/gtest.h>
#include <tslbl/closed/common/Text.h>
#include <tslbl/closed/engines/EngineDocument.h>

#include <string>
#include <vector>

using namespace TslMath;

namespace {

constexpr double kCarrier = 1.007398;
constexpr double kProtonMass = 1.007276;

const std::wstring kUnresolvedPrefs =
    L"<CSDecon><UnresPrefs minMass=\"3000\" maxMass=\"20000\" chargeCarrierMass=\"1.007398\" "
    L"minSeriesSize=\"5\" "
    L"maxSeries=\"10\" isotopicGaps=\"1\" massAccuracy=\"1000\" /></CSDecon>";

std::wstring ResolvedDocument(const std::wstring& formula = L"C117 H184 N32 O35 S1") {
  return L"<CSDecon><ResPrefs snCutoff=\"3\" resLow=\"1000\" resHigh=\"50000\" minPatternScore=\"0.6\" "
         L"zMax=\"3\" "
         L"maxGaps=\"0\" tolerance=\"1000\" adductMass=\"1.007276\" csfTolerance=\"1000\" "
         L"csfAllowableGaps=\"1\" "
         L"scoreFunct=\"0\" mmCalcFunc=\"0\" atomicProbability=\"1e-06\" molecularProbability=\"1e-06\" "
         L"csfMaxFamily=\"10\"><Formula>" +
         formula + L"</Formula></ResPrefs></CSDecon>";
}

std::wstring Replaced(std::wstring text, const std::wstring& from, const std::wstring& to) {
  return text.replace(text.find(from), from.size(), to);
}

std::unique_ptr<SeriesEngine> Registered(const char* classId) {
  return TslCommon::ComponentRegistry::Instance().CreateAs<SeriesEngine>(classId);
}

std::unique_ptr<SeriesEngine> Unresolved() {
  auto engine = Registered(SeriesEngine::kUnresolvedClassId);
  engine->SetPrefs(kUnresolvedPrefs);
  return engine;
}

std::unique_ptr<SeriesEngine> Resolved() {
  auto engine = Registered(SeriesEngine::kResolvedClassId);
  engine->SetPrefs(ResolvedDocument());
  return engine;
}

// Ids count from 100 in steps of 10.
std::wstring Peaks(const std::vector<double>& mz, const std::vector<double>& intensities) {
  std::wstring text = L"<MZPeaks>";
  for (std::size_t k = 0; k < mz.size(); ++k)
    text += L"<Peak id=\"" + std::to_wstring(100 + 10 * k) + L"\" mz=\"" + TslCommon::ToFullText(mz[k]) +
            L"\" ampl=\"" + TslCommon::ToFullText(intensities[k]) +
            L"\" area=\"1\" sn=\"50\" res=\"20000\" />";
  return text + L"</MZPeaks>";
}

std::wstring Seeds(double mass, const std::vector<int>& ids) {
  std::wstring text = L"<SeriesPeaks avgMass=\"" + TslCommon::ToFullText(mass) + L"\">";
  for (const int id : ids) text += L"<Peak id=\"" + std::to_wstring(id) + L"\" />";
  return text + L"</SeriesPeaks>";
}

std::wstring Document(const std::wstring& content) { return L"<CSDecon>" + content + L"</CSDecon>"; }

std::wstring LadderPeaks() {
  std::vector<double> mz;
  for (int charge = 12; charge <= 20; ++charge) mz.push_back(16951.5 / charge + kCarrier);
  return Peaks(mz, std::vector<double>(mz.size(), 1000));
}

const IsotopePattern& Pattern() {
  static const IsotopePattern pattern =
      MakeIsotopePattern(ScaleToMass(ParseFormula("C117 H184 N32 O35 S1"), 1500));
  return pattern;
}

std::wstring PatternPeaks(std::size_t first = 0) {
  std::vector<double> mz, intensities;
  for (std::size_t k = first; k < 6; ++k) {
    mz.push_back((Pattern().monoMass + Pattern().mass[k]) / 2 + kProtonMass);
    intensities.push_back(1e4 * Pattern().probability[k]);
  }
  return Peaks(mz, intensities);
}

std::size_t Count(const std::wstring& text, const std::wstring& part) {
  std::size_t count = 0;
  for (std::size_t at = text.find(part); at != std::wstring::npos; at = text.find(part, at + 1)) ++count;
  return count;
}

bool Has(const std::wstring& text, const std::wstring& part) { return Count(text, part) > 0; }

double Attribute(const std::wstring& text, const std::wstring& name) {
  const std::size_t at = text.find(L" " + name + L"=\"");
  double value = 0;
  EXPECT_TRUE(at != std::wstring::npos && TslCommon::FromText(text.substr(at + name.size() + 3), value))
      << at;
  return value;
}

TEST(OwnUnresolvedEngine, AnswersWithTheSeriesOfItsPeaks) {
  const std::wstring reply = Unresolved()->AutoSeries(Document(LadderPeaks()));
  EXPECT_EQ(Count(reply, L"<Series "), 1U);
  EXPECT_EQ(Count(reply, L"<ChargeState "), 9U);
  EXPECT_NEAR(Attribute(reply, L"avgMass"), 16951.5, 1e-3);
  EXPECT_NEAR(Attribute(reply, L"stdDev"), 0, 1e-3);
  EXPECT_TRUE(Has(reply, L"<ChargeState charge=\"12\"")) << TslCommon::ToUtf8(reply);
  EXPECT_TRUE(Has(reply, L"monoPk=\"100\""));
  EXPECT_TRUE(Has(reply, L"<Peak id=\"180\""));
}

TEST(OwnUnresolvedEngine, FindsAndRecalculatesASeries) {
  const auto engine = Unresolved();
  const std::wstring found = engine->FindSeries(Document(LadderPeaks() + Seeds(0, {110, 130})));
  EXPECT_EQ(Count(found, L"<ChargeState "), 9U);
  const std::wstring anew = engine->RecalcSeries(Document(LadderPeaks() + Seeds(16951, {100, 150})));
  EXPECT_EQ(Count(anew, L"<ChargeState "), 2U);
  EXPECT_TRUE(Has(anew, L"<Peak id=\"150\""));
}

TEST(OwnUnresolvedEngine, AnswersWithoutASeriesWhereThereIsNone) {
  const auto engine = Unresolved();
  EXPECT_EQ(engine->AutoSeries(Document(L"<MZPeaks />")), L"<CSDecon></CSDecon>");
  EXPECT_EQ(engine->FindSeries(Document(L"<MZPeaks />")), L"<CSDecon></CSDecon>");
  EXPECT_EQ(engine->RecalcSeries(Document(LadderPeaks() + Seeds(16951, {7}))), L"<CSDecon></CSDecon>");
}

TEST(OwnResolvedEngine, AnswersWithTheSpeciesOfItsPeaks) {
  const std::wstring reply = Resolved()->AutoSeries(Document(PatternPeaks()));
  EXPECT_EQ(Count(reply, L"<Series "), 1U);
  EXPECT_EQ(Count(reply, L"<ChargeState "), 1U);
  EXPECT_EQ(Count(reply, L"<Peak "), 6U);
  EXPECT_NEAR(Attribute(reply, L"avgMass"), Pattern().monoMass, 0.01);
  EXPECT_NEAR(Attribute(reply, L"monoMass"), Pattern().monoMass, 0.01);
  EXPECT_EQ(Attribute(reply, L"charge"), 2);
  EXPECT_EQ(Attribute(reply, L"monoPk"), 100);
}

TEST(OwnResolvedEngine, NamesTheLightestPeakWhereTheMonoisotopicOneIsMissing) {
  const std::wstring reply = Resolved()->AutoSeries(Document(PatternPeaks(1)));
  ASSERT_EQ(Count(reply, L"<Series "), 1U);
  EXPECT_EQ(Attribute(reply, L"monoPk"), 100);
}

TEST(OwnResolvedEngine, FindsAndRecalculatesASpecies) {
  const auto engine = Resolved();
  const std::wstring found = engine->FindSeries(Document(PatternPeaks() + Seeds(0, {100, 120})));
  EXPECT_EQ(Count(found, L"<Peak "), 6U);
  const std::wstring anew = engine->RecalcSeries(Document(PatternPeaks() + Seeds(Pattern().monoMass, {110})));
  EXPECT_EQ(Attribute(anew, L"monoPk"), 100);
}

// Each attribute of ResPrefs and UnresPrefs.
TEST(EngineDocument, ReadsAllPreferences) {
  const ResolvedPrefs resolved = ReadResolvedPrefs(
      L"<CSDecon><ResPrefs snCutoff=\"4\" resLow=\"5\" resHigh=\"6\" minPatternScore=\"0.7\" zMax=\"8\" "
      L"maxGaps=\"2\" "
      L"tolerance=\"10\" adductMass=\"-11.5\" csfTolerance=\"12\" csfAllowableGaps=\"13\" scoreFunct=\"1\" "
      L"mmCalcFunc=\"1\" atomicProbability=\"0.25\" molecularProbability=\"0.5\" csfMaxFamily=\"16\">"
      L"<Formula>C2 H6 P03</Formula></ResPrefs></CSDecon>");
  EXPECT_EQ(resolved.leastSignalToNoise, 4);
  EXPECT_EQ(resolved.lowestResolution, 5);
  EXPECT_EQ(resolved.highestResolution, 6);
  EXPECT_EQ(resolved.leastScore, 0.7);
  EXPECT_EQ(resolved.maxCharge, 8);
  EXPECT_EQ(resolved.maxIsotopeGaps, 2);
  EXPECT_EQ(resolved.accuracy, 10);
  EXPECT_EQ(resolved.carrierMass, -11.5);
  EXPECT_EQ(resolved.massAccuracy, 12);
  EXPECT_EQ(resolved.maxChargeGaps, 13);
  EXPECT_EQ(resolved.score, PatternScore::CrossCorrelation);
  EXPECT_EQ(resolved.mean, MassMean::Weighted);
  EXPECT_EQ(resolved.thresholds.atom, 0.25);
  EXPECT_EQ(resolved.thresholds.molecule, 0.5);
  EXPECT_EQ(resolved.maxSpecies, 16);
  EXPECT_EQ(resolved.averageMolecule, ParseFormula("C2 H6 P3"));
  const UnresolvedPrefs unresolved = ReadUnresolvedPrefs(
      L"<CSDecon><UnresPrefs minMass=\"1\" maxMass=\"2\" chargeCarrierMass=\"3.5\" minSeriesSize=\"4\" "
      L"maxSeries=\"5\" isotopicGaps=\"6\" massAccuracy=\"7\" /></CSDecon>");
  EXPECT_EQ(unresolved.minMass, 1);
  EXPECT_EQ(unresolved.maxMass, 2);
  EXPECT_EQ(unresolved.carrierMass, 3.5);
  EXPECT_EQ(unresolved.minSeriesSize, 4);
  EXPECT_EQ(unresolved.maxSeries, 5);
  EXPECT_EQ(unresolved.maxGaps, 6);
  EXPECT_EQ(unresolved.accuracy, 7);
}

TEST(EngineDocument, TakesTheAmplitudeForTheIntensity) {
  const PeakDocument read = ReadPeaks(
      L"<CSDecon><MZPeaks><Peak id=\"4294967295\" mz=\"1\" ampl=\"2\" area=\"3\" sn=\"4\" res=\"5\" "
      L"/></MZPeaks>"
      L"<SeriesPeaks avgMass=\"6\"><Peak id=\"9\" /><Peak id=\"4294967295\" /></SeriesPeaks></CSDecon>");
  ASSERT_EQ(read.peaks.size(), 1U);
  EXPECT_EQ(read.ids[0], 4294967295U);
  EXPECT_EQ(read.peaks[0].mz, 1);
  EXPECT_EQ(read.peaks[0].intensity, 2);
  EXPECT_EQ(read.peaks[0].area, 3);
  EXPECT_EQ(read.peaks[0].signalToNoise, 4);
  EXPECT_EQ(read.peaks[0].resolution, 5);
  EXPECT_EQ(read.seeds, std::vector<std::size_t>{0});
  EXPECT_EQ(read.seedMass, 6);
}

// ---- Failures

std::wstring ErrorOf(SeriesEngine& engine, void (*call)(SeriesEngine& engine, const std::wstring& document),
                     const std::wstring& document) {
  try {
    call(engine, document);
    ADD_FAILURE() << "no failure";
  } catch (const TslCommon::ComError& error) {
    EXPECT_EQ(error.code, TslCommon::ComError::kFailed);
  }
  return engine.GetLastError();
}

void SetPrefs(SeriesEngine& engine, const std::wstring& document) { engine.SetPrefs(document); }
void Auto(SeriesEngine& engine, const std::wstring& document) { engine.AutoSeries(document); }

TEST(OwnSeriesEngines, SayWhatIsWrongWithPreferences) {
  const auto resolved = Registered(SeriesEngine::kResolvedClassId);
  EXPECT_TRUE(Has(ErrorOf(*resolved, SetPrefs, ResolvedDocument(L"C2 Xx5")), L"Xx"));
  EXPECT_FALSE(ErrorOf(*resolved, SetPrefs, ResolvedDocument(L"")).empty());
  EXPECT_EQ(ErrorOf(*resolved, SetPrefs, Replaced(ResolvedDocument(), L"zMax=\"3\"", L"zMax=\"3.5\"")),
            L"ResPrefs: zMax is no number: \"3.5\"");
  EXPECT_EQ(ErrorOf(*resolved, SetPrefs, Replaced(ResolvedDocument(), L" zMax=\"3\"", L"")),
            L"ResPrefs has no zMax.");
  EXPECT_EQ(ErrorOf(*resolved, SetPrefs, kUnresolvedPrefs), L"The document has no element ResPrefs.");
  EXPECT_EQ(ErrorOf(*resolved, SetPrefs, L"<Other />"), L"The document has no element CSDecon.");
  EXPECT_TRUE(Has(ErrorOf(*resolved, SetPrefs, L"no document"), L"The document cannot be read: "));
}

TEST(OwnSeriesEngines, SayWhichLimitsCross) {
  const auto engine = Registered(SeriesEngine::kUnresolvedClassId);
  engine->SetPrefs(Replaced(kUnresolvedPrefs, L"3000", L"30000"));
  EXPECT_EQ(ErrorOf(*engine, Auto, Document(LadderPeaks())),
            L"The lowest mass, 30000, is above the highest, 20000.");
}

TEST(OwnSeriesEngines, SayWhatIsWrongWithPeaks) {
  const auto engine = Unresolved();
  EXPECT_EQ(ErrorOf(*engine, Auto, Document(L"")), L"The document has no element MZPeaks.");
  EXPECT_EQ(ErrorOf(*engine, Auto, Document(L"<MZPeaks><Peak id=\"-1\" /></MZPeaks>")),
            L"Peak: id is no number: \"-1\"");
  EXPECT_EQ(ErrorOf(*engine, Auto, Document(L"<MZPeaks><Peak id=\"1\" mz=\"\" /></MZPeaks>")),
            L"Peak: mz is no number: \"\"");
}

TEST(OwnSeriesEngines, HaveNoErrorAfterSuccess) {
  const auto engine = Unresolved();
  ErrorOf(*engine, Auto, L"");
  engine->AutoSeries(Document(LadderPeaks()));
  EXPECT_EQ(engine->GetLastError(), L"");
}

TEST(OwnSeriesEngines, ComeBackInThePlaceOfOthers) {
  auto& registry = TslCommon::ComponentRegistry::Instance();
  for (const char* id : {SeriesEngine::kResolvedClassId, SeriesEngine::kUnresolvedClassId})
    registry.Register(id, nullptr);
  RegisterOwnSeriesEngines();
  for (const char* id : {SeriesEngine::kResolvedClassId, SeriesEngine::kUnresolvedClassId})
    EXPECT_NE(Registered(id), nullptr);
}

}  // namespace
