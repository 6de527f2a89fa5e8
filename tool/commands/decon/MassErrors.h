#pragma once
// How well the peaks of a series determine its mass.

#include <tool/commands/decon/PeakShares.h>
#include <tool/commands/peaks/ReportedPeak.h>
#include <tslbl/chargestate/DeconSpectrum.h>
#include <tslbl/closed/math/chargestate/IonPeak.h>
#include <vector>

namespace TslTool {

struct SeriesMass {
  double mass;       // Da, neutral
  double error;      // standard error, Da; NaN where nothing tells it
  double deviation;  // Da, standard deviation of the masses by the charges
};

// Standard errors of masses, Da; NaN where nothing tells them. What all peaks have in common, as an error of
// the m/z axis, is not in them.
//
// An unresolved series of three peaks or more is told by how their masses scatter; its mass is that of the
// means of its peaks where these are known (PeakMeans.h), as far as isotopes can make them differ from the
// positions, as adducts make peaks skew, too; 3 percent of what this makes is added to its error. Where lines
// run into each other, so that most means are not known, it is what isotopes make, and a quarter of that is
// added. In a list of peaks the difference is not known, and adds to the error. Peaks that another series has
// as well lie between both: where three are left without them, these tell mass, error and deviation.
//
// In a resolved one the standard errors of the peaks' m/z add up, as the peaks do in the mean; where its
// charges differ by more than that, the error grows with them (R. Birge, The calculation of errors by the
// method of least squares, 1932). Where the errors of peaks are not known, as in a list, those of all its
// isotopes tell them (IsotopeScatter.h); without these the charges tell alone, if there are three.
// What isotopes weigh differs from protein to protein by what they are made of, and that is added; likewise
// how badly isotopes are taken apart whose tops have merged.
class MassErrors {
 public:
  // `peaks` are all of the spectrum, by their ids. All three must outlive it.
  MassErrors(const TslBL::DeconSpectrum& spectrum, const std::vector<ReportedPeak>& peaks,
             const PeakShares& shares);

  // `means` are the mean m/z of the peaks, which belong to an average mass; NaN where they are not known, and
  // none of a list of peaks.
  SeriesMass Of(const TslBL::CSSeriesInfo& series, const std::vector<double>& means = {}) const;

 private:
  // `isPart`: of the series as the library has it.
  SeriesMass OfUnresolved(const TslBL::CSSeriesInfo& series, const std::vector<double>& means,
                          bool isPart) const;
  // By how much the means of a series' data peaks lie above their positions as far as isotopes make them so,
  // Da, what share that is of what was measured, and how sure it is, Da. Where most means are not known it is
  // that of isotopes alone, for all.
  struct Skew {
    double mass = 0.0;
    double share = 0.0;
    double doubt = 0.0;
  };
  TslMath::IonPeak IonPeakOf(const TslBL::CSSeriesPeakInfo& member, double off) const;
  double WidthOf(const TslBL::CSSeriesPeakInfo& member) const;
  // Of a line, Da times Da; that of its isotopes at least.
  double VarianceOf(const TslBL::CSSeriesPeakInfo& member, double mass) const;
  Skew SkewOf(const TslBL::CSSeriesInfo& series, const std::vector<double>& means) const;
  double SkewOfIsotopes(const TslBL::CSSeriesInfo& series) const;
  double OfResolved(const TslBL::CSSeriesInfo& series) const;
  double OfMerging(const TslBL::CSSeriesInfo& series) const;
  double MzErrorOf(const ReportedPeak& peak, double mz) const;
  double WeightOf(const ReportedPeak& peak) const;
  double IntensityOf(const ReportedPeak& peak) const;

  const TslBL::DeconSpectrum& spectrum_;
  const std::vector<ReportedPeak>& peaks_;
  const PeakShares& shares_;
  double ofIsotopes_;  // relative to m/z
};

}  // namespace TslTool
