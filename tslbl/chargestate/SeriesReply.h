#pragma once
// From what an engine of charge state deconvolution answers to the series of a spectrum.
//
// Both throw std::runtime_error with the message kNoSeriesFound for an answer without series, what
// DeconXMLParser throws for one that it cannot read, and what TranslateMZPeak and TranslateMZOverlapPeak
// throw for a peak that the spectrum has not.
//
// For the sources of the library; not part of its interface.

#include <tslbl/chargestate/DeconSpectrum.h>
#include <string>

namespace TslBL {

// Adds the series, as far as they are valid, as ones of a type.
void AddSeriesOf(const std::wstring& reply, CSSeries::Types type, DeconSpectrum& spectrum);

// Gives a series what the answer says, the last one of several.
void ReplaceSeriesBy(const std::wstring& reply, const CSSeries& series, DeconSpectrum& spectrum);

}  // namespace TslBL
