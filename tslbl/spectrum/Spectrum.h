#pragma once
// A curve whose x axis is m/z. It remembers how that axis was made, so that the axis can be
// made anew when the calibration changes, and holds the peaks that were fitted under its
// detected ones; see OverlappedCurve.h.
//
// A value, copied deep; one thread at a time may change it.

#include <tslbl/Export.h>
#include <tslbl/records/OPDParams.h>
#include <tslbl/spectrum/OverlappedCurve.h>
#include <tslbl/tune/MZCalPt.h>
#include <cstdint>
#include <vector>

namespace TslBL {

class TSLBL_API Spectrum : public OverlappedCurve {
 public:
  std::uint32_t tuneId = 0;              // the tune that acquired it
  std::vector<MZCalPt> tuneMZCalPts;     // that tune's calibration, which defines the DAC scale
  std::vector<MZCalPt> appliedMZCalPts;  // the calibration that made the present x axis
  double startMDAC = 0.0;                // mass DAC value of the first point, a whole number
  double stepMDAC = 0.0;                 // from point to point, a whole number
  double timeStamp = 0.0;                // retention time, milliseconds
  double tic = 0.0;                      // total ion current
  OPDParams opdParams;

  // The evaluation parameters are the presets for mass spectra; those of the threshold have
  // none and keep their defaults.
  Spectrum();

  Curve* Clone() const override;

  // Version 1. A failed reading leaves the spectrum as it was.
  using Curve::Serialize;
  void Serialize(BinaryReader& reader) override;
  void Serialize(BinaryWriter& writer) const override;

  friend TSLBL_API bool operator==(const Spectrum& a, const Spectrum& b);

 private:
  // Reads what stands behind the version word.
  virtual void ReadVerCur(BinaryReader& reader);
};

// The fields of a spectrum, those of Curve included.
TSLBL_API void Describe(Archive& ar, Spectrum& spectrum);

}  // namespace TslBL
