#pragma once
// From pulse counts to counts a second. A point counts for the tune's dwell, PulseCountDelay
// in microseconds, in each of its ScansPerSpec scans; a SIM with span adds all mass steps of
// its window into one point.
//
// To be called before a raw spectrum becomes a spectrum: nothing later scales amplitudes.
// Both throw what DevTuneRules::QNumPulses throws, before they change anything.

#include <tslbl/Export.h>
#include <vector>

namespace TslBL {

struct RawSpectrumInfo;
struct Tune;

// Converts in place. `tic`, which may be null, receives the sum of the rates. A tune that
// does not dwell gives no rate: the amplitudes stay counts, and `tic` receives 0.
TSLBL_API void AssignCountRateAmpl(std::vector<double>& amplitudes, const Tune& tune, double* tic);

// Converts the TIC of headers of one tune in place. A tune that does not dwell makes them 0.
TSLBL_API void ScaleRawTICs(const Tune& tune, std::vector<RawSpectrumInfo*>& infos);

// Whether this process works with plain counts. Both functions above then leave their data
// alone, and a `tic` receives the sum of the counts.
TSLBL_API bool UseRawAmplitudeCounts();

}  // namespace TslBL
