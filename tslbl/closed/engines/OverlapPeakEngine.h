#pragma once
// The engine of overlap peak deconvolution: it proposes the peaks of a group, and fits a sum of Gaussians
// to them. An exchangeable component; our own is registered when the library is loaded.
//
//   TslCommon::ComponentRegistry::Instance().Register(
//       TslMath::OverlapPeakEngine::kClassId, [] { return std::make_unique<MyEngine>(); });
//
// The library makes one for each run and each refit, uses it on the calling thread alone, one call after
// the other, and gives it up at the end: an engine needs no locks unless it shares something with others
// of its kind, as runs on several threads have one each. One that says MayWorkAtOnce is called for several
// groups at the same time, on the process's threads, in any order; groups behind one that ends the run may
// have been worked on then. The outcome is the same.
//
// A group is given as the numbers x = 0, 1, 2 ... and the amplitudes y of its points, equally many of both.
// A call returns a result code as COM has them: negative if the engine failed, which ends the whole run
// with a ComError that carries it; otherwise the result counts. What a call throws goes to its caller: a
// std::exception of FitPeaks costs the run this group alone.

#include <tslbl/Export.h>
#include <tslbl/closed/common/ComponentRegistry.h>
#include <tslbl/closed/math/overlap/FittedGaussian.h>
#include <cstdint>
#include <span>
#include <vector>

namespace TslMath {

class TSLBL_API OverlapPeakEngine : public TslCommon::IComponent {
 public:
  static constexpr const char* kClassId = "TslBL.OverlapPeakEngine";

  static constexpr std::int32_t kOk = 0;
  // The numbers admit no fit: no failure of the engine, but it has no results.
  static constexpr std::int32_t kNoFit = 1;

  // Puts the points on which peaks are likely to stand into `peaks`, which is empty: indexes from 0 to one
  // less than the number of points, in any order. `smooth` asks to smooth the amplitudes over numSmoothPts
  // points first; it is true for a spectrum that has not been smoothed.
  virtual std::int32_t InitialEstimates(bool smooth, std::int32_t numSmoothPts, std::span<const double> x,
                                        std::span<const double> y, std::vector<std::int32_t>& peaks) = 0;

  // Fits a Gaussian for each of the points `apexes`, which ascend, and puts one result for each into
  // `results`, which is empty, in the same order. By the method of Hooke and Jeeves or by that of
  // Marquardt and Levenberg. `baseline` and `a3` are where offset and width start from.
  virtual std::int32_t FitPeaks(bool hookeJeeves, std::span<const double> x, std::span<const double> y,
                                std::span<const std::int32_t> apexes, double baseline, double a3,
                                std::vector<FittedGaussian>& results) = 0;

  // Whether its calls may run at the same time.
  virtual bool MayWorkAtOnce() const;
};

// Puts the library's own engine, TslMath::InitialEstimates and TslMath::FitPeaks, back in the place of
// another.
TSLBL_API void RegisterOwnOverlapPeakEngine();

}  // namespace TslMath
