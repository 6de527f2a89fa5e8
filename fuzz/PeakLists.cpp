// Peak lists and preferences of charge state deconvolution: any numbers. What is found names peaks of the
// list, with finite masses; preferences that say nothing are refused.

#include <fuzz/Input.h>
#include <tslbl/closed/engines/resolved/ResolvedSeries.h>
#include <tslbl/closed/math/chargestate/MassPlot.h>
#include <tslbl/closed/math/chargestate/UnresolvedSeries.h>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <stdexcept>
#include <vector>

using namespace TslMath;
using namespace fuzz;

namespace {

constexpr std::size_t kMostPeaks = 150;

// Mostly as from an instrument.
double Number(Input& input, double from, double to) {
  if (input.Below(8) == 0) return input.Real();
  return from + (to - from) * input.Take<std::uint16_t>() / 65535.0;
}

std::vector<IonPeak> TakePeaks(Input& input) {
  std::vector<IonPeak> peaks(input.Take<std::uint8_t>() % kMostPeaks);
  for (IonPeak& peak : peaks) {
    peak.mz = Number(input, 500, 1000);
    peak.intensity = peak.area = Number(input, 0, 1000);
    peak.signalToNoise = peak.intensity;
    peak.resolution = Number(input, 500, 10000);
  }
  return peaks;
}

UnresolvedPrefs TakeUnresolvedPrefs(Input& input) {
  UnresolvedPrefs prefs;
  prefs.minMass = Number(input, 100, 5000);
  prefs.maxMass = Number(input, 5000, 100000);
  prefs.carrierMass = Number(input, -2, 40);
  prefs.minSeriesSize = static_cast<std::int32_t>(input.Below(8));
  prefs.maxGaps = static_cast<std::int32_t>(input.Below(12)) - 1;
  prefs.accuracy = Number(input, 1, 10000);
  return prefs;
}

ResolvedPrefs TakeResolvedPrefs(Input& input) {
  ResolvedPrefs prefs;
  prefs.leastSignalToNoise = Number(input, 0, 10);
  prefs.lowestResolution = Number(input, 0, 1000);
  prefs.highestResolution = Number(input, 1000, 100000);
  prefs.leastScore = Number(input, 0, 1);
  prefs.maxCharge = static_cast<std::int32_t>(input.Below(12));
  prefs.maxIsotopeGaps = static_cast<std::int32_t>(input.Below(5)) - 1;
  prefs.accuracy = Number(input, 1, 10000);
  prefs.carrierMass = Number(input, -2, 40);
  prefs.massAccuracy = Number(input, 0, 10000);
  prefs.maxChargeGaps = static_cast<std::int32_t>(input.Below(4));
  prefs.score = input.Below(2) == 0 ? PatternScore::SumOfDeviations : PatternScore::CrossCorrelation;
  prefs.mean = input.Below(2) == 0 ? MassMean::Plain : MassMean::Weighted;
  return prefs;
}

void Check(const ChargeSeries& series, std::size_t peaks) {
  Require(std::isfinite(series.mass) && std::isfinite(series.standardError), "a mass is finite");
  Require(!series.members.empty(), "a series has members");
  for (const SeriesMember& member : series.members)
    Require(member.peak < peaks && member.charge >= 1 && std::isfinite(member.mass), "a member is a peak");
}

void Check(const Species& species, std::size_t peaks) {
  Require(std::isfinite(species.monoMass), "a mass is finite");
  Require(!species.states.empty(), "a species has states");
  for (const IsotopeState& state : species.states) {
    Require(state.charge >= 1 && !state.isotopes.empty(), "a state has isotopes");
    Require(state.score >= -1e-9 && state.score <= 1 + 1e-9, "a score is from 0 to 1");
    for (const MatchedIsotope& isotope : state.isotopes)
      Require(isotope.peak < peaks, "an isotope is a peak");
  }
}

// False if it refuses the preferences.
template <class Find>
bool Runs(Find find) {
  try {
    find();
    return true;
  } catch (const std::invalid_argument& error) {
    Require(error.what()[0] != '\0', "a refusal has a reason");
    return false;
  }
}

void CheckCurve(const std::vector<IonPeak>& peaks, std::int32_t charge) {
  std::vector<double> x, y;
  for (const IonPeak& peak : peaks) {
    x.push_back(peak.mz);
    y.push_back(peak.intensity);
  }
  const MassCurve curve = SumOfPeaks(std::vector{ChargedProfile{x, y, 1.007, charge}});
  Require(curve.mass.size() == curve.density.size(), "a curve has as many of both");
  for (std::size_t i = 0; i < curve.mass.size(); ++i) {
    Require(std::isfinite(curve.density[i]), "a curve is finite");
    Require(i == 0 || curve.mass[i] > curve.mass[i - 1], "masses ascend");
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  Input input(data, size);
  const UnresolvedPrefs unresolved = TakeUnresolvedPrefs(input);
  const ResolvedPrefs resolved = TakeResolvedPrefs(input);
  const double mass = Number(input, 100, 20000);
  const std::vector<std::size_t> seeds = {input.Below(20), input.Below(20), input.Below(255)};
  const auto charge = static_cast<std::int32_t>(input.Below(40));
  const std::vector<IonPeak> peaks = TakePeaks(input);

  Runs([&] {
    for (const ChargeSeries& series : FindAllSeries(peaks, unresolved)) Check(series, peaks.size());
    if (const auto found = FindSeriesOf(peaks, unresolved, seeds)) Check(*found, peaks.size());
    if (const auto found = RecalculateSeries(peaks, unresolved, mass, seeds)) Check(*found, peaks.size());
  });
  Runs([&] {
    for (const Species& species : FindAllSpecies(peaks, resolved)) Check(species, peaks.size());
    if (const auto found = FindSpeciesOf(peaks, resolved, seeds)) Check(*found, peaks.size());
    if (const auto found = RecalculateSpecies(peaks, resolved, mass, seeds)) Check(*found, peaks.size());
  });
  CheckCurve(peaks, charge);
  return 0;
}
