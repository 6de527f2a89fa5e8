#include <tslbl/overlap/OPDRefit.h>

#include <gtest/gtest.h>

#include <overlap/FakeEngine.h>
#include <overlap/OverlapSpectrum.h>
#include <tslbl/closed/common/ComponentRegistry.h>
#include <tslbl/closed/common/Text.h>
#include <stdexcept>

using namespace TslBL;
using namespace tests;

namespace {

constexpr const char* kOutside =
    "Current settings create an overlap peak outside the group range.  Try peaks closer to the group.";

// Points of the spectrum, on its axis.
double Mz(double point) { return 100.0 + 0.05 * point; }

class Refit : public testing::Test {
 protected:
  // The message of a failure; "" on success.
  std::string Add(double point) {
    std::wstring error;
    const bool ok = OPDRefitGroupAdd(params, s, group, Mz(point), error);
    EXPECT_EQ(ok, error.empty());
    return TslCommon::ToUtf8(error);
  }
  std::string Remove(const std::vector<std::uint32_t>& ids) {
    std::wstring error;
    const bool ok = OPDRefitGroupRemove(params, s, group, ids, error);
    EXPECT_EQ(ok, error.empty());
    return TslCommon::ToUtf8(error);
  }
  void Fitted(const std::string& fits) {
    s.overlapPeaks = Fits(fits);
    s.SyncOverlapGroups();
  }

  FakeEngine engine;
  OPDParams params;
  std::uint32_t group = 1;
  // Data peaks from 10 to 20, 20 to 30, 60 to 70, 70 to 80 and 120 to 130.
  Spectrum s = SpectrumOfPeaks({{10, 15, 20}, {20, 25, 30}, {60, 65, 70}, {70, 75, 80}, {120, 125, 130}});
};

}  // namespace

TEST_F(Refit, AddTakesADataPeakIntoAGroup) {
  Fitted("1:0@15 1:1@24");
  EXPECT_EQ(Add(66), "");
  EXPECT_EQ(Text(s.overlapPeaks), "1:0@15 1:1@24 1:2@65");
  EXPECT_EQ(RowGroups(s), "1 1 1 0 0");
  EXPECT_EQ(group, 1U);
  const FitCall& call = engine.fits.at(0);
  EXPECT_EQ(call.apexes, (Indexes{5, 14, 55}));
  EXPECT_EQ(call.y.size(), 61U);
  EXPECT_EQ(call.baseline, 10.0);
  EXPECT_NEAR(call.a3, 61.0 / 3 * 0.5 / 2.3548200450309493, 1e-12);
  EXPECT_TRUE(engine.estimates.empty());
}

TEST_F(Refit, AddSortsByPosition) {
  Fitted("1:2@65 1:3@75");
  EXPECT_EQ(Add(15), "");
  EXPECT_EQ(engine.fits.at(0).apexes, (Indexes{5, 55, 65}));
  EXPECT_EQ(Text(s.overlapPeaks), "1:0@15 1:2@65 1:3@75");
}

TEST_F(Refit, AddFitsByTheMethodOfItsParameters) {
  params.FittingFunc = OPDParams::HookeJeeves;
  Add(15);
  EXPECT_TRUE(engine.fits.at(0).hookeJeeves);
}

TEST_F(Refit, AddToNoGroupStartsANewOne) {
  Fitted("1:2@65 1:3@75");
  group = 0;
  EXPECT_EQ(Add(125), "");
  EXPECT_EQ(engine.fits.at(0).apexes, (Indexes{5}));
  EXPECT_EQ(Text(s.overlapPeaks), "1:4@125");  // what lies left of it is cleared
  EXPECT_EQ(group, 1U);
}

TEST_F(Refit, AddToNoGroupLeftOfOthersNumbersThemAnew) {
  Fitted("1:2@65 1:3@75");
  group = 0;
  EXPECT_EQ(Add(15), "");
  EXPECT_EQ(Text(s.overlapPeaks), "1:0@15 2:2@65 2:3@75");
  EXPECT_EQ(RowGroups(s), "1 0 2 2 0");
  EXPECT_EQ(group, 1U);
}

TEST_F(Refit, AddOnAnOverlapPeakFitsItsDataPeakIntoTheGroup) {
  Fitted("1:2@64 1:2@67");
  const std::size_t rows = s.peaks.size();
  EXPECT_EQ(Add(65), "");
  EXPECT_EQ(s.peaks.size(), rows);
  EXPECT_EQ(engine.fits.at(0).apexes, (Indexes{4, 5, 7}));
  EXPECT_EQ(Text(s.overlapPeaks), "1:2@64 1:2@65 1:2@67");
}

TEST_F(Refit, AddDetectsAPeakWhereThereIsNone) {
  Fitted("1:2@65 1:3@75");
  for (std::uint32_t i = 0; i < 5; ++i)
    s.yAxis[98 + i] = 10.0 + 30.0 * (3 - std::abs(static_cast<int>(i) - 2));
  EXPECT_EQ(Add(100), "");
  EXPECT_EQ(s.peaks.size(), 6U);
  EXPECT_EQ(Text(s.overlapPeaks).substr(0, 18), "1:2@65 1:3@75 1:4@");
  EXPECT_EQ(RowGroups(s), "0 0 1 1 1 0");
}

TEST_F(Refit, AddMovesOverlapPeaksRightOfADetectedPeakOn) {
  Fitted("1:2@65 2:4@125");
  for (std::uint32_t i = 0; i < 5; ++i)
    s.yAxis[98 + i] = 10.0 + 30.0 * (3 - std::abs(static_cast<int>(i) - 2));
  EXPECT_EQ(Add(100), "");
  EXPECT_EQ(s.overlapPeaks.back().DataPeakId, 5U);
  EXPECT_EQ(RowGroups(s), "0 0 1 0 1 2");
}

TEST_F(Refit, AddMovesThemOnAlsoForARowThatStoodThere) {
  // The row says that it is overlapped, and no overlap peak is on it.
  Fitted("1:3@75");
  s.peaks[0].overlapGroup = 9;
  group = 0;
  EXPECT_EQ(Add(15), "");
  EXPECT_EQ(s.peaks.size(), 5U);
  EXPECT_EQ(Text(s.overlapPeaks), "1:0@15 2:4@75");
}

TEST_F(Refit, AddSaysThatThereIsNoPeak) {
  Fitted("1:2@65 1:3@75");
  group = 1;
  EXPECT_EQ(Add(170), "There are no available peaks at this location.");
  EXPECT_EQ(Text(s.overlapPeaks), "1:2@65 1:3@75");
  EXPECT_EQ(group, 1U);
  EXPECT_TRUE(engine.fits.empty());
}

TEST_F(Refit, AfterAFitThatFailsTheGroupIsGone) {
  engine.fit = [](const FitCall& call, auto& results) {
    results.resize(call.apexes.size());
    results[0].centre = -1;
    return OverlapPeakEngine::kOk;
  };
  Fitted("1:0@15 1:1@25 2:4@125");
  EXPECT_EQ(Add(66), kOutside);
  EXPECT_EQ(Text(s.overlapPeaks), "1:4@125");
  EXPECT_EQ(group, 1U);
  Fitted("1:0@15 1:1@25 2:4@125");
  EXPECT_EQ(Remove({0}), kOutside);
  EXPECT_EQ(Text(s.overlapPeaks), "1:4@125");
}

TEST_F(Refit, WithoutAnEngineIsAMessage) {
  FakeEngine::Registry().Register(OverlapPeakEngine::kClassId, nullptr);
  Fitted("1:0@15 1:1@25");
  EXPECT_EQ(Add(66), "Unable to load overlap peak deconvolution library.");
  EXPECT_TRUE(s.overlapPeaks.empty());
}

TEST_F(Refit, LetsTheFailureOfAnEnginePass) {
  engine.fit = [](auto&, auto&) { return static_cast<std::int32_t>(0x80004005); };
  Fitted("1:0@15 1:1@25");
  EXPECT_THROW(Add(66), ComError);
  EXPECT_TRUE(s.overlapPeaks.empty());
  EXPECT_EQ(group, 1U);
  Fitted("1:0@15 1:1@25");
  EXPECT_THROW(Remove({0}), ComError);
}

TEST_F(Refit, OfOverlapPeaksWithoutADataPeakIsAnError) {
  Fitted("1:0@15 1:7@25");
  EXPECT_THROW(Add(66), std::logic_error);
  EXPECT_THROW(Remove({0}), std::logic_error);
  EXPECT_EQ(s.overlapPeaks.size(), 2U);
}

TEST_F(Refit, RemoveFitsTheRestAnew) {
  Fitted("1:0@15 1:1@24 1:1@27 2:4@125");
  EXPECT_EQ(Remove({1}), "");
  EXPECT_EQ(Text(s.overlapPeaks), "1:0@15 1:1@27 2:4@125");
  const FitCall& call = engine.fits.at(0);
  EXPECT_EQ(call.apexes, (Indexes{5, 17}));
  EXPECT_NEAR(call.a3, 21.0 / 2 * 0.5 / 2.3548200450309493, 1e-12);
}

TEST_F(Refit, RemoveFitsOverWhatTheRestCovers) {
  Fitted("1:0@15 1:1@25 1:2@65");
  EXPECT_EQ(Remove({0, 2}), "");
  EXPECT_EQ(engine.fits.at(0).y.size(), 11U);
  EXPECT_EQ(Text(s.overlapPeaks), "1:1@25");
}

TEST_F(Refit, RemoveLeavesTheNumberThoughTheGroupHasAnother) {
  Fitted("1:0@15 2:2@65 2:3@75 3:4@125");
  group = 2;
  EXPECT_EQ(Remove({1}), "");
  EXPECT_EQ(Text(s.overlapPeaks), "1:3@75 2:4@125");  // what lies left of the group is cleared
  EXPECT_EQ(group, 2U);
}

TEST_F(Refit, RemoveOfAllTakesTheGroupOut) {
  Fitted("1:0@15 1:1@25 2:4@125");
  EXPECT_EQ(Remove({0, 1}), "");
  EXPECT_EQ(Text(s.overlapPeaks), "1:4@125");
  EXPECT_EQ(RowGroups(s), "0 0 0 0 1");
  EXPECT_EQ(group, 0U);
  EXPECT_TRUE(engine.fits.empty());
}

TEST_F(Refit, RemoveOfNothingTouchesNothing) {
  Fitted("1:0@15 1:1@25 2:4@125");
  const Spectrum before = s;
  EXPECT_EQ(Remove({}), "");
  EXPECT_EQ(Remove({2, 3, 99}), "");  // of another group, and of none
  group = 7;
  EXPECT_EQ(Remove({0}), "");
  EXPECT_EQ(group, 7U);
  EXPECT_EQ(s, before);
  EXPECT_TRUE(engine.fits.empty());
}
