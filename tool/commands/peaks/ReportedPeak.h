#pragma once
// A peak as the tool reports it: the library's row, and what it takes the spectrum to tell.

#include <tool/commands/peaks/ErrorBars.h>
#include <tool/io/SpectrumSource.h>
#include <tslbl/records/MZPeak.h>
#include <vector>

namespace TslTool {

struct ReportedPeak {
  TslBL::MZPeak row;
  double area = 0.0;  // of the whole peak, above the baseline; that of the fit for an overlap peak
  ErrorBar errors;    // all NaN for an overlap peak
};

// The rows of the spectrum's peak table in their order.
std::vector<ReportedPeak> ReportedPeaks(const LoadedSpectrum& loaded);

}  // namespace TslTool
