// Charge states in peak lists of 100 to 800 peaks: proteins with unresolved isotopes, masses up to 120 000
// Da, and resolved isotopes of molecules of charge 1 to 20; and the curve over mass of a series. ms_per_list
// is the median of many passes over ten lists.
#include <tslbl/closed/engines/resolved/ResolvedSeries.h>
#include <tslbl/closed/math/chargestate/MassPlot.h>
#include <tslbl/closed/math/chargestate/UnresolvedSeries.h>

#include <Spectra.h>

namespace {

using TslMath::IonPeak;
using Random = std::mt19937_64;

constexpr double kProton = 1.00727646688;
constexpr int kLists = 10;

double Between(Random& random, double from, double to) {
  return std::uniform_real_distribution<double>(from, to)(random);
}

// One protein of 20 peaks in noise.
std::vector<IonPeak> Unresolved(std::size_t count, Random& random) {
  const double mass = Between(random, 15000, 50000);
  const int middle = static_cast<int>(mass / 900);
  std::vector<IonPeak> peaks;
  for (int charge = std::max(8, middle - 10); charge < std::max(8, middle - 10) + 20; ++charge) {
    const double off = (charge - middle) / 5.0;
    const double ions = 1e5 * std::exp(-0.5 * off * off);
    peaks.push_back(
        {mass / charge + kProton + 0.05 * std::normal_distribution<double>()(random), ions, ions, 100, 1500});
  }
  while (peaks.size() < count) {
    const double ions = 1000 * std::exp(std::exponential_distribution<double>(0.8)(random));
    peaks.push_back({Between(random, 500, 2000), ions, ions, 30, 1500});
  }
  return peaks;
}

// Molecules of charge 1 to 20, a fifth of the peaks noise.
std::vector<IonPeak> Resolved(std::size_t count, Random& random) {
  const TslMath::Composition unit = TslMath::ParseFormula("C117 H184 N32 O35 S1");
  std::vector<IonPeak> peaks;
  while (5 * peaks.size() < 4 * count) {
    const int charge = std::uniform_int_distribution<int>(1, 20)(random);
    const auto pattern =
        TslMath::MakeIsotopePattern(TslMath::ScaleToMass(unit, charge * Between(random, 500, 1500)));
    const double ions = Between(random, 1000, 30000);
    for (std::size_t k = 0; k < pattern.probability.size(); ++k) {
      const double mean = ions * pattern.probability[k];
      const double mz = (pattern.monoMass + pattern.mass[k]) / charge + kProton;
      if (mean > 10)
        peaks.push_back(
            {mz + 0.001 * std::normal_distribution<double>()(random), mean, mean, mean / 3, 30000});
    }
  }
  while (peaks.size() < count) peaks.push_back({Between(random, 500, 1500), 20, 20, 7, 30000});
  return peaks;
}

template <class Make, class Work>
void Measure(benchmark::State& state, Make make, Work work) {
  Random random(1);
  std::vector<std::vector<IonPeak>> lists;
  std::size_t peaks = 0;
  for (int k = 0; k < kLists; ++k) {
    lists.push_back(make(static_cast<std::size_t>(state.range(0)), random));
    peaks += lists.back().size();
  }
  std::vector<double> times;
  for (auto _ : state) {
    times.push_back(Spectra::Nanoseconds([&] {
                      for (const auto& list : lists) work(list);
                    }) /
                    kLists);
  }
  state.counters["ms_per_list"] = Spectra::Median(times) / 1e6;
  state.counters["least_ms"] = *std::min_element(times.begin(), times.end()) / 1e6;
  state.counters["peaks"] = static_cast<double>(peaks) / kLists;
}

void UnresolvedSeries(benchmark::State& state) {
  TslMath::UnresolvedPrefs prefs;
  prefs.minMass = 3000;
  prefs.maxMass = 120000;
  prefs.carrierMass = kProton;
  Measure(state, Unresolved,
          [&](const auto& list) { benchmark::DoNotOptimize(TslMath::FindAllSeries(list, prefs)); });
}

void ResolvedSeries(benchmark::State& state) {
  TslMath::ResolvedPrefs prefs;
  prefs.highestResolution = 65000;
  prefs.maxCharge = 20;
  prefs.accuracy = 20;
  prefs.carrierMass = kProton;
  Measure(state, Resolved,
          [&](const auto& list) { benchmark::DoNotOptimize(TslMath::FindAllSpecies(list, prefs)); });
}

// Twelve peaks of 60 points.
void MassCurveOfSeries(benchmark::State& state) {
  std::vector<double> x, y;
  for (int i = 0; i < 60; ++i) {
    x.push_back(1000 + 0.05 * i);
    y.push_back(1000 * std::exp(-0.5 * (i - 30) * (i - 30) / 25.0));
  }
  std::vector<TslMath::ChargedProfile> peaks;
  for (std::int32_t charge = 10; charge < 22; ++charge) peaks.push_back({x, y, kProton, charge});
  for (auto _ : state) benchmark::DoNotOptimize(TslMath::SumOfPeaks(peaks));
}

BENCHMARK(UnresolvedSeries)->Arg(100)->Arg(200)->Arg(380)->Arg(800);
BENCHMARK(ResolvedSeries)->Arg(100)->Arg(200)->Arg(400)->Arg(800);
BENCHMARK(MassCurveOfSeries);

}  // namespace
