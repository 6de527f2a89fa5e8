#include <tool/commands/decon/MoleculeCheck.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <tool/io/PeakListSpectrum.h>
#include <tslbl/closed/engines/Formula.h>
#include <tslbl/closed/engines/IsotopePattern.h>
#include <string>
#include <vector>

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using TslBL::AvgMoleculeInfo;
using TslBL::DeconSpectrum;
using TslTool::MoleculeCheck;

namespace {

// Sums of amino acids and of nucleotides in equal parts, not the average molecules themselves.
constexpr const char* kProtein = "C107 H159 N29 O30 S2";
constexpr const char* kDna = "C39 H49 N15 O24 P4";
constexpr double kProton = 1.00727646688;

struct Molecule {
  std::string unit;
  double mass = 8000.0;
  double intensity = 1000.0;
  int miscount = 0;             // isotopes by which its mass is given too low
  double leastProbable = 0.01;  // isotopes rarer than this are not seen
};

// Each at charges 5 to 7.
DeconSpectrum With(const std::vector<Molecule>& molecules,
                   AvgMoleculeInfo::AvgMolecule asked = AvgMoleculeInfo::Averagine) {
  std::vector<double> mz;
  std::vector<double> intensity;
  std::vector<TslBL::CSSeriesInfo> all;
  for (const Molecule& molecule : molecules) {
    const auto pattern = TslMath::MakeIsotopePattern(
        TslMath::ScaleToMass(TslMath::ParseFormula(molecule.unit), molecule.mass));
    TslBL::CSSeriesInfo& series = all.emplace_back();
    series.Series = {TslBL::CSSeries::Resolved, static_cast<std::uint32_t>(all.size())};
    series.AvgMass = molecule.mass - molecule.miscount * 1.00235;
    for (const int charge : {7, 6, 5}) {
      for (std::size_t i = 0; i < pattern.probability.size(); ++i) {
        if (pattern.probability[i] < molecule.leastProbable) continue;
        TslBL::CSSeriesPeakInfo& member = series.Peaks.emplace_back();
        member.PeakId = static_cast<std::uint32_t>(mz.size());
        member.Charge = static_cast<std::uint32_t>(charge);
        member.MZ = (molecule.mass + pattern.mass[i]) / charge + kProton;
        mz.push_back(member.MZ);
        intensity.push_back(molecule.intensity * pattern.probability[i]);
      }
    }
  }
  DeconSpectrum spectrum(*TslTool::PeakListSpectrum(mz, intensity));
  spectrum.Series = all;
  spectrum.CSParams.Resolved.AvgMolecule = asked;
  return spectrum;
}

std::vector<std::string> WarningsOf(const DeconSpectrum& spectrum) {
  MoleculeCheck check;
  check.Look(spectrum, 7);
  return check.Warnings();
}

TEST(MoleculeCheck, TellsNucleicAcidsThatAreTakenForProteins) {
  EXPECT_THAT(
      WarningsOf(With({{kDna}})),
      ElementsAre("1 of 1 resolved molecules above 3000 Da have the isotopes of nucleic acids (first at "
                  "scan 7), and masses may be off by whole isotopes; --molecule dnagine or rnagine "
                  "counts them"));
}

TEST(MoleculeCheck, TellsProteinsThatAreTakenForNucleicAcids) {
  for (const auto asked : {AvgMoleculeInfo::DNAgine, AvgMoleculeInfo::RNAgine})
    EXPECT_THAT(
        WarningsOf(With({{kProtein}}, asked)),
        ElementsAre(HasSubstr("of proteins (first at scan 7), and masses may be off by whole isotopes; "
                              "--molecule averagine counts them")));
}

TEST(MoleculeCheck, SaysNothingOfTheKindThatWasAskedFor) {
  for (const double mass : {3500.0, 8000.0, 14000.0}) {
    EXPECT_THAT(WarningsOf(With({{kProtein, mass}})), IsEmpty()) << mass;
    EXPECT_THAT(WarningsOf(With({{kDna, mass}}, AvgMoleculeInfo::DNAgine)), IsEmpty()) << mass;
    EXPECT_THAT(WarningsOf(With({{kDna, mass}}, AvgMoleculeInfo::RNAgine)), IsEmpty()) << mass;
  }
}

TEST(MoleculeCheck, KnowsTheKindThoughIsotopesAreCountedWrongly) {
  for (const int miscount : {-2, -1, 1, 2}) {
    EXPECT_THAT(WarningsOf(With({{kProtein, 8000.0, 1000.0, miscount}})), IsEmpty()) << miscount;
    EXPECT_THAT(WarningsOf(With({{kDna, 8000.0, 1000.0, miscount}})), Not(IsEmpty())) << miscount;
  }
}

TEST(MoleculeCheck, GoesByMostOfTheIntensity) {
  EXPECT_THAT(WarningsOf(With({{kProtein, 8000.0, 1000.0}, {kDna, 6000.0, 900.0}})), IsEmpty());
  EXPECT_THAT(WarningsOf(With({{kProtein, 8000.0, 1000.0}, {kDna, 6000.0, 1100.0}})),
              ElementsAre(HasSubstr("1 of 2 resolved molecules")));
}

TEST(MoleculeCheck, NamesTheFirstScan) {
  MoleculeCheck check;
  for (const std::uint32_t scan : {9U, 4U, 6U}) check.Look(With({{kDna}}), scan);
  EXPECT_THAT(check.Warnings(), ElementsAre(HasSubstr("3 of 3 resolved molecules above 3000 Da")));
  EXPECT_THAT(check.Warnings(), ElementsAre(HasSubstr("(first at scan 4)")));
}

TEST(MoleculeCheck, HasNoPartOfLightMoleculesAndOfFewIsotopes) {
  EXPECT_THAT(WarningsOf(With({{kDna, 2900.0}})), IsEmpty());
  EXPECT_THAT(WarningsOf(With({{kDna, 3100.0}})), Not(IsEmpty()));
  EXPECT_THAT(WarningsOf(With({{kDna, 3100.0, 1000.0, 0, 0.1}})), IsEmpty());
}

TEST(MoleculeCheck, HasNoPartOfUnresolvedSeries) {
  DeconSpectrum spectrum = With({{kDna}});
  spectrum.Series[0].Series.Type = TslBL::CSSeries::Unresolved;
  EXPECT_THAT(WarningsOf(spectrum), IsEmpty());
}

TEST(MoleculeCheck, SaysNothingOfAMoleculeWithAFormulaOfItsOwn) {
  EXPECT_THAT(WarningsOf(With({{kDna}}, AvgMoleculeInfo::Custom)), IsEmpty());
}

}  // namespace
