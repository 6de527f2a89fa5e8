#include <tslbl/chargestate/DeconExchange.h>

#include <gtest/gtest.h>

#include <chargestate/SampleParams.h>

using namespace tests;

TEST(ResPrefs, AreTheParametersOfTheResolvedMethod) {
  ChargeStateParams params = SampleChargeStateParams();
  params.Resolved.AvgMolecule = AvgMoleculeInfo::Custom;
  const ResPrefs prefs = MakeResPrefs(params);
  EXPECT_EQ(prefs.snCutoff, 4.0);
  EXPECT_EQ(prefs.resLow, 2002.0);
  EXPECT_EQ(prefs.resHigh, 6003.0);
  EXPECT_EQ(prefs.minPatternScore, 0.75);
  EXPECT_EQ(prefs.zMax, 20u);
  EXPECT_EQ(prefs.maxGaps, 2u);
  EXPECT_EQ(prefs.tolerance, 1005.0);
  EXPECT_EQ(prefs.adductMass, 7.015455);
  EXPECT_EQ(prefs.csfTolerance, 1001.0);
  EXPECT_EQ(prefs.csfAllowableGaps, 3u);
  EXPECT_EQ(prefs.scoreFunct, 1u);
  EXPECT_EQ(prefs.mmCalcFunc, 1u);
  EXPECT_EQ(prefs.atomicProbability, 0.0025);
  EXPECT_EQ(prefs.molecularProbability, 0.005);
  EXPECT_EQ(prefs.csfMaxFamily, 11u);
  EXPECT_EQ(prefs.formula, L"C6 H10 O5");
}

TEST(UnresPrefs, AreTheParametersOfTheUnresolvedMethod) {
  const UnresPrefs prefs = MakeUnresPrefs(SampleChargeStateParams());
  EXPECT_EQ(prefs.minMass, 1008u);
  EXPECT_EQ(prefs.maxMass, 50009u);
  EXPECT_EQ(prefs.chargeCarrierMass, 6.9385);
  EXPECT_EQ(prefs.minSeriesSize, 6u);
  EXPECT_EQ(prefs.maxSeries, 11u);
  EXPECT_EQ(prefs.isotopicGaps, 3u);
  EXPECT_EQ(prefs.massAccuracy, 1007.0);
}

TEST(ResPrefs, HaveTheMonoisotopicMassOfTheProtonAndUnresPrefsItsAverageMass) {
  EXPECT_EQ(MakeResPrefs({}).adductMass, 1.007276);
  EXPECT_EQ(MakeUnresPrefs({}).chargeCarrierMass, 1.007398);
}
