#pragma once
// What the instrument delivers for one scan: pulse counts, one for each step of the mass
// DAC, under a small header.

#include <tslbl/Export.h>
#include <tslbl/records/Record.h>
#include <cstdint>
#include <vector>

namespace TslBL {

// The header, held alone where only the chromatogram of a run is needed. Version 1, from
// before spectra had ids, is read with Id 0.
struct TSLBL_API RawSpectrumInfo : SerialRecord<RawSpectrumInfo> {
  std::uint32_t Id = 0;
  std::uint32_t TimeStamp = 0;  // retention time, milliseconds
  std::uint32_t TuneId = 0;     // the tune that acquired it
  double TIC = 0.0;             // total ion current
};

struct TSLBL_API RawSpectrum : SerialRecord<RawSpectrum> {
  RawSpectrumInfo info;
  std::vector<double> counts;  // one for each mass DAC step
};

TSLBL_API void Describe(Archive& ar, RawSpectrumInfo& info);
TSLBL_API void Describe(Archive& ar, RawSpectrum& raw);

}  // namespace TslBL
