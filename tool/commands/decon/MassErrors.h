#pragma once
// How well the peaks of a series determine its mass.

#include <tool/commands/peaks/ReportedPeak.h>
#include <tslbl/chargestate/DeconSpectrum.h>
#include <vector>

namespace TslTool {

// Standard errors of masses, Da; NaN where nothing tells them. What all peaks have in common, as an error of
// the m/z axis, is not in them.
//
// An unresolved series of three peaks or more is told by how their masses scatter. In a resolved one the
// standard errors of the peaks' m/z add up, as the peaks do in the mean; where its charges differ by more
// than that, the error grows with them (R. Birge, The calculation of errors by the method of least squares,
// 1932). Without errors of the peaks the charges tell alone, if there are three. What isotopes weigh differs
// from protein to protein by what they are made of, and that is added.
class MassErrors {
 public:
  // `peaks` are all of the spectrum, by their ids. Both must outlive it.
  MassErrors(const TslBL::DeconSpectrum& spectrum, const std::vector<ReportedPeak>& peaks);

  double Of(const TslBL::CSSeriesInfo& series) const;

 private:
  double OfUnresolved(const TslBL::CSSeriesInfo& series) const;
  double OfResolved(const TslBL::CSSeriesInfo& series) const;
  double WeightOf(const ReportedPeak& peak) const;
  double IntensityOf(const ReportedPeak& peak) const;

  const TslBL::DeconSpectrum& spectrum_;
  const std::vector<ReportedPeak>& peaks_;
};

}  // namespace TslTool
