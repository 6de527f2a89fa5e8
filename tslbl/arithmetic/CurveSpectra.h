#pragma once
// New spectra from others by formulas.

#include <tslbl/Export.h>
#include <tslbl/spectrum/Spectrum.h>
#include <string>
#include <vector>

namespace TslBL {

// Appends a spectrum to `curves` for each definition, owned by the caller: the average of the spectra with a
// plus without the average of those with a minus, see AverageMultiStateSpectra; nowhere below 0. The formulas
// are those of CalcEICPoints; letters are spectra of `ranges`, digits those of `curves`, of the ones made
// before it as well. Its name tells what it is made of, its source lists have every spectrum in it once. No
// pointer may be null.
//
// False at the first definition that is not valid or has no plus, with `error` naming it; what was appended
// before stays. Throws std::runtime_error as AverageMultiStateSpectra does, likewise.
TSLBL_API bool GenerateCurveSpectra(const std::vector<Spectrum*>& ranges,
                                    const std::vector<std::wstring>& curveDefs,
                                    std::vector<Spectrum*>& curves, std::wstring& error);

}  // namespace TslBL
