// Groups of overlapped peaks: any points, any places to start from. Estimates are points of the group in
// ascending order; a fit gives finite numbers or none.

#include <fuzz/Input.h>
#include <tslbl/closed/math/overlap/FitPeaks.h>
#include <tslbl/closed/math/overlap/InitialEstimates.h>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <numeric>
#include <vector>

using namespace TslMath;
using namespace fuzz;

namespace {

constexpr std::size_t kMostPoints = 300;
constexpr std::size_t kMostPeaks = 12;

// Counts of two bytes, or any numbers.
std::vector<double> Points(Input& input) {
  const bool areCounts = input.Below(4) != 0;
  std::vector<double> y(1 + input.Take<std::uint16_t>() % kMostPoints);
  for (double& value : y) value = areCounts ? input.Take<std::uint16_t>() : input.Real();
  return y;
}

void RequireAscendingPoints(const std::vector<std::int32_t>& places, std::size_t size) {
  for (std::size_t k = 0; k < places.size(); ++k) {
    Require(places[k] >= 0 && static_cast<std::size_t>(places[k]) < size, "an estimate is a point");
    Require(k == 0 || places[k] > places[k - 1], "estimates ascend");
  }
}

void RequireFinite(const std::vector<FittedGaussian>& peaks) {
  for (const FittedGaussian& peak : peaks)
    for (const double value :
         {peak.height, peak.centre, peak.a3, peak.baseline, peak.fit4, peak.fit5, peak.fit6})
      Require(std::isfinite(value), "a fit is finite");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  Input input(data, size);
  const bool hookeJeeves = input.Below(8) == 0;
  const bool smooth = input.Below(2) == 0;
  const auto smoothing = static_cast<std::int32_t>(input.Integer());
  const double baseline = input.Real();
  const double a3 = input.Real();
  std::vector<std::int32_t> apexes(input.Below(kMostPeaks));
  for (std::int32_t& apex : apexes) apex = input.Take<std::int16_t>() % 400;
  const std::vector<double> y = Points(input);
  std::vector<double> x(y.size());
  std::iota(x.begin(), x.end(), 0.0);

  const std::vector<std::int32_t> places = InitialEstimates(smooth, smoothing, y);
  RequireAscendingPoints(places, y.size());
  std::vector<FittedGaussian> peaks(apexes.size());
  if (FitPeaks(hookeJeeves, x, y, apexes, baseline, a3, peaks)) RequireFinite(peaks);
  peaks.resize(places.size());
  const double width = static_cast<double>(y.size()) / static_cast<double>(2 * places.size() + 2);
  if (FitPeaks(false, x, y, places, baseline, width, peaks)) RequireFinite(peaks);
  return 0;
}
