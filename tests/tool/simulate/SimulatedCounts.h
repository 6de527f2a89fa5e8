#pragma once
// What is known of the counts of a simulator.

#include <algorithm>
#include <cmath>
#include <memory>
#include <vector>

#include <tool/simulate/Simulator.h>
#include <tslbl/spectrum/CreateSpectrum.h>

namespace tests {

using Counts = std::vector<double>;

constexpr double kRatePerCount = 1e6 / (50.0 * 4);  // 50 us in each of 4 scans

inline Counts MzOf(const TslTool::Simulator& simulator) {
  const TslBL::RawSpectrum raw = simulator.MakeScan(0);
  return std::unique_ptr<TslBL::Spectrum>(TslBL::CreateSpectrum(simulator.Tune(), raw, nullptr))->xAxis;
}

// The mean of the first `scans` scans, and the sum of each point's squared deviations from it.
struct Moments {
  Counts mean, squares;
  int scans;
};

inline Moments MomentsOf(const TslTool::Simulator& simulator, int scans) {
  Moments m{Counts(simulator.MakeScan(0).counts.size()), Counts(simulator.MakeScan(0).counts.size()), scans};
  for (int s = 0; s < scans; ++s) {
    const Counts counts = simulator.MakeScan(static_cast<std::uint32_t>(s)).counts;
    for (std::size_t i = 0; i < counts.size(); ++i) {
      const double delta = counts[i] - m.mean[i];
      m.mean[i] += delta / (s + 1);
      m.squares[i] += delta * (counts[i] - m.mean[i]);
    }
  }
  return m;
}

inline std::size_t IndexOf(const Counts& mz, double at) {
  return static_cast<std::size_t>(std::ranges::lower_bound(mz, at) - mz.begin());
}

}  // namespace tests
