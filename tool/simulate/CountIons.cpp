#include <tool/simulate/CountIons.h>

#include <random>
#include <utility>

namespace TslTool {
namespace {

// A distribution around 0 is none.
double PoissonCount(double expected, std::mt19937_64& random) {
  if (expected <= 0.0) return 0.0;
  return static_cast<double>(std::poisson_distribution<std::int64_t>(expected)(random));
}

}  // namespace

TslBL::RawSpectrum CountIons(std::vector<double> expected, std::uint64_t seed, std::uint32_t index) {
  std::seed_seq seeds{static_cast<std::uint32_t>(seed), static_cast<std::uint32_t>(seed >> 32), index};
  std::mt19937_64 random(seeds);
  TslBL::RawSpectrum raw;
  raw.counts = std::move(expected);
  for (double& count : raw.counts) {
    count = PoissonCount(count, random);
    raw.info.TIC += count;
  }
  return raw;
}

}  // namespace TslTool
