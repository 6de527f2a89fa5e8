#include <tool/commands/decon/DeconOptions.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <utility>
#include <vector>

namespace tests {
namespace {

using TslBL::ChargeStateParams;
using TslBL::ResolvedParams;
using TslTool::DeconWishes;

using Given = std::vector<std::pair<std::string, std::vector<std::string>>>;

DeconWishes WishesOf(const Given& given, const std::optional<ChargeStateParams>& ofChain = {}) {
  TslTool::DeconOptions decon;
  TslTool::Options options;
  decon.Declare(options);
  for (const auto& [name, values] : given)
    for (TslTool::Option& option : options.List())
      if (std::ranges::count(option.names, name) > 0) {
        option.take(values);
        option.given = true;
      }
  return decon.Wishes(options, ofChain);
}

std::string Failure(const Given& given) {
  try {
    WishesOf(given);
  } catch (const TslTool::UsageError& e) {
    return e.what();
  }
  return "";
}

TEST(DeconOptions, AreThePresetOfTheLibraryButForWhatSuitsAnySpectrum) {
  const DeconWishes wishes = WishesOf({});
  ChargeStateParams expected;
  expected.MZAssign = ChargeStateParams::Centroid;
  expected.PkIntensity = ChargeStateParams::Area;
  expected.MaxSpecies = 1000;
  expected.Resolved.MMFunction = ResolvedParams::WeightedAvg;
  expected.Resolved.MinResolution = 0;
  expected.Resolved.MaxResolution = 2147483647;
  expected.Unresolved.MaxDeconMass = 1000000;
  EXPECT_EQ(wishes.params, expected);
  EXPECT_FALSE(wishes.hasAdduct || wishes.hasMaxCharge || wishes.hasIsotopeAccuracy ||
               wishes.hasChargeAccuracy || wishes.mass);
}

TEST(DeconOptions, AreThoseOfAChainAsTheyStand) {
  ChargeStateParams params;
  params.MaxSpecies = 3;
  const DeconWishes wishes = WishesOf({}, params);
  EXPECT_EQ(wishes.params, params);
  EXPECT_TRUE(wishes.hasAdduct && wishes.hasMaxCharge && wishes.hasIsotopeAccuracy &&
              wishes.hasChargeAccuracy);
}

TEST(DeconOptions, ExcludeChargeStatesOfAChain) {
  for (const auto& [name, value] :
       {std::pair{"--mass", "5000-9000"}, {"--max-charge", "3"}, {"--min-charges", "4"}}) {
    try {
      WishesOf({{name, {value}}}, ChargeStateParams());
      ADD_FAILURE() << name;
    } catch (const TslTool::UsageError& e) {
      EXPECT_EQ(e.what(), std::string(name) + " and a --chain with charge states exclude each other");
    }
  }
}

TEST(DeconOptions, SetEachParameter) {
  const DeconWishes wishes = WishesOf(
      {{"--resolved", {}},          {"--mass", {"5000.5-30000.2"}},  {"--decon-range", {"600-900"}},
       {"--adduct", {"sodium"}},    {"--max-gaps", {"2"}},           {"--max-species", {"7"}},
       {"--mz-of", {"maximum"}},    {"--intensity", {"amplitude"}},  {"--overlap", {}},
       {"--max-charge", {"9"}},     {"--isotope-accuracy", {"20"}},  {"--charge-accuracy", {"40"}},
       {"--min-score", {"0.7"}},    {"--score", {"correlation"}},    {"--mono", {"plain"}},
       {"--molecule", {"rnagine"}}, {"--atom-threshold", {"1e-4"}},  {"--molecule-threshold", {"1e-3"}},
       {"--isotope-gaps", {"1"}},   {"--resolution", {"2000-9000"}}, {"--isotope-sn", {"5"}},
       {"--min-charges", {"3"}},    {"--series-accuracy", {"300"}}});
  ChargeStateParams expected;
  expected.Method = ChargeStateParams::ResolvedOnly;
  expected.FullRange = false;
  expected.StartMz = 600;
  expected.EndMz = 900;
  expected.UseOPD = true;
  expected.AdductIon = TslBL::AdductIonInfo::Sodium;
  expected.MaxCSGaps = 2;
  expected.MaxSpecies = 7;
  expected.Resolved.ScoreFunction = ResolvedParams::CrossCorr;
  expected.Resolved.MinScore = 0.7;
  expected.Resolved.AvgMolecule = TslBL::AvgMoleculeInfo::RNAgine;
  expected.Resolved.AtomProbThresh = 1e-4;
  expected.Resolved.MoleProbThresh = 1e-3;
  expected.Resolved.MaxIsoGaps = 1;
  expected.Resolved.MaxCS = 9;
  expected.Resolved.CsAccuracy = 40;
  expected.Resolved.MinResolution = 2000;
  expected.Resolved.MaxResolution = 9000;
  expected.Resolved.MinSN = 5;
  expected.Resolved.MzAccuracy = 20;
  expected.Unresolved.MinCS = 3;
  expected.Unresolved.MzAccuracy = 300;
  expected.Unresolved.MinDeconMass = 5000;
  expected.Unresolved.MaxDeconMass = 30001;
  EXPECT_EQ(wishes.params, expected);
  EXPECT_TRUE(wishes.hasAdduct && wishes.hasMaxCharge && wishes.hasIsotopeAccuracy &&
              wishes.hasChargeAccuracy);
  EXPECT_EQ(wishes.mass->from, 5000.5);
  EXPECT_EQ(wishes.mass->to, 30000.2);
  EXPECT_TRUE(wishes.hasOverlap);
  EXPECT_FALSE(WishesOf({}).hasOverlap);
  EXPECT_TRUE(WishesOf({{"--no-overlap", {}}}).hasOverlap);
  EXPECT_FALSE(WishesOf({{"--no-overlap", {}}}).params.UseOPD);
  EXPECT_EQ(WishesOf({{"--unresolved", {}}}).params.Method, ChargeStateParams::UnresolvedOnly);
  EXPECT_EQ(WishesOf({{"--both", {}}}).params.Method, ChargeStateParams::ResAndUnres);
}

TEST(DeconOptions, NameWhatIsWrongAndWhatIsAllowed) {
  EXPECT_EQ(Failure({{"--resolved", {}}, {"--both", {}}}),
            "--resolved, --unresolved and --both exclude each other");
  EXPECT_EQ(Failure({{"--overlap", {}}, {"--no-overlap", {}}}),
            "--overlap and --no-overlap exclude each other");
  EXPECT_EQ(Failure({{"--mass", {"30000-20000"}}}), "--mass: \"30000-20000\" ends before it begins");
  EXPECT_EQ(Failure({{"--mass", {"50-2000"}}}), "--mass: 50-2000 is no range within 100 to 100000000");
  EXPECT_EQ(Failure({{"--max-gaps", {"11"}}}), "--max-gaps: 11 is not a whole number from 0 to 10");
  EXPECT_EQ(Failure({{"--max-gaps", {"-1"}}}), "--max-gaps: -1 is not a whole number from 0 to 10");
  EXPECT_EQ(Failure({{"--max-gaps", {"two"}}}), "--max-gaps: two is not a whole number from 0 to 10");
  EXPECT_EQ(Failure({{"--mass", {"5"}}}), "--mass: 5 is one number where a range LOW-HIGH is wanted");
  EXPECT_EQ(Failure({{"--resolution", {"5"}}}),
            "--resolution: 5 is one number where a range LOW-HIGH is wanted");
  EXPECT_EQ(Failure({{"--max-species", {"0"}}}), "--max-species: 0 is not a whole number from 1 to 10000");
  EXPECT_EQ(Failure({{"--max-charge", {"101"}}}), "--max-charge: 101 is not a whole number from 1 to 100");
  EXPECT_EQ(Failure({{"--isotope-accuracy", {"0"}}}),
            "--isotope-accuracy: 0 is not a whole number from 1 to 10000");
  EXPECT_EQ(Failure({{"--charge-accuracy", {"0"}}}),
            "--charge-accuracy: 0 is not a whole number from 1 to 10000");
  EXPECT_EQ(Failure({{"--min-score", {"1.5"}}}), "--min-score: 1.5 is not from 0 to 1");
  EXPECT_EQ(Failure({{"--atom-threshold", {"-1"}}}), "--atom-threshold: -1 is not from 0 to 1");
  EXPECT_EQ(Failure({{"--molecule-threshold", {"2"}}}), "--molecule-threshold: 2 is not from 0 to 1");
  EXPECT_EQ(Failure({{"--isotope-gaps", {"4"}}}), "--isotope-gaps: 4 is not a whole number from 0 to 3");
  EXPECT_EQ(Failure({{"--isotope-sn", {"0"}}}), "--isotope-sn: 0 is not a whole number from 1 to 100");
  EXPECT_EQ(Failure({{"--min-charges", {"1"}}}), "--min-charges: 1 is not a whole number from 2 to 10");
  EXPECT_EQ(Failure({{"--series-accuracy", {"0"}}}),
            "--series-accuracy: 0 is not a whole number from 1 to 10000");
}

}  // namespace
}  // namespace tests
