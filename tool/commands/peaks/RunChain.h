#pragma once
// Runs a chain on one spectrum of a file.

#include <tool/io/SpectrumSource.h>
#include <tslbl/curve/CurveEval.h>
#include <string>
#include <vector>

namespace TslTool {

// Throws InputError that names the scan where a step refuses the data.
void RunChain(const std::string& input, const std::vector<TslBL::CurveEval>& chain, LoadedSpectrum& loaded);

}  // namespace TslTool
