// The aerosol filter step.

#include <tslbl/curve/AerosolFilter.h>
#include <tslbl/curve/EvalImpl.h>
#include <tslbl/curve/Execute.h>

namespace TslBL {
namespace {

constexpr std::size_t kFewestPoints = 4;
constexpr double kLowestSpike = 25.0;
constexpr double kSpikeRatio = 10.0;

void RemoveSpikesOnce(std::span<double> y, std::size_t width) {
  for (std::size_t i = 1; i + 2 < y.size() && i + width < y.size(); ++i) {
    if (!(y[i] >= kLowestSpike)) continue;
    const double mean = (y[i + width] + y[i - 1]) * 0.5;
    for (std::size_t k = i; k < i + width; ++k)
      if (y[k] > mean * kSpikeRatio) y[i] = mean;
  }
}

}  // namespace

void RemoveSpikes(std::span<double> y, std::uint32_t width) {
  if (y.size() < kFewestPoints) return;
  for (std::size_t w = 1; w <= width && w < y.size(); ++w) RemoveSpikesOnce(y, w);
}

bool DoAerosolFilter(Curve& curve, Changed& changed, std::wstring&) {
  if (curve.yAxis.size() < kFewestPoints) return true;
  // First, as it takes memory: no curve may have changed without it.
  curve.evals.emplace_back(CurveEval::AerosolFilter());
  RemoveSpikes(curve.yAxis, 1);
  changed.yAxis = true;
  return true;
}

CurveEval::CurveEval(const AerosolFilter&) : impl_(new EvalOf<EvalType::AerosolFilter>) {}

}  // namespace TslBL
