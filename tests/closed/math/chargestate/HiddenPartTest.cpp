#include <tslbl/closed/math/chargestate/HiddenPart.h>

#include <gtest/gtest.h>

#include <cmath>
#include <random>
#include <vector>

#include <tslbl/closed/math/chargestate/UnresolvedSeries.h>

namespace tests {
namespace {

using TslMath::ChargeSeries;
using TslMath::HiddenPart;
using TslMath::IonPeak;

constexpr double kCarrier = 1.00727646688;
constexpr double kPart = 14305.0;

double Envelope(double charge, double middle, double spread) {
  return std::exp(-0.5 * std::pow((charge - middle) / spread, 2.0));
}

// Charges 12 to 26 of a complex, with so much of its part at each multiple of the number of parts, in
// proportion to what is there, and intensities that scatter.
struct Complex {
  Complex(std::int32_t parts, double ofPart, double scatter, std::uint64_t seed = 1) {
    std::mt19937_64 random(seed);
    std::normal_distribution<double> normal(0.0, 1.0);
    series.mass = parts * kPart;
    series.score = 100.0;
    for (std::int32_t charge = 12; charge <= 26; ++charge) {
      const double more = charge % parts == 0 ? 1.0 + ofPart : 1.0;
      const double intensity =
          1000.0 * Envelope(charge, 19.0, 3.5) * more * std::exp(scatter * normal(random));
      series.members.push_back({charge, peaks.size(), series.mass, 0.0});
      peaks.push_back({series.mass / charge + kCarrier, intensity, intensity, 100.0, 1000.0});
    }
  }
  bool Has(std::int32_t parts) const { return HiddenPart(series, peaks, parts, 5, kCarrier).has_value(); }

  std::vector<IonPeak> peaks;
  ChargeSeries series;
};

TEST(HiddenPart, ShowsWhereEverySecondOrThirdChargeStandsOut) {
  for (const double ofPart : {0.6, 1.0, 5.0, 50.0})
    for (const std::int32_t parts : {2, 3}) EXPECT_TRUE(Complex(parts, ofPart, 0.05).Has(parts)) << ofPart;
}

TEST(HiddenPart, HasTheMassAndThePeaksOfThoseCharges) {
  const Complex dimer(2, 3.0, 0.05);
  const auto part = HiddenPart(dimer.series, dimer.peaks, 2, 5, kCarrier);
  ASSERT_TRUE(part);
  EXPECT_NEAR(part->mass, kPart, 1e-6);
  ASSERT_EQ(part->members.size(), 8U);
  EXPECT_EQ(part->members.front().charge, 6);
  EXPECT_EQ(part->members.back().charge, 13);
  EXPECT_EQ(part->members.back().peak, 14U);
}

TEST(HiddenPart, IsNoneOfAnEvenEnvelope) {
  int found = 0;
  for (std::uint64_t seed = 0; seed < 500; ++seed)
    for (const double scatter : {0.0, 0.1, 0.2, 0.3})
      for (const std::int32_t parts : {2, 3}) found += Complex(parts, 0.0, scatter, seed).Has(parts) ? 1 : 0;
  EXPECT_LE(found, 8);  // of 4000
}

TEST(HiddenPart, IsNotToldOfLittleMore) { EXPECT_FALSE(Complex(2, 0.2, 0.02).Has(2)); }

TEST(HiddenPart, ShowsWhereChargesBetweenAreTooWeakToBeSeen) {
  Complex dimer(2, 20.0, 0.05);
  std::erase_if(dimer.series.members,
                [](const auto& member) { return member.charge > 20 && member.charge % 2 != 0; });
  EXPECT_TRUE(dimer.Has(2));
}

TEST(HiddenPart, NeedsEnoughCharges) {
  Complex dimer(2, 3.0, 0.0);
  EXPECT_FALSE(HiddenPart(dimer.series, dimer.peaks, 2, 9, kCarrier));
  dimer.series.members.resize(5);
  EXPECT_FALSE(HiddenPart(dimer.series, dimer.peaks, 2, 2, kCarrier));
}

TEST(HiddenPart, StandsBehindItsComplexWhereAllSeriesAreFound) {
  const Complex dimer(2, 3.0, 0.05);
  TslMath::UnresolvedPrefs prefs;
  prefs.carrierMass = kCarrier;
  prefs.maxMass = 60000.0;
  const auto found = FindAllSeries(dimer.peaks, prefs);
  ASSERT_EQ(found.size(), 2U);
  EXPECT_NEAR(found[0].mass, 2.0 * kPart, 1e-3);
  EXPECT_NEAR(found[1].mass, kPart, 1e-3);
  prefs.minMass = 20000.0;
  EXPECT_EQ(FindAllSeries(dimer.peaks, prefs).size(), 1U);
  prefs.minMass = 1000.0;
  prefs.maxSeries = 1;
  EXPECT_EQ(FindAllSeries(dimer.peaks, prefs).size(), 1U);
}

}  // namespace
}  // namespace tests
