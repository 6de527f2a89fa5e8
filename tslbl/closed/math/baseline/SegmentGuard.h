#pragma once
// Finds the segments that a peak fills from end to end: their fit is sound, and yet it is not background.
#include <cstddef>
#include <cstdint>
#include <vector>

namespace TslMath {

// One segment's candidate for the background.
struct SegmentLevel {
  double level;
  double noise;
  bool valid;
};

// Takes validity from each segment whose level is above the opening of all levels (moving minimum, then
// moving maximum) by more than 4 times the least noise around it. The window holds about 250 points on
// either side. Fewer than 3 segments are left as they are.
void DropPeakSegments(std::vector<SegmentLevel>& segments, std::size_t segmentLength);

}  // namespace TslMath
