#include <gtest/gtest.h>

#include <chargestate/SampleSeries.h>
#include <tslbl/closed/common/Text.h>

using namespace tests;

namespace {

DeconSpectrum WithSeries(CSSeries::Types type, double mass, const std::string& charges, double low,
                         double high) {
  DeconSpectrum s;
  s.xAxis = {low, high};
  CSSeriesInfo& series = s.Series.emplace_back();
  series.Series = {type, 1};
  series.AvgMass = mass;
  series.Peaks = PeaksAt(charges);
  return s;
}

// The charges in order, those that were found in brackets.
std::string Charges(const DeconSpectrum& s) {
  CSPeakIndicators out;
  EXPECT_TRUE(s.BuildCSPeakIndictors(0, out));
  std::ostringstream text;
  for (const CSPeakIndicator& indicator : out.Indicators)
    text << (text.tellp() > 0 ? " " : "") << (indicator.Found ? "[" : "") << indicator.Charge
         << (indicator.Found ? "]" : "");
  return text.str();
}

std::string ChargesFrom(const std::string& found, double low, double high) {
  return Charges(WithSeries(kUnresolved, 10000.0, found, low, high));
}

}  // namespace

TEST(BuildCSPeakIndictors, GoesUpToTwoChargesBeyondThoseFound) {
  EXPECT_EQ(ChargesFrom("5 6 7 8", 500, 3000), "4 [5] [6] [7] [8] 9 10");
  EXPECT_EQ(ChargesFrom("5 6 7 8", 500, 4000), "3 4 [5] [6] [7] [8] 9 10");
  EXPECT_EQ(ChargesFrom("5 6 7 8", 500, 2400), "[5] [6] [7] [8] 9 10");
}

TEST(BuildCSPeakIndictors, StopsWhereTheAxisBegins) {
  EXPECT_EQ(ChargesFrom("5 6 7 8", 1002, 2400), "[5] [6] [7] [8] 9");
  EXPECT_EQ(ChargesFrom("5 6 7 8", 1113, 2400), "[5] [6] [7] [8]");
}

TEST(BuildCSPeakIndictors, AChargeAtTheVeryEndOfTheAxisIsOnIt) {
  const double adduct = ChargeStateParams().GetAdductIonInfo().AvgMass;
  EXPECT_EQ(ChargesFrom("5", 1000.0, 10000.0 / 4 + adduct), "4 [5] 6 7");
  EXPECT_EQ(ChargesFrom("5", 10000.0 / 7 + adduct, 2400), "[5] 6 7");
  EXPECT_EQ(ChargesFrom("5", 10000.0 / 6 + adduct, 2400), "[5] 6");
}

TEST(BuildCSPeakIndictors, GoesDownToCharge1) {
  EXPECT_EQ(ChargesFrom("2 3", 4000, 20000), "1 [2] [3]");
  EXPECT_EQ(ChargesFrom("1", 6000, 20000), "[1]");
  EXPECT_EQ(ChargesFrom("0 1", 6000, 20000), "[0] [1]");
}

TEST(BuildCSPeakIndictors, NamesChargesBetweenThoseFoundThatWereNot) {
  EXPECT_EQ(ChargesFrom("8 5 8", 1113, 2400), "[5] 6 7 [8]");
}

TEST(BuildCSPeakIndictors, OfASeriesWithoutPeaksBeginsWithNoCharge) {
  EXPECT_EQ(ChargesFrom("", 500, 3000), "0 1 2");
  EXPECT_EQ(ChargesFrom("", 6000, 20000), "0 1");
  EXPECT_EQ(ChargesFrom("", 20000, 30000), "0");
}

TEST(BuildCSPeakIndictors, PlacesAChargeByTheMassOfTheSeriesAndOfTheIon) {
  DeconSpectrum s = WithSeries(kUnresolved, 10000.0, "5", 1900, 2100);
  CSPeakIndicators out;
  ASSERT_TRUE(s.BuildCSPeakIndictors(0, out));
  EXPECT_EQ(out.Series, CSSeries(kUnresolved, 1));
  EXPECT_EQ(out.Indicators, (std::vector<CSPeakIndicator>{{5, 2000.0 + 1.007398, true, L"|t+5"}}));
  s.Series[0].Series.Type = kResolved;
  ASSERT_TRUE(s.BuildCSPeakIndictors(0, out));
  EXPECT_EQ(out.Indicators[0].MZ, 2000.0 + 1.007276);
  s.CSParams.AdductIon = AdductIonInfo::Sodium;
  ASSERT_TRUE(s.BuildCSPeakIndictors(0, out));
  EXPECT_EQ(out.Indicators[0].MZ, 2000.0 + 22.989221);
}

TEST(BuildCSPeakIndictors, PlacesChargeZeroAtZero) {
  CSPeakIndicators out;
  ASSERT_TRUE(WithSeries(kUnresolved, 10000.0, "", 20000, 30000).BuildCSPeakIndictors(0, out));
  EXPECT_EQ(out.Indicators, (std::vector<CSPeakIndicator>{{0, 0.0, false, L"|t+0"}}));
}

TEST(BuildCSPeakIndictors, GivesNothingForAnIndexPastTheEnd) {
  CSPeakIndicators out;
  out.Series = {kResolved, 7};
  out.Indicators.resize(3);
  EXPECT_FALSE(WithThreeSeries().BuildCSPeakIndictors(3, out));
  EXPECT_TRUE(out.Indicators.empty());
  EXPECT_EQ(out.Series, CSSeries());
}

TEST(BuildCSPeakIndictors, ExtendsNothingWithoutAnAxis) {
  DeconSpectrum s = WithSeries(kUnresolved, 10000.0, "5 6", 500, 3000);
  s.xAxis.clear();
  EXPECT_EQ(Charges(s), "[5] [6]");
}

TEST(BuildCSPeakIndictors, RefusesChargesThatNoMoleculeHas) {
  CSPeakIndicators out;
  EXPECT_FALSE(WithSeries(kUnresolved, 10000.0, "5 4294967295", 500, 3000).BuildCSPeakIndictors(0, out));
  EXPECT_TRUE(out.Indicators.empty());
  EXPECT_EQ(Charges(WithSeries(kUnresolved, 10000.0, "4294967295", 500, 3000)),
            "4294967293 4294967294 [4294967295]");
}
