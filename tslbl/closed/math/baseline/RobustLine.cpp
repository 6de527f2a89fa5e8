#include <tslbl/closed/math/baseline/RobustLine.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <numbers>

namespace TslMath {
namespace {

constexpr int kMaxRounds = 40;
// Growth has settled when line and noise move less than this part of the noise.
constexpr double kSettledMove = 0.02;
constexpr double kTrustedPart = 0.12;
constexpr std::size_t kTrustedPoints = 8;

double Untruncation(double width) {
  const double density = std::exp(-0.5 * width * width) / std::sqrt(2 * std::numbers::pi);
  return 1 / std::sqrt(1 - 2 * width * density / std::erf(width / std::numbers::sqrt2));
}

// The rounding of a line must not push the points of a noise-free segment out of its own set.
double Rounding(const SegmentLine& line) {
  return 8 * std::numeric_limits<double>::epsilon() * std::abs(line.level);
}

SegmentLine Correction(const AcceptedSums& sums, Growth growth) {
  const double middle = sums.t / sums.n;
  const double level = sums.r / sums.n;
  const double spread = sums.tt - sums.t * middle;
  const bool sloped = growth == Growth::Line && spread > 0;
  const double slope = sloped ? (sums.tr - sums.t * level) / spread : 0;
  return {level - slope * middle, slope};
}

double SpreadAbout(const SegmentLine& move, const AcceptedSums& sums) {
  const double squares = sums.rr - move.level * sums.r - move.slope * sums.tr;
  return std::sqrt(std::max(squares, 0.0) / sums.n);
}

// Neighbours of smoothed data agree with each other, so their mean scatters more than that of independent
// points. The side below the line, which no peak reaches, shows by how much.
double NoiseOfMeans(const AcceptedSums& sums, double noise, const RejectionRule& rule) {
  const double measured = std::sqrt(2 * sums.mm / sums.n);
  return std::max(measured, noise / std::sqrt(static_cast<double>(rule.points)));
}

}  // namespace

RejectionRule::RejectionRule(std::uint32_t points_, std::uint32_t width_, std::size_t n, double quantum)
    : points(std::min<std::size_t>(points_ | 1U, n - (n + 1) % 2)),
      width(std::max<std::uint32_t>(width_, 1)),
      untruncation(Untruncation(width)),
      noiseFloor(quantum / 2) {}

std::size_t RejectionRule::LeastCount() const { return std::max(2 * points, kTrustedPoints); }

RobustLine GrowLine(const SegmentData& segment, const RejectionRule& rule, const RobustLine& start,
                    Growth growth) {
  RobustLine fit = start;
  fit.count = 0;
  const std::size_t least = std::min(rule.LeastCount(), (segment.length + 1) / 2);
  const double half = 0.5 * static_cast<double>(segment.length);
  AcceptanceLimits limits{rule.width * start.noise + Rounding(start.line),
                          std::numeric_limits<double>::infinity()};
  for (int round = 0; round < kMaxRounds; ++round) {
    const AcceptedSums sums = SumAccepted(segment.y, segment.mean, segment.length, fit.line, limits);
    if (sums.n < static_cast<double>(least)) {
      fit.count = static_cast<std::size_t>(sums.n);
      break;
    }
    const SegmentLine move = Correction(sums, growth);
    const double noise = std::max(rule.untruncation * SpreadAbout(move, sums), rule.noiseFloor);
    const double shift = std::abs(move.level) + half * std::abs(move.slope) + std::abs(noise - fit.noise);
    if (!std::isfinite(shift)) break;
    fit.line = {fit.line.level + move.level, fit.line.slope + move.slope};
    fit.noise = noise;
    fit.count = static_cast<std::size_t>(sums.n);
    if (round > 0 && shift <= kSettledMove * noise) break;
    limits = {rule.width * noise + Rounding(fit.line),
              rule.width * NoiseOfMeans(sums, noise, rule) + Rounding(fit.line)};
  }
  return fit;
}

bool IsTrusted(const RobustLine& fit, const RejectionRule& rule, std::size_t length) {
  return fit.count >= rule.LeastCount() &&
         static_cast<double>(fit.count) >= kTrustedPart * static_cast<double>(length);
}

}  // namespace TslMath
