#include <tool/chain/Lift.h>

#include <algorithm>

namespace TslTool {
namespace {

constexpr std::ptrdiff_t kFewOf = 100;
constexpr std::size_t kStrayOf = 200;

double QuantileOf(std::vector<double>& values, std::size_t index) {
  const auto at = values.begin() + static_cast<std::ptrdiff_t>(index);
  std::nth_element(values.begin(), at, values.end());
  return *at;
}

}  // namespace

double LiftOf(const std::vector<double>& amplitudes) {
  const auto below = std::ranges::count_if(amplitudes, [](double amplitude) { return amplitude < 0.0; });
  if (below == 0 || kFewOf * below < std::ssize(amplitudes)) return 0.0;
  std::vector<double> values = amplitudes;
  const double median = QuantileOf(values, values.size() / 2);
  const double low = QuantileOf(values, values.size() / kStrayOf);
  // As far below the low values again as these are below the middle: five standard deviations of noise.
  return std::max(median - 2.0 * low, -low);
}

void Lower(TslBL::Curve& curve, double lift) {
  for (double& amplitude : curve.yAxis) amplitude -= lift;
  for (double& level : curve.baseline) level -= lift;
  for (TslBL::PeakInfo& peak : curve.peaks)
    for (double* level : {&peak.apexAmpl, &peak.maxAmpl, &peak.maxBaseline, &peak.centroidAmpl,
                          &peak.baselineAmpl, &peak.areaIntercept})
      *level -= lift;
}

}  // namespace TslTool
