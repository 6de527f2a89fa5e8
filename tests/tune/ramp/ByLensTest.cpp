#include <tslbl/tune/ramp/ByLens.h>

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <vector>

namespace {

using namespace TslBL;
using Values = std::map<double, double>;

ByLensFct LensAt(const std::vector<double>& mzs) {
  ByLens lens{.Field = TuneField::Skimmer, .Values = {}};
  for (const double mz : mzs) lens.Values[mz] = 10.0 * mz;
  return ByLensFct(lens);
}

std::vector<double> MZs(const ByLensFct& lens) {
  std::vector<double> mzs;
  for (const auto& [mz, value] : lens.QByLens().Values) mzs.push_back(mz);
  return mzs;
}

using List = std::vector<double>;

TEST(ByLensFct, KeepsItsField) { EXPECT_EQ(LensAt({100}).QByLens().Field, TuneField::Skimmer); }

TEST(ByLensFct, AddsAPoint) {
  ByLensFct lens = LensAt({100});
  lens.AddMassValue(500, 7);
  EXPECT_EQ(lens.QByLens().Values, (Values{{100, 1000}, {500, 7}}));
}

TEST(ByLensFct, ReplacesAPointOfItsMZ) {
  ByLensFct lens = LensAt({500});
  lens.AddMassValue(500, 7);
  EXPECT_EQ(lens.QByLens().Values, (Values{{500, 7}}));
}

TEST(ByLensFct, RemovesPointsNearby) {
  const std::tuple<List, List, const char*> kCases[] = {
      {{497.0, 503.5, 504.5}, {504.5}, "from 3 below to 4 above"},
      {{497.0, 504.0}, {}, "both ends included"},
      {{503.5}, {503.5}, "one more than 3 above stays alone"},
      {{503.0}, {}, "one 3 above goes"},
      {{503.0, 503.9}, {}, "and takes those up to 4 above with it"},
      {{496.9}, {496.9}, "one more than 3 below stays"},
      {{496.9, 500.0, 510.0}, {496.9, 510.0}, "those further away stay"},
      {{}, {}, "none"}};
  for (const auto& [before, after, what] : kCases) {
    ByLensFct lens = LensAt(before);
    lens.RemoveNearbyPoints(500.0);
    EXPECT_EQ(MZs(lens), after) << what;
  }
}

TEST(ByLensFct, RemovesTheFirstPointAboveAWholeMass) {
  const std::pair<List, List> kCases[] = {{{100.0, 100.4}, {100.0}},
                                          {{100.0}, {100.0}},
                                          {{100.4, 100.6}, {100.6}},
                                          {{99.9, 101.0}, {99.9, 101.0}},
                                          {{}, {}}};
  for (const auto& [before, after] : kCases) {
    ByLensFct lens = LensAt(before);
    lens.RemoveNominalMass(100);
    EXPECT_EQ(MZs(lens), after);
  }
}

TEST(ByLensFct, KeepsOnePointOfEachWholeMass) {
  ByLensFct lens = LensAt({100.0, 100.4, 200.3, 200.6, 300.9, 400.2});
  lens.KeepNominalMasses({100, 200, 300, 350});
  EXPECT_EQ(MZs(lens), (List{100.0, 200.3, 300.9}));
  EXPECT_EQ(lens.QByLens().Values.at(200.3), 2003.0);
}

TEST(ByLensFct, KeepsNothingOfNoMass) {
  ByLensFct lens = LensAt({100.0});
  lens.KeepNominalMasses({});
  EXPECT_TRUE(MZs(lens).empty());
}

TEST(ByLensFct, AddsAPointBesideThoseFurtherAway) {
  ByLensFct lens = LensAt({497.0, 503.5, 504.5});
  lens.AddMassValue(500.0, 7.0);
  EXPECT_EQ(lens.QByLens().Values, (Values{{500.0, 7.0}, {504.5, 5045.0}}));
  lens = LensAt({503.5});
  lens.AddMassValue(500.0, 7.0);
  EXPECT_EQ(lens.QByLens().Values, (Values{{500.0, 7.0}, {503.5, 5035.0}}));
}

TEST(ByLensFct, IsNotChangedByAnMZThatIsNone) {
  ByLensFct lens = LensAt({100.0});
  lens.AddMassValue(std::nan(""), 7.0);
  lens.RemoveNearbyPoints(std::nan(""));
  EXPECT_EQ(MZs(lens), List{100.0});
}

TEST(ByLensFct, TakesPointsAtAnyMZ) {
  for (const double mz : {std::numeric_limits<double>::infinity(), -1e300, 1e300}) {
    ByLensFct lens = LensAt({100.0});
    lens.AddMassValue(mz, 1.0);
    EXPECT_EQ(lens.QByLens().Values.size(), 2u);
    lens.RemoveNominalMass(std::numeric_limits<std::int32_t>::max());
    lens.KeepNominalMasses({100});
    EXPECT_EQ(MZs(lens), List{100.0});
  }
}

}  // namespace
