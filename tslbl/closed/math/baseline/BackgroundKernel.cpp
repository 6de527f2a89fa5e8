#include <tslbl/closed/math/baseline/BackgroundKernel.h>

#include <tslbl/closed/math/Lanes.h>
#include <tslbl/closed/math/baseline/RobustLine.h>
#include <tslbl/closed/math/baseline/SegmentGuard.h>
#include <tslbl/closed/math/baseline/SegmentLoader.h>
#include <tslbl/closed/math/baseline/Segments.h>

#include <algorithm>
#include <cmath>
#include <vector>

namespace TslMath {
namespace {

// Centres farther apart than this many segments have a left-out segment between them.
constexpr double kNextCentre = 1.5;
// Lines of neighbours meet if they are no farther apart than this many standard deviations.
constexpr double kMeetingLimit = 2;

// A segment's result at its place on the curve.
struct PlacedLine {
  double centre;
  SegmentLine line;
  double noise;
};

// The points begin .. end-1 lie between the centres of `left` and `right`, or beyond the outermost centre, in
// which case both are the same.
struct BlendSpan {
  std::size_t begin;
  std::size_t end;
  PlacedLine left;
  PlacedLine right;
};

std::vector<PlacedLine> FitSegments(SegmentLoader& loader, const Segments& segments,
                                    const RejectionRule& rule, std::vector<SegmentLevel>& levels) {
  std::vector<PlacedLine> fits;
  fits.reserve(segments.Count());
  levels.reserve(segments.Count());
  for (std::size_t k = 0; k < segments.Count(); ++k) {
    const SegmentData data = loader.Load(segments.Begin(k), segments.Begin(k + 1));
    const RobustLine fit = GrowLine(data, rule, ConsensusLine(data, rule), Growth::Line);
    fits.push_back({segments.Centre(k), fit.line, fit.noise});
    levels.push_back({fit.line.level, fit.noise, IsTrusted(fit, rule, data.length)});
  }
  return fits;
}

// Whether the lines of neighbours meet half-way between their centres.
bool Meet(const PlacedLine& end, const PlacedLine& neighbour) {
  const double half = 0.5 * (neighbour.centre - end.centre);
  return std::abs(end.line.At(half) - neighbour.line.At(-half)) <= kMeetingLimit * end.noise;
}

// At an end of the curve a steep background is as far above its one neighbour as a peak would be. But it goes
// on where the neighbour begins.
void DropPeaksButKeepSteepEnds(const std::vector<PlacedLine>& fits, std::size_t segSize,
                               std::vector<SegmentLevel>& levels) {
  const bool firstTrusted = levels.front().valid;
  const bool lastTrusted = levels.back().valid;
  DropPeakSegments(levels, segSize);
  if (fits.size() < 3) return;
  const std::size_t last = fits.size() - 1;
  if (firstTrusted && levels[1].valid && Meet(fits[0], fits[1])) levels[0].valid = true;
  if (lastTrusted && levels[last - 1].valid && Meet(fits[last], fits[last - 1])) levels[last].valid = true;
}

std::vector<PlacedLine> KeepValid(const std::vector<PlacedLine>& fits,
                                  const std::vector<SegmentLevel>& levels) {
  std::vector<PlacedLine> kept;
  for (std::size_t k = 0; k < fits.size(); ++k) {
    if (levels[k].valid) kept.push_back(fits[k]);
  }
  return kept.empty() ? fits : kept;
}

// A parabola over the points begin .. end-1; t counts from `origin`.
struct Parabola {
  double origin;
  double c0, c1, c2;

  double At(double index) const {
    const double t = index - origin;
    return c0 + t * (c1 + t * c2);
  }
};

// out[i] = parabola(i), plus shape[i] if there is one.
TSLBL_WIDE void Draw(const Parabola& p, std::size_t begin, std::size_t end, const double* shape,
                     double* out) {
  const Lanes lane = {0, 1, 2, 3};
  Lanes t = static_cast<double>(begin) - p.origin + lane;
  std::size_t i = begin;
  for (; i + kLaneCount <= end; i += kLaneCount, t += static_cast<double>(kLaneCount)) {
    Lanes value = p.c0 + t * (p.c1 + t * p.c2);
    if (shape != nullptr) {
      Lanes under;
      Load(shape + i, under);
      value += under;
    }
    Store(value, out + i);
  }
  for (; i < end; ++i) out[i] = p.At(static_cast<double>(i)) + (shape == nullptr ? 0 : shape[i]);
}

// The weight goes linearly from one centre to the next, so blended lines give a parabola.
void Blend(const BlendSpan& span, const double* shape, const BaselineAndNoise& out) {
  const PlacedLine& a = span.left;
  const PlacedLine& b = span.right;
  const double distance = b.centre - a.centre;
  const double perPoint = distance > 0 ? 1 / distance : 0;
  const Parabola line{a.centre, a.line.level, a.line.slope + perPoint * (b.line.At(-distance) - a.line.level),
                      perPoint * (b.line.slope - a.line.slope)};
  const Parabola noise{a.centre, a.noise, perPoint * (b.noise - a.noise), 0};
  if (out.baseline != nullptr) Draw(line, span.begin, span.end, shape, out.baseline);
  if (out.noise != nullptr) Draw(noise, span.begin, span.end, nullptr, out.noise);
}

void BlendAll(const std::vector<PlacedLine>& fits, std::size_t n, double farApart, const double* shape,
              const BaselineAndNoise& out) {
  BlendSpan span{0, 0, fits.front(), fits.front()};
  for (std::size_t k = 0; k < fits.size(); ++k) {
    span.end = static_cast<std::size_t>(std::ceil(fits[k].centre));
    span.right = fits[k];
    if (span.right.centre - span.left.centre > farApart) span.left.line.slope = span.right.line.slope = 0;
    Blend(span, shape, out);
    span.begin = span.end;
    span.left = fits[k];
  }
  span.end = n;
  Blend(span, shape, out);
}

// A line needs enough points of its own to be told from noise.
std::size_t UsableSegment(std::size_t segSize, const RejectionRule& rule, std::size_t n) {
  return n < 3 * rule.points ? n : std::max(segSize, rule.LeastCount());
}

void DrawMinimum(const double* y, const double* shape, std::uint32_t n, double noise,
                 const BaselineAndNoise& out) {
  const auto residual = [&](std::uint32_t i) { return y[i] - (shape == nullptr ? 0 : shape[i]); };
  const double level = std::min(residual(0), residual(n - 1));
  for (std::uint32_t i = 0; i < n; ++i) {
    if (out.baseline != nullptr) out.baseline[i] = level + (shape == nullptr ? 0 : shape[i]);
    if (out.noise != nullptr) out.noise[i] = noise;
  }
}

}  // namespace

bool IsFlat(const double* y, std::uint32_t n, double quantum) {
  return n <= 2 || (quantum == 0 && std::all_of(y, y + n, [=](double value) { return value - *y == 0; }));
}

void DrawFlat(const double* y, std::uint32_t n, double quantum, const BaselineAndNoise& out) {
  if (n > 0) DrawMinimum(y, nullptr, n, quantum / 2, out);
}

void FitBackground(const double* y, const double* shape, std::uint32_t n, double quantum,
                   const BackgroundSettings& settings, const BaselineAndNoise& out) {
  if (n == 0) return;
  if (n <= 2) return DrawMinimum(y, shape, n, quantum / 2, out);
  const RejectionRule rule(settings.points, settings.width, n, quantum);
  const std::size_t segSize = UsableSegment(settings.segSize, rule, n);
  const Segments segments(n, segSize);
  SegmentLoader loader(y, shape, n, segments.Longest(), rule.points);
  std::vector<SegmentLevel> levels;
  const std::vector<PlacedLine> fits = FitSegments(loader, segments, rule, levels);
  DropPeaksButKeepSteepEnds(fits, segSize, levels);
  BlendAll(KeepValid(fits, levels), n, kNextCentre * static_cast<double>(segSize), shape, out);
}

}  // namespace TslMath
