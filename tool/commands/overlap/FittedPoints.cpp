#include <tool/commands/overlap/FittedPoints.h>

#include <tool/chain/SmoothFilter.h>

namespace TslTool {

using TslBL::Curve;

bool AreMeasuredFitted(const LoadedSpectrum& loaded) {
  return loaded.measured.size() == loaded.spectrum->yAxis.size() && OnlySmooths(*loaded.spectrum);
}

const std::vector<double>& FittedPoints(const LoadedSpectrum& loaded) {
  return AreMeasuredFitted(loaded) ? loaded.measured : loaded.spectrum->yAxis;
}

WithFittedPoints::WithFittedPoints(LoadedSpectrum& loaded)
    : loaded_(loaded),
      isSwapped_(AreMeasuredFitted(loaded)),
      isSmoothed_(loaded.spectrum->CheckAllStatus(Curve::STATUS_SMOOTHED)) {
  if (!isSwapped_) return;
  loaded.spectrum->yAxis.swap(loaded.measured);
  loaded.spectrum->status &= ~Curve::STATUS_SMOOTHED;
}

WithFittedPoints::~WithFittedPoints() {
  if (!isSwapped_) return;
  loaded_.spectrum->yAxis.swap(loaded_.measured);
  if (isSmoothed_) loaded_.spectrum->AddStatus(Curve::STATUS_SMOOTHED);
}

}  // namespace TslTool
