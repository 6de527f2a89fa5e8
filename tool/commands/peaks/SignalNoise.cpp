#include <tool/commands/peaks/SignalNoise.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <map>
#include <numeric>

namespace TslTool {
namespace {

using TslBL::PeakInfo;
using TslBL::Spectrum;

constexpr std::array<double, 7> kSixth = {1.0, -6.0, 15.0, -20.0, 15.0, -6.0, 1.0};
constexpr std::size_t kHalf = kSixth.size() / 2;
constexpr double kSquares = 924.0;         // sum of the squares of these
constexpr double kSixthOfGaussian = 15.0;  // of height and standard deviation 1, at the top
constexpr double kPerFwhm = 2.3548200450309493;
constexpr double kAboveNoise = 5.0;
constexpr std::size_t kLeastPoints = 20;
// By how much the sum of so many squares scatters, as neighbouring differences share points: the variance
// over the square of the mean, times their number.
constexpr double kSpread = 4.4;
constexpr double kSure = 1.0;  // standard errors: an error that is too large is better than one far too small
constexpr double kLeastOfFound = 0.2;  // to be expected, where all of it is left over
constexpr int kRounds = 3;

// Of what independent points leave in a difference. Interpolation leaves a hundredth; less is left where a
// curve was smoothed, and tells nothing about its points any more.
constexpr double kIndependent = 0.4;
constexpr double kInterpolated = 0.004;
constexpr std::size_t kTellingPoints = 200;

std::ptrdiff_t Offset(std::size_t index) { return static_cast<std::ptrdiff_t>(index); }

// The points of about one height: up to twice as high as others.
struct Height {
  double found = 0.0;       // squares of differences
  double background = 0.0;  // what the noise of the background adds to them
  double amplitude = 0.0;   // times the noise of the signal
  double shape = 0.0;       // what Gaussian peaks add
  std::size_t points = 0;
};

// What the squares are made of: a multiple of the amplitude, which is sought, and one of the shape, which
// grows with the square of the amplitude and is told apart by that.
struct Shares {
  double ofAmplitude = 0.0;
  double ofShape = 0.0;
  bool isSure = false;  // that there is one of the amplitude

  double Expected(const Height& height) const {
    return height.background + ofAmplitude * height.amplitude + ofShape * height.shape;
  }
};

// Weighted least squares; squares scatter by what `before` expects of them. The share of the shape is 1 for
// Gaussians, give or take as much.
Shares SharesOf(const std::map<int, Height>& heights, const Shares& before) {
  double aa = 0.0;
  double as = 0.0;
  double ss = 1.0;
  double a = 0.0;
  double s = 1.0;
  for (const auto& [octave, height] : heights) {
    const double expected = std::max(before.Expected(height), kLeastOfFound * height.found);
    if (!(expected > 0.0)) continue;
    const double weight = static_cast<double>(height.points) / (kSpread * expected * expected);
    const double rest = height.found - height.background;
    aa += weight * height.amplitude * height.amplitude;
    as += weight * height.amplitude * height.shape;
    ss += weight * height.shape * height.shape;
    a += weight * height.amplitude * rest;
    s += weight * height.shape * rest;
  }
  const double determinant = aa * ss - as * as;
  Shares shares{std::max((a * ss - s * as) / determinant, 0.0), 0.0, false};
  shares.ofShape = std::max((s - as * shares.ofAmplitude) / ss, 0.0);
  shares.isSure = shares.ofAmplitude > kSure * std::sqrt(ss / determinant);
  return shares;
}

// As if all were noise of the signal.
Shares FirstGuess(const std::map<int, Height>& heights) {
  double rest = 0.0;
  double amplitude = 0.0;
  for (const auto& [octave, height] : heights) {
    rest += height.found - height.background;
    amplitude += height.amplitude;
  }
  return {std::max(rest / amplitude, 0.0), 0.0, false};
}

class Scatter {
 public:
  Scatter(const LoadedSpectrum& loaded, double varianceOfNoise)
      : loaded_(loaded), spectrum_(*loaded.spectrum), varianceOfNoise_(varianceOfNoise) {
    squares_ = kSquares * ShareLeft();
    for (const PeakInfo& peak : spectrum_.peaks) Add(peak);
  }

  double PerAmplitude() const {
    std::size_t points = 0;
    for (const auto& [octave, height] : heights_) points += height.points;
    if (points < kLeastPoints) return 0.0;
    Shares shares = FirstGuess(heights_);
    for (int round = 0; round < kRounds; ++round) shares = SharesOf(heights_, shares);
    return shares.isSure ? shares.ofAmplitude : 0.0;
  }

 private:
  double AmplitudeAt(std::size_t i) const { return loaded_.MeasuredAt(i) - spectrum_.baseline[i]; }

  double VarianceAt(std::size_t i) const {
    return spectrum_.noise[i] * spectrum_.noise[i] / varianceOfNoise_;
  }

  double DifferenceAt(std::size_t i) const {
    return std::inner_product(kSixth.begin(), kSixth.end(), loaded_.measured.begin() + Offset(i - kHalf),
                              0.0);
  }

  // Zeros stand where a program left out what was there.
  bool IsCutAt(std::size_t i) const {
    const auto first = loaded_.measured.begin() + Offset(i - kHalf);
    return std::find(first, first + Offset(kSixth.size()), 0.0) != first + Offset(kSixth.size());
  }

  // What the background's noise leaves in the differences, as a share of what it would if its points were
  // independent: those of a curve that was interpolated lie on lines.
  double ShareLeft() const {
    double found = 0.0;
    double expected = 0.0;
    std::size_t points = 0;
    std::size_t cut = 0;
    std::size_t next = kHalf;
    const auto addUpTo = [&](std::size_t end) {
      for (; next < std::min(end, loaded_.measured.size() - kHalf); ++next) {
        ++(IsCutAt(next) ? cut : points);
        if (IsCutAt(next)) continue;
        found += DifferenceAt(next) * DifferenceAt(next);
        expected += kSquares * VarianceAt(next);
      }
    };
    for (const PeakInfo& peak : spectrum_.peaks) {
      const std::size_t beside = peak.endIdx - peak.startIdx;
      addUpTo(peak.startIdx - std::min<std::size_t>(peak.startIdx, beside));
      next = std::max<std::size_t>(next, peak.endIdx + beside);
    }
    addUpTo(loaded_.measured.size());
    if (points < std::max(cut, kTellingPoints) || found > kIndependent * expected ||
        found < kInterpolated * expected)
      return 1.0;
    return found / expected;
  }

  void Add(const PeakInfo& peak) {
    const double sigma = (peak.halfHeightRightIdx - peak.halfHeightLeftIdx) / kPerFwhm;
    const double bend = kSixthOfGaussian / std::pow(std::max(sigma, 0.5), 6.0);
    const std::size_t first = std::max<std::size_t>(peak.startIdx, kHalf);
    const std::size_t end = std::min<std::size_t>(peak.endIdx + 1, loaded_.measured.size() - kHalf);
    for (std::size_t i = first; i < end; ++i) AddPoint(i, bend);
  }

  void AddPoint(std::size_t i, double bend) {
    const double variance = VarianceAt(i);
    const double difference = DifferenceAt(i);
    double amplitude = 0.0;
    double highest = 0.0;
    for (std::size_t k = 0; k < kSixth.size(); ++k) {
      const std::size_t at = i + k - kHalf;
      amplitude += squares_ / kSquares * kSixth[k] * kSixth[k] * std::max(AmplitudeAt(at), 0.0);
      highest = std::max(highest, AmplitudeAt(at));
    }
    if (!(highest > 0.0 && highest * highest > kAboveNoise * kAboveNoise * variance)) return;
    Height& height = heights_[std::ilogb(highest)];
    height.found += difference * difference;
    height.background += squares_ * variance;
    height.amplitude += amplitude;
    height.shape += bend * highest * bend * highest;
    ++height.points;
  }

  const LoadedSpectrum& loaded_;
  const Spectrum& spectrum_;
  double varianceOfNoise_;
  double squares_;  // kSquares where points are independent
  std::map<int, Height> heights_;
};

}  // namespace

double SignalNoiseOf(const LoadedSpectrum& loaded, double varianceOfNoise) {
  const Spectrum& spectrum = *loaded.spectrum;
  const std::size_t points = loaded.measured.size();
  if (points < kSixth.size() || spectrum.noise.size() != points || spectrum.baseline.size() != points)
    return 0.0;
  return Scatter(loaded, varianceOfNoise).PerAmplitude();
}

}  // namespace TslTool
