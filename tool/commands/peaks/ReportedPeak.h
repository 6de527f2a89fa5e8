#pragma once
// A peak as the tool reports it: the library's row, and what it takes the spectrum to tell.

#include <tslbl/records/MZPeak.h>
#include <tslbl/spectrum/Spectrum.h>
#include <vector>

namespace TslTool {

struct ReportedPeak {
  TslBL::MZPeak row;
  double area = 0.0;  // of the whole peak, above the baseline; that of the fit for an overlap peak
};

// The rows of the spectrum's peak table in their order.
std::vector<ReportedPeak> ReportedPeaks(const TslBL::Spectrum& spectrum);

}  // namespace TslTool
