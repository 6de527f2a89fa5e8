#pragma once
// Takes the peaks of a group apart that overlap.
//
// The fitted curve is a sum of peaks over one constant baseline. Its peaks are Gaussians of one common width,
// unless the points clearly ask for more: for a skew, which all of them share, or for widths of their own,
// which are held together. Each point is weighed by the reciprocal of the fitted curve there, which is right
// for counts and for counts times any factor; the answer does not depend on the factor.
//
// Threads: nothing is shared; any number of calls may run at the same time.
#include <tslbl/Export.h>
#include <tslbl/closed/math/overlap/FitError.h>
#include <tslbl/closed/math/overlap/FittedGaussian.h>
#include <tslbl/closed/math/overlap/PeakSum.h>

#include <cstdint>
#include <optional>
#include <span>
#include <vector>

namespace TslMath {

enum class FitMethod { LevenbergMarquardt, HookeJeeves };

// A group to be fitted.
struct OverlapGroup {
  std::span<const double> x;             // as many as y, in any unit
  std::span<const double> y;             // counts, or counts times a factor
  std::span<const std::int32_t> apexes;  // index of the point where a peak is sought, for each
  double baseline;                       // finite; the fit solves for it, whatever it is
  double a3;                             // start value of the width, as a standard deviation in the unit of x
  // The variance of a point divided by its mean, in the unit of y: the factor that counts were multiplied by,
  // where it is known. 0: what points differ from their neighbours by tells it, of few points badly.
  double variancePerMean = 0.0;
};

struct OverlapFit {
  PeakSum sum;                   // peaks in the order of x; PeakSum::At(x) is the fitted curve
  std::vector<FitError> errors;  // of each peak
  double reducedSquares;         // of what is left, in variances of a point: about 1 where it is noise
};

// Places are sought up to 1.2 a3 from the apexes, and once more as far where they end there. Widths are
// sought from a third of a3 to three times a3. Nothing if there is no answer: fewer than two points a peak
// and three more, no peak or more than 200, an apex that is no point, an a3 that is not above 0, points that
// are not finite or all 0, points that do not determine the peaks, more work than some seconds.
// Levenberg-Marquardt takes about 25 steps, each in proportion to the points and to the square of the peaks
// near them; Hooke-Jeeves takes ten to twenty times as long and reaches the same.
TSLBL_API std::optional<OverlapFit> FitOverlap(FitMethod method, const OverlapGroup& group);

// The same for a caller with a place for the result of each apex. Results are in the order of x. False if
// there is no answer; the results are the start values then: height of the apex above the baseline, apex, a3,
// baseline, and 0. `results` is as long as `apexes`.
bool FitPeaks(bool hookeJeeves, std::span<const double> x, std::span<const double> y,
              std::span<const std::int32_t> apexes, double baseline, double a3,
              std::span<FittedGaussian> results);

}  // namespace TslMath
