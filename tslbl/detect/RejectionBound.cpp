#include <tslbl/detect/RejectionBound.h>

#include <algorithm>
#include <cmath>
#include <limits>
#ifdef __SSE2__
#include <emmintrin.h>
#endif

namespace TslBL {
namespace {

constexpr double kNone = -std::numeric_limits<double>::infinity();

// What a stretch of points holds.
struct Extent {
  double highest = kNone;
  double bend = 0.0;      // the largest second difference, either sign
  double absolute = 0.0;  // the sum of all amplitudes, either sign: not less than the largest
  double baseline = std::numeric_limits<double>::infinity();
  double noise = std::numeric_limits<double>::infinity();
  double check = 0.0;  // not finite if a baseline or a noise is not

  void Add(double y, double base, double sd) {
    highest = std::max(highest, y);
    absolute += std::abs(y);
    baseline = std::min(baseline, base);
    noise = std::min(noise, sd);
    check += base + sd;
  }
  void AddBend(const double* y) { bend = std::max(bend, std::abs(y[-1] - 2.0 * y[0] + y[1])); }
};

#ifdef __SSE2__
double Larger(__m128d v) { return std::max(_mm_cvtsd_f64(v), _mm_cvtsd_f64(_mm_unpackhi_pd(v, v))); }
double Smaller(__m128d v) { return std::min(_mm_cvtsd_f64(v), _mm_cvtsd_f64(_mm_unpackhi_pd(v, v))); }
double Sum(__m128d v) { return _mm_cvtsd_f64(v) + _mm_cvtsd_f64(_mm_unpackhi_pd(v, v)); }
__m128d Absolute(__m128d v) { return _mm_andnot_pd(_mm_set1_pd(-0.0), v); }

// Adds the inner points from i on, two at a time; returns the first that is left.
std::ptrdiff_t AddPairs(Extent& e, const double* y, const double* baseline, const double* noise,
                        std::ptrdiff_t i, std::ptrdiff_t last) {
  __m128d highest = _mm_set1_pd(e.highest);
  __m128d bend = _mm_setzero_pd();
  __m128d absolute = _mm_setzero_pd();
  __m128d leastBaseline = _mm_set1_pd(e.baseline);
  __m128d leastNoise = _mm_set1_pd(e.noise);
  __m128d check = _mm_setzero_pd();
  for (; i + 1 < last; i += 2) {
    const __m128d here = _mm_loadu_pd(y + i);
    const __m128d sides = _mm_add_pd(_mm_loadu_pd(y + i - 1), _mm_loadu_pd(y + i + 1));
    const __m128d base = _mm_loadu_pd(baseline + i);
    const __m128d sd = _mm_loadu_pd(noise + i);
    highest = _mm_max_pd(highest, here);
    bend = _mm_max_pd(bend, Absolute(_mm_sub_pd(sides, _mm_add_pd(here, here))));
    absolute = _mm_add_pd(absolute, Absolute(here));
    leastBaseline = _mm_min_pd(leastBaseline, base);
    leastNoise = _mm_min_pd(leastNoise, sd);
    check = _mm_add_pd(check, _mm_add_pd(base, sd));
  }
  e.highest = Larger(highest);
  e.bend = Larger(bend);
  e.absolute += Sum(absolute);
  e.baseline = Smaller(leastBaseline);
  e.noise = Smaller(leastNoise);
  e.check += Sum(check);
  return i;
}
#else
std::ptrdiff_t AddPairs(Extent&, const double*, const double*, const double*, std::ptrdiff_t i,
                        std::ptrdiff_t) {
  return i;
}
#endif

}  // namespace

RejectionBound::RejectionBound(const Curve& curve, std::size_t first)
    : y_(curve.yAxis.data() + first),
      baseline_(curve.baseline.data() + first),
      noise_(curve.noise.data() + first) {
  const PeakDetectParams& p = curve.peakDetectParams;
  leastRatio_ = p.SNInUse && p.SN > 0 ? p.SN : kNone;
  leastAmplitude_ = p.ThresholdInUse ? curve.thresholdParams.Value : kNone;
  rejectsNothing_ = (leastRatio_ == kNone && leastAmplitude_ == kNone) || p.RelAmplInUse || p.RelAreaInUse;
}

// A peak is reported with a height of its spline, and with baseline and noise of one of its
// points. With D the largest second difference of the samples, the curvatures M of the spline
// obey 4 |M[i]| <= 6 D + |M[i-1]| + |M[i+1]| inside, are the second differences beside the ends
// and continue them in a straight line at the ends: none exceeds 3 D inside and 5 D at the ends.
// Between two samples the curve rises above the higher one by at most an eighth of the larger
// curvature, so by 5/8 D. What is added to that covers the rounding of the spline.
bool RejectionBound::RejectsAllBetween(std::ptrdiff_t first, std::ptrdiff_t last) const {
  if (rejectsNothing_) return false;
  // Most peaks that may pass show it at one of a few points.
  constexpr std::ptrdiff_t kSample = 8;
  for (std::ptrdiff_t i = first + kSample / 2; i < last; i += kSample)
    if (PassesAt(i)) return false;
  Extent e;
  e.Add(y_[first], baseline_[first], noise_[first]);
  e.Add(y_[last], baseline_[last], noise_[last]);
  for (std::ptrdiff_t i = AddPairs(e, y_, baseline_, noise_, first + 1, last); i < last; ++i) {
    e.Add(y_[i], baseline_[i], noise_[i]);
    e.AddBend(y_ + i);
  }
  // Of numbers that are not finite nothing is certain.
  if (!std::isfinite(e.absolute) || !std::isfinite(e.check)) return false;
  return !MayPass(e.highest + 0.65 * e.bend + 1e-9 * e.absolute, e.baseline, e.noise);
}

// False only where it is certain: not with a NaN, nor where noise is too small for a ratio.
bool RejectionBound::MayPass(double amplitude, double baseline, double noise) const {
  if (amplitude < leastAmplitude_) return false;
  return !(noise >= 1e-8 && (amplitude - baseline) / noise < leastRatio_);
}

}  // namespace TslBL
