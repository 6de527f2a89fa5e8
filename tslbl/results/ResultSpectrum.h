#pragma once
// Spectra in a document of results. Each function adds one element where the builder stands and leaves the
// builder there; the document around it is the caller's.

#include <tslbl/Export.h>
#include <tslbl/spectrum/RawSpectrum.h>
#include <tslbl/spectrum/Spectrum.h>
#include <cstdint>

namespace TslBL {

struct Tune;

// One element "RawSpec" with the attributes "Id", "TimeStamp" (milliseconds), "TIC" (six significant digits)
// and "TuneId", which is `tuneId`, whatever the header of `raw` says. `writeProfile` puts the points in it,
// m/z by the tune's own calibration, and `writeCentroid` the peaks, found with the parameters of a new
// spectrum; the amplitudes are the counts as they are. With neither the calibration is not looked at.
//
// Throws what CreateSpectrum and the detection of peaks do; "RawSpec" is then still open.
TSLBL_API void AddRawSpectrum(XMLBuilder& builder, std::uint32_t tuneId, const Tune& tune,
                              const RawSpectrum& raw, bool writeProfile, bool writeCentroid);

// Finds the peaks with the parameters that the spectrum holds and writes its table of peaks as AddCurvePeaks
// does: an empty "Peaks" where there are none. Baseline and noise, and the threshold where it is in use, run
// first if they have not run. Where the detection fails, the table that the spectrum has stays and is
// written: the old one of a frozen spectrum (STATUS_FROZEN), and nothing without STATUS_PEAKS, as of no
// points. Throws what the detection does, before anything is written.
TSLBL_API void FormatPartialCentroid(Spectrum& spectrum, XMLBuilder& builder);

}  // namespace TslBL
