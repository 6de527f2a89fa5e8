#pragma once
// A tune: all settings of the instrument for one acquisition.
//
// The records of a tune hold data and never validate; DevTuneRules is the way to edit one.
// A document must hold the element "Tune"; reading one that does not throws
// XMLResultException.
//
// Two older binary versions are read. The first stored the voltages of lenses as such,
// later ones store each relative to the lens before it; the first two stored resolutions
// in units of the instrument, the third in percent.

#include <tslbl/Export.h>
#include <tslbl/records/Record.h>
#include <tslbl/tune/Control.h>
#include <tslbl/tune/IonSource.h>
#include <tslbl/tune/MZCalPt.h>
#include <tslbl/tune/Q1CalPt.h>
#include <tslbl/tune/Syringe.h>
#include <tslbl/tune/TuneInfo.h>
#include <vector>

namespace TslBL {

struct TSLBL_API Tune : Record<Tune> {
  TuneInfo Info;
  IonSource Source;
  Control ControlData;
  Syringe SyringeData;
  std::vector<MZCalPt> MZCalPts;
  std::vector<Q1CalPt> Q1CalPts;

  // Whether this is a SIM that scans a small span around its centre m/z: 0.2 to 2.0 m/z
  // wide, an even number of tenths.
  bool IsSimWithSpan() const;

  // m/z per second, a whole number. Throws std::runtime_error if a step takes no time.
  double QScanSpeed() const;

  // Takes the other's ion optics, m/z calibration and Q1 calibration, and keeps this
  // tune's acquisition settings and the curve of its capillary exit. Points within 10 m/z
  // of each other are partners. A point of this tune without a partner stays and keeps its
  // capillary exit only; the other's points without one are appended, so that the list is
  // not sorted. Throws, with the tune unchanged, if the capillary exit's curve has two
  // points of one m/z where it is evaluated.
  void Overwrite(const Tune& other);
};
TSLBL_API void Describe(Archive& ar, Tune& tune);

}  // namespace TslBL
