#include <tslbl/closed/math/baseline/SegmentGuard.h>

#include <tslbl/closed/math/baseline/MovingExtrema.h>

#include <algorithm>
#include <limits>

namespace TslMath {
namespace {

// A peak group wider than this is not expected; shorter segments are compared over as many of them.
constexpr std::size_t kGuardReach = 250;
constexpr double kGuardLimit = 4;

// A segment without a fit must not lower the opening, so it takes the highest level of the others.
std::vector<double> Levels(const std::vector<SegmentLevel>& segments) {
  double highest = -std::numeric_limits<double>::infinity();
  for (const SegmentLevel& s : segments) {
    if (s.valid && s.level > highest) highest = s.level;
  }
  std::vector<double> levels;
  levels.reserve(segments.size());
  for (const SegmentLevel& s : segments) levels.push_back(s.valid ? s.level : highest);
  return levels;
}

std::vector<double> LeastNoise(const std::vector<SegmentLevel>& segments, std::size_t window,
                               ExtremaScratch& scratch) {
  std::vector<double> noise;
  noise.reserve(segments.size());
  for (const SegmentLevel& s : segments) {
    noise.push_back(s.valid ? s.noise : std::numeric_limits<double>::infinity());
  }
  MovingMinimum(noise.data(), noise.size(), window, noise.data(), scratch);
  return noise;
}

}  // namespace

void DropPeakSegments(std::vector<SegmentLevel>& segments, std::size_t segmentLength) {
  const std::size_t count = segments.size();
  if (count < 3) return;
  const std::size_t reach = (kGuardReach + segmentLength - 1) / segmentLength;
  const std::size_t window = std::min(2 * reach + 1, count - (count + 1) % 2);
  ExtremaScratch scratch;
  std::vector<double> allowed = Levels(segments);
  MovingOpening(allowed.data(), count, window, allowed.data(), scratch);
  const std::vector<double> noise = LeastNoise(segments, window, scratch);
  for (std::size_t k = 0; k < count; ++k) {
    if (segments[k].level > allowed[k] + kGuardLimit * noise[k]) segments[k].valid = false;
  }
}

}  // namespace TslMath
