#include <tool/simulate/Instrument.h>

#include <gtest/gtest.h>

#include <tslbl/spectrum/CreateSpectrum.h>
#include <tslbl/tune/rules/DevTuneRules.h>
#include <memory>

namespace tests {
namespace {

using TslTool::Instrument;

const Instrument kInstruments[] = {{},
                                   {.mzLow = 5.0, .mzHigh = 3000.0},
                                   {.mzLow = 500.0, .mzHigh = 2000.0, .mzStep = 0.2, .width = 1.0},
                                   {.mzLow = 999.5, .mzHigh = 1000.5}};

TEST(Instrument, ItsTuneIsOneThatTheInstrumentTakes) {
  for (const Instrument& instrument : kInstruments) {
    TslBL::DevTuneRules rules(TslTool::TuneOf(instrument));
    EXPECT_TRUE(rules.QFaults().empty()) << instrument.mzLow;
    EXPECT_FALSE(rules.CalculateInitialSettlingDelay()) << "it rests as long as it must";
  }
}

TEST(Instrument, TheAxisReachesOverTheRangeInItsSteps) {
  for (const Instrument& instrument : kInstruments) {
    const std::vector<double> mz = TslTool::AxisOf(TslTool::TuneOf(instrument));
    EXPECT_NEAR(mz.front(), instrument.mzLow, 1e-9);
    EXPECT_NEAR(mz.back(), instrument.mzHigh, 2.0 * instrument.mzStep);
    EXPECT_NEAR((mz.back() - mz.front()) / static_cast<double>(mz.size() - 1), instrument.mzStep,
                1e-3 * instrument.mzStep);
  }
}

TEST(Instrument, TheAxisIsThatOfTheEvaluation) {
  for (const Instrument& instrument : kInstruments) {
    const TslBL::Tune tune = TslTool::TuneOf(instrument);
    const std::vector<double> mz = TslTool::AxisOf(tune);
    TslBL::RawSpectrum raw;
    raw.counts.resize(mz.size());
    const std::unique_ptr<TslBL::Spectrum> spectrum(TslBL::CreateSpectrum(tune, raw, nullptr));
    EXPECT_EQ(spectrum->xAxis, mz);
  }
}

}  // namespace
}  // namespace tests
