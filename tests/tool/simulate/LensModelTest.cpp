#include <tool/simulate/LensModel.h>

#include <gtest/gtest.h>

#include <cmath>
#include <map>

#include <tslbl/tune/FieldTable.h>
#include <tslbl/tune/rules/DevTuneRules.h>

namespace tests {
namespace {

using TslBL::DevTuneRules;
using TslBL::TuneField;
using TslCommon::PolarityNegative;
using TslCommon::PolarityPositive;
using TslTool::LensModel;

constexpr TuneField::Id kIonPath[] = {TuneField::CapExit,  TuneField::Skimmer,   TuneField::Q0RFAmpl,
                                      TuneField::Q0Offset, TuneField::Q0Exit1,   TuneField::Q0Exit2,
                                      TuneField::Q1Offset, TuneField::Q1IonGuide};

TslBL::Tune WithLens(TuneField::Id field, double value) {
  TslBL::Tune tune = DevTuneRules(TslBL::Probes::ESI);
  (tune.ControlData.*TslBL::FindField(field)->Lens()).Single = value;
  return tune;
}

TEST(LensModel, AnInstrumentAtItsBestLetsAllThrough) {
  for (const double mz : {5.0, 322.0, 3000.0}) {
    EXPECT_EQ(LensModel().Transmission(mz), 1.0);
    EXPECT_EQ(LensModel().Width(mz), 1.0);
  }
}

TEST(LensModel, EachLensIsBestAtItsBestValueAndFallsTowardsBothSides) {
  for (const TuneField::Id field : kIonPath)
    for (const double mz : {118.0, 622.0, 2721.0}) {
      const double best = LensModel::BestValue(field, PolarityPositive, mz).value();
      const auto through = [&](double value) { return LensModel(WithLens(field, value)).Transmission(mz); };
      for (const double away : {0.1, 1.0, 10.0}) {
        EXPECT_LT(through(best + away), through(best + away / 2)) << field << " " << mz;
        EXPECT_NEAR(through(best - away), through(best + away), 1e-12) << field << " " << mz;
      }
    }
}

TEST(LensModel, BestValuesMoveWithMzAsTold) {
  const struct {
    TuneField::Id field;
    double at100, at1000;
  } kCases[] = {{TuneField::CapExit, 105, 145},      {TuneField::Skimmer, 24, 36},
                {TuneField::Q0RFAmpl, 450, 670},     {TuneField::Q0Offset, -14, -23},
                {TuneField::Q0Exit1, -0.4, -0.4},    {TuneField::Q0Exit2, -90, -90},
                {TuneField::Q1Offset, -1, -7},       {TuneField::Q1IonGuide, -12, -20},
                {TuneField::Cylinder, -3300, -3300}, {TuneField::EndPlate, -4700, -4700},
                {TuneField::CapEnter, -5600, -5600}, {TuneField::DryGasTemp, 220, 220},
                {TuneField::DryGasFlow, 9, 9},       {TuneField::Neb1GasPres, 45, 45}};
  for (const auto& [field, at100, at1000] : kCases) {
    EXPECT_DOUBLE_EQ(LensModel::BestValue(field, PolarityPositive, 100).value(), at100) << field;
    EXPECT_DOUBLE_EQ(LensModel::BestValue(field, PolarityPositive, 1000).value(), at1000) << field;
  }
  for (const TuneField::Id field : {TuneField::Q1Resolution, TuneField::DetectorGain, TuneField::MZLow})
    EXPECT_FALSE(LensModel::BestValue(field, PolarityPositive, 100)) << field;
}

// CapExit 45 V beside its best value lets exp(-1/2) of it through.
TEST(LensModel, TheSpreadIsThatOfAGaussian) {
  const double best = LensModel::BestValue(TuneField::CapExit, PolarityPositive, 322).value();
  EXPECT_NEAR(LensModel(WithLens(TuneField::CapExit, best + 45)).Transmission(322) /
                  LensModel(WithLens(TuneField::CapExit, best)).Transmission(322),
              std::exp(-0.5), 1e-12);
}

TEST(LensModel, ATuneThatIsTurnedLetsTheSameThrough) {
  DevTuneRules tune(TslBL::Probes::ESI);
  const double positive = LensModel(tune).Transmission(322);
  ASSERT_EQ(tune.WPolarityType(PolarityNegative), TslBL::Rules::NoError);
  EXPECT_LT(tune.ControlData.CapExit.Single, 0);
  EXPECT_DOUBLE_EQ(LensModel(tune).Transmission(322), positive);
  EXPECT_EQ(LensModel::BestValue(TuneField::CapExit, PolarityNegative, 100), -105);
  EXPECT_EQ(LensModel::BestValue(TuneField::Q0RFAmpl, PolarityNegative, 100), 450);
}

TEST(LensModel, ALensThatFollowsMzHasItsValueThere) {
  TslBL::Tune tune = WithLens(TuneField::CapExit, 160);
  tune.ControlData.CapExit.Type = TslBL::IOPoint::CalibratedType;
  tune.Q1CalPts = {{100, L"a"}, {300, L"b"}};
  tune.Q1CalPts[0].Fields = {{TuneField::CapExit, 100}};
  tune.Q1CalPts[1].Fields = {{TuneField::CapExit, 140}};
  EXPECT_DOUBLE_EQ(LensModel(tune).Transmission(200),
                   LensModel(WithLens(TuneField::CapExit, 120)).Transmission(200));
}

// w = exp(0.25 - resolution / 100) at m/z 100, of which w / (w + 0.5) passes.
TEST(LensModel, ResolutionMakesLinesNarrowAndWeak) {
  const auto at = [](double fine, double coarse) {
    TslBL::Tune tune = WithLens(TuneField::Q1Resolution, fine);
    tune.ControlData.Q1CoarseResolution.Single = coarse;
    return LensModel(tune);
  };
  EXPECT_DOUBLE_EQ(at(0, 0).Width(100), std::exp(0.25));
  EXPECT_DOUBLE_EQ(at(25, 0).Width(100), 1.0);
  EXPECT_DOUBLE_EQ(at(10, 15).Width(100), 1.0);
  EXPECT_DOUBLE_EQ(at(0, 0).Width(1000), std::exp(-0.05));
  const double wide = std::exp(0.25);
  EXPECT_NEAR(at(25, 0).Transmission(100) / at(0, 0).Transmission(100), (1 / 1.5) / (wide / (wide + 0.5)),
              1e-12);
}

TEST(LensModel, TheDetectorSaturates) {
  const auto at = [](std::int32_t gain, std::int32_t dynode, std::uint32_t threshold) {
    TslBL::Tune tune = DevTuneRules(TslBL::Probes::ESI);
    tune.ControlData.DetectorGain = gain;
    tune.ControlData.HEDynode = dynode;
    tune.ControlData.SignalThreshold = threshold;
    return LensModel(tune).Transmission(322);
  };
  EXPECT_NEAR(at(-3000, -7000, 0) / at(-1300, -7000, 0), 2.0, 1e-9);
  EXPECT_NEAR(at(-2000, -7000, 0) / at(-3000, -7000, 0), 1.0, 1e-4);
  EXPECT_NEAR(at(-1400, -2500, 0) / at(-1400, -10000, 0), (1 - std::exp(-1)) / (1 - std::exp(-4)), 1e-12);
  EXPECT_NEAR(at(-1400, -7000, 150) / at(-1400, -7000, 0), std::exp(-1), 1e-12);
}

TEST(LensModel, SourcesOtherThanElectrosprayAreAtTheirBest) {
  DevTuneRules tune(TslBL::Probes::APCI);
  const double before = LensModel(tune).Transmission(322);
  tune.Source.CapEnter = 0;
  tune.Source.DryGasFlow = 2;
  EXPECT_EQ(LensModel(tune).Transmission(322), before);
}

}  // namespace
}  // namespace tests
