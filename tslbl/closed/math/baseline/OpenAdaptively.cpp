// Adaptive: a morphological opening as wide as the peaks ask for, and the kernel on what stands above it.
#include <tslbl/closed/math/SmallestStep.h>
#include <tslbl/closed/math/baseline/BackgroundKernel.h>
#include <tslbl/closed/math/baseline/BaselineAndNoise.h>
#include <tslbl/closed/math/baseline/CellCurve.h>
#include <tslbl/closed/math/baseline/MovingExtrema.h>
#include <tslbl/closed/math/baseline/RobustLine.h>
#include <tslbl/closed/math/baseline/SegmentLoader.h>
#include <tslbl/closed/math/smooth/Smoothing.h>

#include <algorithm>
#include <cmath>
#include <vector>

namespace TslMath {
namespace {

// A narrow opening stands on background where it is within this many SDs of the widest one.
constexpr double kSameLevel = 2;

// Lengths of the structuring elements and of the moving mean, in cells.
struct Elements {
  std::size_t narrow, middle, wide, mean;

  // Wider than twice the curve is no different from twice.
  Elements(std::size_t segSize, std::size_t window, std::size_t cells)
      : narrow(std::clamp<std::size_t>(segSize / kCellSize, 2, cells + 2)),
        middle(2 * narrow),
        wide(std::min(4 * narrow, 2 * (cells + 2))),
        mean(std::clamp<std::size_t>(window / kCellSize, 1, cells + 2)) {}

  // So far from its ends a continued curve feels them: half of the widest opening, a narrow one, half a
  // rounding, two halves of the mean, and one cell to draw the last points.
  std::size_t Margin() const { return wide / 2 + 2 * narrow + mean + 2; }
};

// The robust lines of the first and the last stretch of the curve, so that the openings keep a sloping end.
void ContinueAlongEnds(const double* y, std::size_t n, const RejectionRule& rule, std::size_t segSize,
                       CellCurve& curve) {
  const std::size_t length = std::min<std::size_t>(n, std::max<std::size_t>(segSize, kRefiningSegment));
  SegmentLoader loader(y, nullptr, n, length, rule.points);
  const auto fit = [&](std::size_t begin) {
    const SegmentData data = loader.Load(begin, begin + length);
    return GrowLine(data, rule, ConsensusLine(data, rule), Growth::Line).line;
  };
  const double middle = 0.5 * static_cast<double>(length - 1);
  const SegmentLine left = fit(0);
  curve.Continue(left, middle, fit(n - length), static_cast<double>(n - length) + middle);
}

std::vector<double> Opening(const std::vector<double>& cells, std::size_t length, ExtremaScratch& scratch) {
  std::vector<double> opening(cells.size());
  MovingOpening(cells.data(), cells.size(), length, opening.data(), scratch);
  return opening;
}

std::vector<double> MovingMean(const std::vector<double>& cells, std::size_t width) {
  std::vector<double> mean(cells.size());
  const auto size = static_cast<std::uint32_t>(cells.size());
  SmoothMean(cells.data(), size, 0, size, static_cast<std::uint32_t>(width), mean.data());
  return mean;
}

// Noise of single points in each cell, from the scatter of the cells about the widest opening.
std::vector<double> PointNoise(const CellCurve& curve, const std::vector<double>& widest, std::size_t segSize,
                               double floor) {
  std::vector<double> noise(curve.Cells().size(), floor);
  const auto inner = static_cast<std::uint32_t>(curve.InnerSize());
  const auto segment =
      static_cast<std::uint32_t>(std::max<std::size_t>(segSize, kRefiningSegment) / kCellSize);
  double* innerNoise = noise.data() + curve.Margin();
  FitBackground(curve.Inner(), widest.data() + curve.Margin(), inner, SmallestStep(curve.Inner(), inner),
                {segment, 1, kRefiningWidth}, {nullptr, innerNoise});
  for (std::size_t c = 0; c < inner; ++c) {
    innerNoise[c] = std::max(innerNoise[c] * std::sqrt(static_cast<double>(kCellSize)), floor);
  }
  return noise;
}

// The narrowest opening that agrees with the widest. Where a group of peaks is wider than the narrow element,
// its opening stands on the group, and a wider one takes its place.
std::vector<double> AdaptiveOpening(const CellCurve& curve, const Elements& elements, std::size_t segSize,
                                    double noiseFloor, ExtremaScratch& scratch) {
  std::vector<double> opening = Opening(curve.Cells(), elements.narrow, scratch);
  const std::vector<double> middle = Opening(curve.Cells(), elements.middle, scratch);
  const std::vector<double> wide = Opening(curve.Cells(), elements.wide, scratch);
  const std::vector<double> noise =
      PointNoise(curve, MovingMean(wide, elements.wide), 2 * segSize, noiseFloor);
  for (std::size_t c = 0; c < opening.size(); ++c) {
    const double limit = wide[c] + kSameLevel * noise[c];
    if (opening[c] > limit) opening[c] = middle[c] <= limit ? middle[c] : wide[c];
  }
  return Opening(opening, elements.narrow, scratch);
}

// Takes the edges off the steps that an opening has, never upwards.
std::vector<double> Rounded(const std::vector<double>& opening, std::size_t length, ExtremaScratch& scratch) {
  std::vector<double> low(opening.size());
  std::vector<double> high(opening.size());
  MovingMinimum(opening.data(), opening.size(), length, low.data(), scratch);
  MovingMaximum(opening.data(), opening.size(), length, high.data(), scratch);
  for (std::size_t c = 0; c < low.size(); ++c) low[c] = std::min(opening[c], 0.5 * (low[c] + high[c]));
  return low;
}

void DrawShape(const double* y, std::uint32_t n, std::size_t segSize, std::size_t window, double quantum,
               double* shape) {
  const RejectionRule rule(kRefiningPoints, kRefiningWidth, n, quantum);
  const Elements elements(segSize, window, n / kCellSize);
  CellCurve curve(y, n, elements.Margin());
  ContinueAlongEnds(y, n, rule, segSize, curve);
  ExtremaScratch scratch;
  std::vector<double> cells = AdaptiveOpening(curve, elements, segSize, rule.noiseFloor, scratch);
  cells = Rounded(cells, elements.narrow, scratch);
  cells = MovingMean(MovingMean(cells, elements.mean), elements.mean);
  curve.DrawPoints(cells, n, shape);
}

}  // namespace

void OpenAdaptively(const double* y, std::uint32_t n, std::uint32_t segSize, std::uint32_t window,
                    const BaselineAndNoise& out) {
  segSize = std::min(segSize, n);
  const std::uint32_t refined = std::max(segSize < n / 2 ? 2 * segSize : n, kRefiningSegment);
  const BackgroundSettings refining{refined, kRefiningPoints, kRefiningWidth};
  const double quantum = SmallestStep(y, n);
  if (IsFlat(y, n, quantum)) return DrawFlat(y, n, quantum, out);
  double* shape = out.baseline != nullptr ? out.baseline : out.noise;
  DrawShape(y, n, segSize, window, quantum, shape);
  FitBackground(y, shape, n, quantum, refining, out);
}

}  // namespace TslMath
