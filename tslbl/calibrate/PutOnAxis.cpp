#include <tslbl/calibrate/PutOnAxis.h>

#include <tslbl/spectrum/CreateSpectrum.h>

namespace TslBL {

void PutOnAxis(Spectrum& spectrum, std::vector<MZCalPt> points) {
  spectrum.appliedMZCalPts.swap(points);
  try {
    MZAssign(spectrum);
  } catch (...) {
    spectrum.appliedMZCalPts.swap(points);
    throw;
  }
}

}  // namespace TslBL
