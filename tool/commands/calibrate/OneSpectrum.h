#pragma once
// A source of a single spectrum that is there already.

#include <tool/io/SpectrumSource.h>
#include <memory>

namespace TslTool {

// Hands out a copy of `loaded`, which must outlive it, as its only spectrum.
std::unique_ptr<SpectrumSource> SourceOf(const LoadedSpectrum& loaded);

}  // namespace TslTool
