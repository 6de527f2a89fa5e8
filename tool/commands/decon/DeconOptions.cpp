#include <tool/commands/decon/DeconOptions.h>

#include <fmt/format.h>

#include <tool/commands/decon/AdductText.h>
#include <tool/commands/decon/MoleculeText.h>
#include <charconv>
#include <cmath>
#include <limits>
#include <utility>

namespace TslTool {
namespace {

using TslBL::ChargeStateParams;
using TslBL::ResolvedParams;
using TslBL::UnresolvedParams;

using CountLimits = void (*)(std::uint32_t& min, std::uint32_t& max);
using RealLimits = void (*)(double& min, double& max);

// A protein beyond the highest mass is found as its half or third: so the range is wide unless it is given.
constexpr std::uint32_t kUsualMostMass = 1000000;
// The library's own limit of masses is for small complexes.
constexpr double kLeastMass = 100.0;
constexpr double kMostMass = 100e6;
// A digest has more peptides than the library's preset of 10.
constexpr std::uint32_t kSpecies = 1000;
constexpr std::uint32_t kMostSpecies = 10000;
constexpr std::uint32_t kAnyResolution = std::numeric_limits<std::int32_t>::max();

void Set(const char* option, const std::optional<double>& given, RealLimits limits, double& value) {
  if (!given) return;
  double min = 0.0;
  double max = 0.0;
  limits(min, max);
  if (*given < min || *given > max)
    throw UsageError(fmt::format("{}: {} is not from {} to {}", option, *given, min, max));
  value = *given;
}

// What is no count at all is told the option's limits too.
void Set(const char* option, const std::string& given, CountLimits limits, std::uint32_t& value) {
  if (given.empty()) return;
  std::uint32_t min = 0;
  std::uint32_t max = 0;
  limits(min, max);
  std::uint32_t count = 0;
  const char* last = given.data() + given.size();
  const auto [end, error] = std::from_chars(given.data(), last, count);
  if (error != std::errc() || end != last || count < min || count > max)
    throw UsageError(fmt::format("{}: {} is not a whole number from {} to {}", option, given, min, max));
  value = count;
}

void GetSpeciesLimits(std::uint32_t& min, std::uint32_t& max) {
  min = 1;
  max = kMostSpecies;
}

template <class Value>
std::string Default(const std::string& text, const Value& value) {
  return fmt::format("{} [{}]", text, value);
}

RealRange RangeOf(const char* option, const std::string& text, double least, double most) {
  const RealRange range = ParseRealRange(option, text);
  if (!HasTwoEnds(text))
    throw UsageError(fmt::format("{}: {} is one number where a range LOW-HIGH is wanted", option, text));
  if (range.from < least || range.to > most || !(range.from < range.to))
    throw UsageError(fmt::format("{}: {} is no range within {} to {}", option, text, least, most));
  return range;
}

}  // namespace

void DeconOptions::Declare(Options& options) {
  const ChargeStateParams preset;
  options.Flag("--resolved", resolved_, "Look only for molecules whose isotopes are resolved");
  options.Flag("--unresolved", unresolved_, "Look only for series of charges, a peak for each charge");
  options.Flag("--both", both_,
               "Look for both; which of them goes first the width of the peaks decides [yes]");
  options.Value("--mass LOW-HIGH", mass_,
                fmt::format("Range of neutral masses, Da [{}-{}; of resolved ones any]",
                            preset.Unresolved.MinDeconMass, kUsualMostMass));
  options.Value("--decon-range A-B", range_,
                "Work only on peaks in this range of m/z [all; from 350 on for unresolved series]");
  options.Value("--adduct ION", adduct_,
                "What carries the charge: proton, ammonium, sodium, potassium, loss (of a proton), or its "
                "mass, such as 6.94, or MONOISOTOPIC,AVERAGE [proton; loss where the polarity is negative]");
  options.Value("--max-gaps N", maxGaps_,
                Default("Most charges in a row that a series may lack", preset.MaxCSGaps));
  options.Value("--max-species N", maxSpecies_,
                Default("Most series of either kind, those with most evidence", kSpecies));
  options.Choice("--mz-of PLACE", mzOf_, {"centroid", "maximum"}, "What of a peak is its m/z");
  options.Choice("--intensity OF", intensity_, {"area", "amplitude"}, "What of a peak is its intensity");
  options.Flag(
      "--overlap", overlap_,
      "Take overlapping peaks apart first, as the command overlap does [where isotopes of charge 1 run "
      "into each other, or lines of proteins and no less is found then]");
  options.Flag("--no-overlap", noOverlap_, "Take no peaks apart");
  DeclareResolved(options);
  DeclareUnresolved(options);
}

void DeconOptions::DeclareResolved(Options& options) {
  const ResolvedParams preset;
  options.Value("--max-charge N", maxCharge_,
                "Highest charge of a resolved molecule [as far as isotopes stand apart]");
  options.Value(
      "--isotope-accuracy PPM", isotopeAccuracy_,
      "How far an isotope may lie off its place, ppm of m/z [a quarter of the peaks' width, 10 at least]");
  options.Value(
      "--charge-accuracy PPM", chargeAccuracy_,
      "How far the masses of one molecule's charges may differ, ppm [as --isotope-accuracy, 300 at least]");
  options.Value("--min-score X", minScore_,
                Default("Least likeness of isotopes and their pattern, 0 to 1", preset.MinScore));
  options.Choice("--score HOW", score_, {"deviations", "correlation"},
                 "Likeness by the sum of deviations, or by cross-correlation");
  options.Choice("--mono HOW", mono_, {"weighted", "plain"},
                 "Monoisotopic mass: mean over isotopes and charges weighted by intensity, or plain");
  options.Value(
      "--molecule NAME", molecule_,
      "Average molecule: averagine, dnagine, rnagine or a formula, such as \"C6 H10 O5\" [averagine]");
  options.Value("--atom-threshold X", atomThreshold_,
                Default("Leave out isotopes of an element that are rarer", preset.AtomProbThresh));
  options.Value("--molecule-threshold X", moleculeThreshold_,
                Default("Leave out isotopes of a molecule that are rarer", preset.MoleProbThresh));
  options.Value("--isotope-gaps N", isotopeGaps_,
                Default("Most isotopes in a row that a pattern may lack", preset.MaxIsoGaps));
  options.Value("--resolution A-B", resolution_,
                "Only peaks of this resolution, m/z over width, are isotopes [all]");
  options.Value("--isotope-sn N", isotopeSn_,
                Default("Only peaks of this signal to noise are isotopes", preset.MinSN));
}

void DeconOptions::DeclareUnresolved(Options& options) {
  const UnresolvedParams preset;
  options.Value("--min-charges N", minCharges_,
                Default("Fewest charges of an unresolved series", preset.MinCS));
  options.Value(
      "--series-accuracy PPM", seriesAccuracy_,
      Default("How far a peak may lie off its place in an unresolved series, ppm of m/z", preset.MzAccuracy));
}

DeconWishes DeconOptions::Wishes(const Options& options,
                                 const std::optional<ChargeStateParams>& ofChain) const {
  if (!ofChain) return OfSwitches();
  Options own;
  DeconOptions().Declare(own);
  for (const Option& each : own.List())
    if (options.Given(each.names.front()))
      throw UsageError(each.names.front() + " and a --chain with charge states exclude each other");
  return {.params = *ofChain,
          .hasAdduct = true,
          .hasOverlap = true,
          .hasMaxCharge = true,
          .hasIsotopeAccuracy = true,
          .hasChargeAccuracy = true};
}

DeconWishes DeconOptions::OfSwitches() const {
  DeconWishes wishes;
  ChargeStateParams& params = wishes.params;
  SetMethod(params);
  SetPeaks(params);
  SetResolved(params.Resolved);
  SetUnresolved(wishes);
  if (!adduct_.empty()) SetAdduct("--adduct", adduct_, params);
  wishes.hasAdduct = !adduct_.empty();
  wishes.hasMaxCharge = !maxCharge_.empty();
  wishes.hasIsotopeAccuracy = !isotopeAccuracy_.empty();
  wishes.hasChargeAccuracy = !chargeAccuracy_.empty();
  if (overlap_ && noOverlap_) throw UsageError("--overlap and --no-overlap exclude each other");
  params.UseOPD = overlap_;
  wishes.hasOverlap = overlap_ || noOverlap_;
  return wishes;
}

void DeconOptions::SetMethod(ChargeStateParams& params) const {
  if (resolved_ + unresolved_ + both_ > 1)
    throw UsageError("--resolved, --unresolved and --both exclude each other");
  if (resolved_) params.Method = ChargeStateParams::ResolvedOnly;
  if (unresolved_) params.Method = ChargeStateParams::UnresolvedOnly;
  Set("--max-gaps", maxGaps_, ChargeStateParams::GetMaxChargeStateGapsLimits, params.MaxCSGaps);
  params.MaxSpecies = kSpecies;
  Set("--max-species", maxSpecies_, GetSpeciesLimits, params.MaxSpecies);
}

void DeconOptions::SetPeaks(ChargeStateParams& params) const {
  params.FullRange = range_.empty();
  if (!range_.empty()) {
    const RealRange range = RangeOf("--decon-range", range_, 0.0, std::numeric_limits<double>::max());
    params.StartMz = range.from;
    params.EndMz = range.to;
  }
  params.MZAssign = mzOf_ == "centroid" ? ChargeStateParams::Centroid : ChargeStateParams::MaxAmplitude;
  params.PkIntensity = intensity_ == "area" ? ChargeStateParams::Area : ChargeStateParams::Amplitude;
}

void DeconOptions::SetResolved(ResolvedParams& params) const {
  params.MMFunction = mono_ == "weighted" ? ResolvedParams::WeightedAvg : ResolvedParams::Average;
  params.ScoreFunction = score_ == "correlation" ? ResolvedParams::CrossCorr : ResolvedParams::SumDev;
  Set("--max-charge", maxCharge_, ResolvedParams::GetMaxChargeStateLimits, params.MaxCS);
  Set("--isotope-accuracy", isotopeAccuracy_, ResolvedParams::GetMZAccurayLimits, params.MzAccuracy);
  Set("--charge-accuracy", chargeAccuracy_, ResolvedParams::GetChargeStateAccuracyLimits, params.CsAccuracy);
  Set("--min-score", minScore_, ResolvedParams::GetMinScoreLimits, params.MinScore);
  Set("--atom-threshold", atomThreshold_, ResolvedParams::GetAtomProbThreshLimits, params.AtomProbThresh);
  Set("--molecule-threshold", moleculeThreshold_, ResolvedParams::GetMoleProbThreshLimits,
      params.MoleProbThresh);
  Set("--isotope-gaps", isotopeGaps_, ResolvedParams::GetMaxIsotopeGapsLimits, params.MaxIsoGaps);
  Set("--isotope-sn", isotopeSn_, ResolvedParams::GetMinimumSNLimits, params.MinSN);
  params.MinResolution = 0;
  params.MaxResolution = kAnyResolution;
  if (!resolution_.empty()) {
    const RealRange range = RangeOf("--resolution", resolution_, 0.0, kAnyResolution);
    params.MinResolution = static_cast<std::uint32_t>(std::lround(range.from));
    params.MaxResolution = static_cast<std::uint32_t>(std::lround(range.to));
  }
  SetMolecule("--molecule", molecule_, params);
}

void DeconOptions::SetUnresolved(DeconWishes& wishes) const {
  UnresolvedParams& params = wishes.params.Unresolved;
  Set("--min-charges", minCharges_, UnresolvedParams::GetMinChargeStateLimits, params.MinCS);
  Set("--series-accuracy", seriesAccuracy_, UnresolvedParams::GetMZAccurayLimits, params.MzAccuracy);
  params.MaxDeconMass = kUsualMostMass;
  if (mass_.empty()) return;
  wishes.mass = RangeOf("--mass", mass_, kLeastMass, kMostMass);
  params.MinDeconMass = static_cast<std::uint32_t>(std::floor(wishes.mass->from));
  params.MaxDeconMass = static_cast<std::uint32_t>(std::ceil(wishes.mass->to));
}

}  // namespace TslTool
