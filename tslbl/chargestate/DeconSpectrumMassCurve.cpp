// The mass curve of a deconvolved spectrum: from masses to its points, from its points to series.

#include <tslbl/chargestate/DeconSpectrum.h>

#include <algorithm>
#include <cmath>

namespace TslBL {

std::uint32_t DeconSpectrum::QCSMassCurveIdx(double mass) const {
  if (MassX.empty() || mass <= MassX.front()) return 0;
  const auto n = static_cast<std::int64_t>(MassX.size());
  if (mass >= MassX.back()) return static_cast<std::uint32_t>(n - 1);
  std::int64_t low = 0;
  std::int64_t high = n;
  // On an axis that does not ascend, the search may come to the place behind the last point.
  for (std::int64_t middle = n / 2; low <= high && middle < n; middle = low + (high - low) / 2) {
    const double at = MassX[static_cast<std::size_t>(middle)];
    if (std::abs(at - mass) <= 0.000001) return static_cast<std::uint32_t>(middle);
    if (at < mass) {
      low = middle + 1;
    } else {
      high = middle - 1;
    }
  }
  // A NaN leads below the first point.
  return static_cast<std::uint32_t>(std::clamp<std::int64_t>(high, 0, n - 1));
}

bool DeconSpectrum::QCSSeriesIndexFromMassIndex(std::uint32_t massIndex, std::uint32_t& index) const {
  if (massIndex > MassX.size() || Series.empty()) return false;
  if (Series.size() == 1) {
    index = 0;
    return true;
  }
  if (massIndex == MassX.size()) return false;
  double best = std::abs(MassX.back() - MassX.front());
  for (std::uint32_t i = 0; i < Series.size(); ++i) {
    const double distance = std::abs(Series[i].AvgMass - MassX[massIndex]);
    if (!(distance < best)) continue;
    best = distance;
    index = i;
  }
  return true;
}

}  // namespace TslBL
