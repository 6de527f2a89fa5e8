#include <tslbl/calibrate/ApplyCalibration.h>

#include <tslbl/calibrate/PutOnAxis.h>
#include <tslbl/curve/Execute.h>

namespace TslBL {

bool ApplyCalibration(Spectrum& spectrum, const std::vector<MZCalPt>& calPts, Changed& changed,
                      std::wstring& error) {
  PutOnAxis(spectrum, calPts);
  changed.yAxis = changed.baseline = changed.noise = true;
  if (!spectrum.CheckAllStatus(Curve::STATUS_PEAKS)) return true;
  const bool ok = ExecutePeakDetect(spectrum, changed, error);
  changed.peaks = true;
  return ok;
}

}  // namespace TslBL
