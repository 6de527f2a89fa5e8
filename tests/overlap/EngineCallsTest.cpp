#include <tslbl/overlap/EngineCalls.h>

#include <gtest/gtest.h>

#include <overlap/FakeEngine.h>
#include <overlap/OverlapSpectrum.h>
#include <tslbl/closed/common/ComErrorHandler.h>
#include <stdexcept>

using namespace TslBL;
using namespace tests;

namespace {

constexpr std::int32_t kAborted = static_cast<std::int32_t>(0x80004004);

struct NoEngineAtAll : IComponent {};

// The code of the ComError that `work` throws; 0 without one.
template <class Work>
std::uint32_t CodeOf(Work work) {
  try {
    work();
  } catch (const ComError& e) {
    return e.code;
  }
  return 0;
}

class EngineCalls : public testing::Test {
 protected:
  Indexes Estimate() { return CallInitialEstimates(MakeOverlapPeakEngine().get(), spectrum, points); }
  std::vector<FittedGaussian> Fit(OPDParams::FittingFuncs method = OPDParams::MarquardtLevenberg) {
    return CallFitPeaks(MakeOverlapPeakEngine().get(), method, points, {{2, 5}, 1.5, 0.75});
  }

  FakeEngine engine;
  Spectrum spectrum = SpectrumOf({0, 1, 2, 3, 4, 5, 6, 7});
  GroupPoints points = QGroupPoints(spectrum, 1, 6);
};

}  // namespace

TEST_F(EngineCalls, EstimatesAreAskedOfThePointsOfTheGroup) {
  spectrum.opdParams.NumSmoothPts = 7;
  engine.Propose({4, 2});
  EXPECT_EQ(Estimate(), (Indexes{4, 2}));
  ASSERT_EQ(engine.estimates.size(), 1U);
  EXPECT_EQ(engine.estimates[0].numSmoothPts, 7);
  EXPECT_EQ(engine.estimates[0].x, points.x);
  EXPECT_EQ(engine.estimates[0].y, points.y);
}

TEST_F(EngineCalls, TheEngineSmoothsWhatHasNotBeenSmoothed) {
  Estimate();
  spectrum.AddStatus(Curve::STATUS_SMOOTHED);
  Estimate();
  EXPECT_TRUE(engine.estimates[0].smooth);
  EXPECT_FALSE(engine.estimates[1].smooth);
}

TEST_F(EngineCalls, AFitStartsFromWhatItIsGiven) {
  Fit();
  Fit(OPDParams::HookeJeeves);
  const FitCall& call = engine.fits.at(0);
  EXPECT_FALSE(call.hookeJeeves);
  EXPECT_EQ(call.x, points.x);
  EXPECT_EQ(call.y, points.y);
  EXPECT_EQ(call.apexes, (Indexes{2, 5}));
  EXPECT_EQ(call.baseline, 1.5);
  EXPECT_EQ(call.a3, 0.75);
  EXPECT_TRUE(engine.fits.at(1).hookeJeeves);
}

TEST_F(EngineCalls, ANegativeResultIsAComErrorWithItsCode) {
  engine.estimate = [](auto&, auto&) { return kAborted; };
  engine.fit = [](auto&, auto&) { return kAborted; };
  EXPECT_EQ(CodeOf([&] { Estimate(); }), 0x80004004U);
  EXPECT_EQ(CodeOf([&] { Fit(); }), 0x80004004U);
}

TEST_F(EngineCalls, APositiveResultIsNoFailure) {
  engine.estimate = [](auto&, auto& peaks) {
    peaks = {3};
    return 1;
  };
  EXPECT_EQ(Estimate(), Indexes{3});
}

TEST_F(EngineCalls, ThrowALogicErrorWhereTheHandlerOfFailuresReturns) {
  engine.estimate = [](auto&, auto&) { return kAborted; };
  engine.fit = [](auto&, auto&) { return kAborted; };
  const ComErrorHandler before = SetComErrorHandler([](std::uint32_t) {});
  EXPECT_EQ(Thrown<std::logic_error>([&] { Estimate(); }), "Failure from initial estimates.");
  EXPECT_EQ(Thrown<std::logic_error>([&] { Fit(); }), "Failure from fit peaks.");
  SetComErrorHandler(before);
}

TEST_F(EngineCalls, WithoutAnEngineAreAComErrorForTheNullPointer) {
  EXPECT_EQ(CodeOf([&] { CallInitialEstimates(nullptr, spectrum, points); }), 0x80004003U);
  EXPECT_EQ(CodeOf([&] { CallFitPeaks(nullptr, {}, points, {{2}, 0, 1}); }), 0x80004003U);
}

TEST_F(EngineCalls, AFitHasAResultForEachApex) {
  const auto failureWith = [&](std::size_t count) {
    engine.fit = [count](auto&, auto& results) {
      results.resize(count);
      return OverlapPeakEngine::kOk;
    };
    return Thrown<std::logic_error>([&] { Fit(); });
  };
  EXPECT_EQ(failureWith(2), "");
  for (const std::size_t count : {0U, 1U, 3U})
    EXPECT_EQ(failureWith(count), "Invalid peak count from fit peaks.");
}

TEST(MakeOverlapPeakEngine, SaysThatThereIsNone) {
  const auto failure = [] { return Thrown<std::runtime_error>([] { MakeOverlapPeakEngine(); }); };
  const FakeEngine restores;
  for (const ComponentRegistry::Factory& factory :
       {ComponentRegistry::Factory(), ComponentRegistry::Factory([] { return nullptr; }),
        ComponentRegistry::Factory([] { return std::make_unique<NoEngineAtAll>(); }),
        ComponentRegistry::Factory([]() -> std::unique_ptr<IComponent> { throw ComError{0x80070005}; })}) {
    FakeEngine::Registry().Register(OverlapPeakEngine::kClassId, factory);
    EXPECT_EQ(failure(), "Unable to load overlap peak deconvolution library.");
  }
}
