#include <tslbl/closed/math/baseline/ShotBackground.h>

#include <tslbl/closed/math/baseline/CurveFloor.h>
#include <tslbl/closed/math/baseline/IonCounter.h>
#include <tslbl/closed/math/baseline/Polyline.h>
#include <tslbl/closed/math/baseline/Segments.h>

#include <algorithm>
#include <cmath>
#include <optional>
#include <vector>

namespace TslMath {
namespace {

// Shorter segments hold too few ions.
constexpr std::size_t kLeastSegment = 250;
// Of the points on the floor.
constexpr double kSparseShare = 0.5;
constexpr double kDenseShare = 0.1;
// With more ions in the mean than this a background is dense.
constexpr double kDenseMean = 20.0;
// Programs leave out what is below some 2 to 3 standard deviations.
constexpr double kThresholdDeviations = 2.5;
// An ion that no filter has spread is as high as the smallest step.
constexpr double kUnfiltered = 1.5;
// At most. The 1500 points of at least six, where there are so many, show variance / mean of counts that no
// filter has spread within 4 %.
constexpr std::size_t kJudgedSegments = 12;

std::vector<IonBackground> CutIntoSegments(const double* y, std::size_t n, std::size_t segSize,
                                           const CurveFloor& floor) {
  const Segments cut(n, segSize);
  std::vector<IonBackground> segments;
  segments.reserve(cut.Count());
  for (std::size_t k = 0; k < cut.Count(); ++k) {
    const std::size_t begin = cut.Begin(k);
    const std::size_t end = cut.Begin(k + 1);
    segments.push_back({begin, end, floor.ShareOf(y + begin, end - begin), 0.0});
  }
  return segments;
}

bool IsOnFloor(const IonBackground& segment) { return segment.onFloor > kDenseShare; }

// Whether ions are higher than the smallest step, judged by some segments of a long curve: counting those of
// dense counts costs more than their background.
bool IsSpread(const double* y, std::size_t n, const CurveFloor& floor, std::size_t length, double quantum,
              const std::vector<IonBackground>& segments) {
  std::vector<IonBackground> some;
  const std::size_t stride = segments.size() / kJudgedSegments + 1;
  for (std::size_t k = 0; k < segments.size(); k += stride) some.push_back(segments[k]);
  return JudgeBumps(y, n, floor, length, quantum, some).ion > kUnfiltered * quantum;
}

// Straight from centre to centre of the segments.
template <class Level>
std::vector<double> Draw(const std::vector<IonBackground>& segments, std::size_t n, Level level) {
  std::vector<Knot> knots;
  knots.reserve(segments.size());
  for (const IonBackground& segment : segments)
    knots.push_back({0.5 * static_cast<double>(segment.begin + segment.end - 1), level(segment)});
  std::vector<double> drawn(n);
  DrawPolyline(knots, n, drawn.data());
  return drawn;
}

void TakeNoise(const IonBackground& segment, const std::vector<double>& shots, double* noise) {
  for (std::size_t i = segment.begin; i < segment.end; ++i)
    noise[i] = segment.onFloor > kSparseShare ? shots[i] : std::max(noise[i], shots[i]);
}

// Never less than an algorithm has found: half a count where the bumps are ions after all.
void TakeThresholdNoise(const std::vector<IonBackground>& segments, const std::vector<Knot>& threshold,
                        std::size_t n, double* noise) {
  std::vector<double> level(n);
  DrawPolyline(threshold, n, level.data());
  for (const IonBackground& segment : segments)
    if (IsOnFloor(segment))
      for (std::size_t i = segment.begin; i < segment.end; ++i)
        noise[i] = std::max(noise[i], level[i] / kThresholdDeviations);
}

void TakeBaseline(const IonBackground& segment, const std::vector<double>& mean, double* baseline) {
  for (std::size_t i = segment.begin; i < segment.end; ++i) baseline[i] = mean[i];
}

}  // namespace

void TakeShotBackground(const double* y, std::uint32_t n, std::uint32_t segSize, double quantum,
                        const BaselineAndNoise& out) {
  const std::optional<CurveFloor> floor = FindCurveFloor(y, n);
  if (!floor) return;
  const std::size_t length = std::max<std::size_t>(segSize, kLeastSegment);
  std::vector<IonBackground> segments = CutIntoSegments(y, n, length, *floor);
  if (std::ranges::none_of(segments, IsOnFloor) && !IsSpread(y, n, *floor, length, quantum, segments)) return;
  const FloorBumps bumps = JudgeBumps(y, n, *floor, length, quantum, segments);
  if (!bumps.threshold.empty() && out.noise != nullptr)
    TakeThresholdNoise(segments, bumps.threshold, n, out.noise);
  const double height = bumps.ion;
  if (!(height > 0.0)) return;
  // Of many ions, and of some that no filter has spread, the algorithms' own figures are good.
  const bool isSpread = height > kUnfiltered * quantum;
  std::erase_if(segments, [&](const IonBackground& s) {
    return !IsOnFloor(s) && (!isSpread || s.mean > kDenseMean * height);
  });
  if (segments.empty()) return;
  if (out.noise != nullptr) {
    const auto shots =
        Draw(segments, n, [&](const IonBackground& s) { return std::sqrt(height * (s.mean + height)); });
    for (const IonBackground& segment : segments) TakeNoise(segment, shots, out.noise);
  }
  if (out.baseline != nullptr) {
    const auto mean = Draw(segments, n, [&](const IonBackground& s) { return floor->value + s.mean; });
    for (const IonBackground& segment : segments)
      if (IsOnFloor(segment)) TakeBaseline(segment, mean, out.baseline);
  }
}

}  // namespace TslMath
