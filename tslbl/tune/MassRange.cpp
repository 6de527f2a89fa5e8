#include <tslbl/tune/MassRange.h>

namespace TslBL {

std::pair<double, double> QMassRange(const Tune& tune) {
  const double low = tune.ControlData.MZLow;
  const double high = tune.ControlData.MZHi;
  if (tune.ControlData.Type == Control::Scan) return {low, high};
  const double half = high * 0.5;
  return {low - half, low + half};
}

std::pair<double, double> QMassRange(Control::Types type, double mzLow, double mzHi) {
  Tune tune;
  tune.ControlData.Type = type;
  tune.ControlData.MZLow = mzLow;
  tune.ControlData.MZHi = mzHi;
  return QMassRange(tune);
}

}  // namespace TslBL
