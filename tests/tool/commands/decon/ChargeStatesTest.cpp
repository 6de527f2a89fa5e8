#include <tool/commands/decon/ChargeStates.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <tool/commands/decon/Proteins.h>
#include <tool/commands/decon/SeriesRows.h>
#include <tslbl/closed/engines/Formula.h>
#include <tslbl/closed/engines/IsotopePattern.h>

namespace tests {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::StartsWith;
using TslTool::ChargeStates;
using TslTool::DeconWishes;
using TslTool::LoadedSpectrum;
using TslTool::SeriesEdit;

using Edits = TslTool::ScanEdits<SeriesEdit>;

TEST(ChargeStates, TellHowManySeriesTheyFound) {
  Edits none("in", {}, {}, "options");
  ChargeStates states("in", DefaultWishes(), none);
  LoadedSpectrum first = PeptideList();
  LoadedSpectrum second = PeptideList();
  second.spectrum = TslTool::PeakListSpectrum({}, {});
  states.Run(first);
  states.Run(second);
  EXPECT_THAT(states.Note(), StartsWith("1 series in 1 of 2 spectra; isotopes looked for at charges to 3"));
}

TEST(ChargeStates, TellOfIsotopesOnlyWhereTheyWereLookedFor) {
  Edits none("in", {}, {}, "options");
  DeconWishes wishes = DefaultWishes();
  wishes.params.Method = TslBL::ChargeStateParams::UnresolvedOnly;
  ChargeStates states("in", wishes, none);
  LoadedSpectrum loaded = PeptideList();
  states.Run(loaded);
  EXPECT_EQ(states.Note(), "0 series in 0 of 1 spectra");
}

// Peaks 0.05 m/z apart on average, of which any distance can be had.
TEST(ChargeStates, TellHowManyChanceMade) {
  std::mt19937_64 random(2);
  std::vector<double> mz = {600.0};
  std::vector<double> intensity = {50.0};
  while (mz.size() < 4000) {
    mz.push_back(mz.back() + 0.03 + std::exponential_distribution(50.0)(random));
    intensity.push_back(50.0 + std::exponential_distribution(0.1)(random));
  }
  Edits none("in", {}, {}, "options");
  ChargeStates states("in", DefaultWishes(), none);
  LoadedSpectrum loaded = PeptideList();
  loaded.spectrum = TslTool::PeakListSpectrum(mz, intensity);
  states.Run(loaded);
  EXPECT_THAT(states.Note(),
              testing::ContainsRegex("; [0-9]+ of lists left out, as good ones come about by chance"));
}

TEST(ChargeStates, WarnOfNucleicAcidsThatAreTakenForProteins) {
  const auto dna = TslMath::ParseFormula("C39 H50 N15 O22 P3");
  const auto pattern = TslMath::MakeIsotopePattern(TslMath::ScaleToMass(dna, 6200.0), {1e-6, 0.02});
  std::vector<double> mz;
  std::vector<double> intensity;
  for (const int charge : {8, 7, 6}) {
    for (std::size_t i = 0; i < pattern.probability.size(); ++i) {
      mz.push_back((6200.0 + pattern.mass[i]) / charge + kProton);
      intensity.push_back(1000.0 * pattern.probability[i]);
    }
  }
  Edits none("in", {}, {}, "options");
  ChargeStates states("in", DefaultWishes(), none);
  LoadedSpectrum loaded = PeptideList();
  loaded.spectrum = TslTool::PeakListSpectrum(mz, intensity);
  states.Run(loaded);
  EXPECT_THAT(states.Warnings(), ElementsAre(HasSubstr("have the isotopes of nucleic acids")));
}

TEST(ChargeStates, LeaveOutWhatIsOutsideTheMassesAskedFor) {
  DeconWishes wishes = DefaultWishes();
  wishes.mass = TslTool::RealRange{1600.0, 20000.0};
  EXPECT_TRUE(TslTool::SeriesRows(WithSeries(PeptideList(), wishes)).empty());
  wishes.mass = TslTool::RealRange{1400.0, 20000.0};
  EXPECT_EQ(TslTool::SeriesRows(WithSeries(PeptideList(), wishes)).size(), 1U);
}

TEST(ChargeStates, MakeTheEditsOfTheirScan) {
  Edits edits("in", {{4, {{SeriesEdit::RemoveSeries, "RA", {}}}}, {5, {}}}, {}, "options");
  ChargeStates states("in", DefaultWishes(), edits);
  LoadedSpectrum loaded = PeptideList();
  states.Run(loaded);
  EXPECT_TRUE(TslTool::SeriesRows(loaded).empty());
  EXPECT_THAT(edits.Unused(), ElementsAre("scan 5 has edits and was not evaluated"));
}

TEST(ChargeStates, NameTheScanOfAnEditThatCannotBeMade) {
  try {
    WithSeries(PeptideList(), DefaultWishes(), {{SeriesEdit::RemoveSeries, "UC", {}}});
    FAIL();
  } catch (const TslTool::InputError& e) {
    EXPECT_STREQ(e.what(), "proteins: scan 4: series UC cannot be removed: there is no such series");
  }
}

TEST(ChargeStates, EditOneSpectrumAlone) {
  Edits edits("in", {}, {{SeriesEdit::RemoveSeries, "RA", {}}}, "--add-series and the like");
  ChargeStates states("in", DefaultWishes(), edits);
  LoadedSpectrum loaded = PeptideList();
  states.Run(loaded);
  try {
    states.Run(loaded);
    FAIL();
  } catch (const TslTool::InputError& e) {
    EXPECT_THAT(e.what(), HasSubstr("--add-series and the like edit one spectrum, and there are several"));
  }
}

// Two charges that run together: as one peak they are off, taken apart they belong to their proteins.
TEST(ChargeStates, WorkOnPeaksThatWereTakenApart) {
  constexpr Protein kNear = {16951.5 + 13.0, 12, 22, 5000.0};
  DeconWishes wishes = DefaultWishes();
  wishes.params.UseOPD = true;
  const auto loaded = WithSeries(WithProteinPeaks(CountedProteins({kLarge, kNear})), wishes);
  std::vector<double> masses;
  for (const auto& row : TslTool::SeriesRows(loaded)) masses.push_back(row.mass);
  EXPECT_THAT(masses, testing::Contains(testing::DoubleNear(kLarge.mass, 0.3)));
  EXPECT_THAT(masses, testing::Contains(testing::DoubleNear(kNear.mass, 0.5)));
}

}  // namespace
}  // namespace tests
