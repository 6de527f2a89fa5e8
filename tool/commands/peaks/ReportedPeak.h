#pragma once
// A peak as the tool reports it: the library's row, and what it takes the spectrum to tell.

#include <tool/commands/peaks/ErrorBars.h>
#include <tool/io/SpectrumSource.h>
#include <tslbl/records/MZPeak.h>
#include <vector>

namespace TslTool {

struct ReportedPeak {
  TslBL::MZPeak row;
  double area = 0.0;  // of the whole peak, above the baseline, or of the fit, amplitude times m/z
  ErrorBar errors;    // of an overlap peak those of its fit, which has none of the amplitude

  double Width() const { return row.Width * errors.narrowing; }            // m/z, before the smoothing
  double Resolution() const { return row.Resolution / errors.narrowing; }  // m/z over that
};

// The rows of the spectrum's peak table in their order.
std::vector<ReportedPeak> ReportedPeaks(const LoadedSpectrum& loaded);

// m/z of a point at a fitted peak: by this a width in points is one in m/z.
double MzPerPoint(const TslBL::Spectrum& spectrum, const TslBL::OverlapPeakInfo& peak);

}  // namespace TslTool
