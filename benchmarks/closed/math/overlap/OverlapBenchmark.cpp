// Groups of overlapped peaks: how many there are, and the fit with all that belongs to it. Arguments: peaks,
// points. us_per_group is the median of many passes over 50 groups.
#include <tslbl/closed/math/overlap/FitPeaks.h>
#include <tslbl/closed/math/overlap/InitialEstimates.h>

#include <Spectra.h>

#include <numeric>

namespace {

struct Group {
  std::vector<double> x;
  std::vector<double> y;
  std::vector<std::int32_t> apexes;  // off by up to 0.15 FWHM
  double a3;
};

constexpr double kSpacing = 1.25;  // FWHM
constexpr double kMargin = 2.0;    // FWHM
constexpr double kFwhmPerA3 = 2.3548200450309493;

// Counts of peaks of 3000 to 10 000 ions at the top over a level of 55.
Group MakeGroup(std::size_t peaks, std::size_t points, std::mt19937_64& random) {
  std::uniform_real_distribution<double> between(-0.15, 0.15);
  std::uniform_real_distribution<double> logHeight(std::log(3000.0), std::log(10000.0));
  const double fwhm = static_cast<double>(points) / (kSpacing * static_cast<double>(peaks - 1) + 2 * kMargin);
  Group group{std::vector<double>(points), std::vector<double>(points, 55.0), {}, 1.1 * fwhm / kFwhmPerA3};
  std::iota(group.x.begin(), group.x.end(), 0.0);
  for (std::size_t k = 0; k < peaks; ++k) {
    const double centre = (kMargin + kSpacing * static_cast<double>(k)) * fwhm;
    const double height = std::exp(logHeight(random));
    for (std::size_t i = 0; i < points; ++i) {
      const double u = (group.x[i] - centre) / fwhm * kFwhmPerA3;
      group.y[i] += height * std::exp(-0.5 * u * u);
    }
    group.apexes.push_back(static_cast<std::int32_t>(std::lround(centre + fwhm * between(random))));
  }
  for (double& value : group.y) value = std::poisson_distribution<int>(value)(random);
  return group;
}

template <class Work>
void Measure(benchmark::State& state, Work work) {
  std::mt19937_64 random(1);
  std::vector<Group> groups;
  for (int k = 0; k < 50; ++k)
    groups.push_back(MakeGroup(static_cast<std::size_t>(state.range(0)),
                               static_cast<std::size_t>(state.range(1)), random));
  std::vector<double> times;
  for (auto _ : state) {
    times.push_back(Spectra::Nanoseconds([&] {
                      for (const Group& group : groups) work(group);
                    }) /
                    50);
  }
  state.counters["us_per_group"] = Spectra::Median(times) / 1000;
  state.counters["least_us"] = *std::min_element(times.begin(), times.end()) / 1000;
}

void OverlapEstimates(benchmark::State& state) {
  Measure(state,
          [](const Group& group) { benchmark::DoNotOptimize(TslMath::InitialEstimates(true, 3, group.y)); });
}

void Fit(benchmark::State& state, bool hookeJeeves) {
  std::vector<TslMath::FittedGaussian> results(static_cast<std::size_t>(state.range(0)));
  Measure(state, [&](const Group& group) {
    benchmark::DoNotOptimize(
        TslMath::FitPeaks(hookeJeeves, group.x, group.y, group.apexes, 55, group.a3, results));
  });
}

void OverlapLevenbergMarquardt(benchmark::State& state) { Fit(state, false); }
void OverlapHookeJeeves(benchmark::State& state) { Fit(state, true); }

void Sizes(benchmark::internal::Benchmark* which) { which->Args({2, 60})->Args({5, 110})->Args({5, 200}); }

BENCHMARK(OverlapEstimates)->Apply(Sizes);
BENCHMARK(OverlapLevenbergMarquardt)->Apply(Sizes);
BENCHMARK(OverlapHookeJeeves)->Apply(Sizes);

}  // namespace
