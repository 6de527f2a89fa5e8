#include <tslbl/closed/math/baseline/AcceptedSums.h>

#include <tslbl/closed/math/Lanes.h>
#include <algorithm>

namespace TslMath {
namespace {

// Sums of powers of t come from sums of running sums, which take additions alone. For one lane that accepts
// the groups 0, 1 and 3 of four:
//
//   group g                0  1  2  3   in the end
//   accepted               1  1  0  1
//   n   running sum        1  2  2  3    3 points
//   n1  running sum of n   1  3  5  8    8 = 4 + 3 + 1, the sum of u = 4 - g over the accepted groups
//   n2  running sum of n1  1  4  9 17   17 = 10 + 6 + 1, the sum of u(u+1)/2
//
// In group g t is 4u less than it would be in group 4, so the sums of t and t*t follow from n, n1 and n2
// (AddMoments); those of r and t*r go the same way.
//
// Running sums grow with the third power of the length: so many groups of lanes are summed in one go.
constexpr std::size_t kChunkGroups = 1024;

// Per lane: plain sums, and sums of the running sums (suffix 1, and 2 for the sum of those).
struct LaneSums {
  LaneMask n, n1, n2;
  Lanes r, r1, rr, mm;
};

TSLBL_WIDE void SumLanes(const double* y, const double* mean, std::size_t groups, double firstT,
                         const SegmentLine& line, const AcceptanceLimits& limits, LaneSums& result) {
  const Lanes lane = {0, 1, 2, 3};
  Lanes t = firstT + lane;
  LaneMask n{}, n1{}, n2{};
  Lanes r{}, r1{}, rr{}, mm{};
  for (std::size_t g = 0; g < groups; ++g) {
    Lanes point, around;
    Load(y + g * kLaneCount, point);
    Load(mean + g * kLaneCount, around);
    const Lanes value = line.level + line.slope * t;
    t += static_cast<double>(kLaneCount);
    point -= value;
    around -= value;
    Lanes distance;
    Magnitude(point, distance);
    const LaneMask in = (distance <= limits.point) & (around <= limits.mean);
    const Lanes accepted = (Lanes)((LaneMask)point & in);
    const Lanes low = around < 0.0 ? around : Lanes{};
    const Lanes below = (Lanes)((LaneMask)low & in);
    n -= in;
    n1 += n;
    n2 += n1;
    r += accepted;
    r1 += r;
    rr += accepted * accepted;
    mm += below * below;
  }
  result = {n, n1, n2, r, r1, rr, mm};
}

// With u = groups - g, the running sums hold the sums of u, u(u+1)/2 and u r, and t = end - 4u.
void AddMoments(const LaneSums& lanes, std::size_t groups, double firstT, AcceptedSums& sums) {
  for (std::size_t j = 0; j < kLaneCount; ++j) {
    const double end = firstT + static_cast<double>(groups * kLaneCount + j);
    const auto n = static_cast<double>(lanes.n[j]);
    const auto u = static_cast<double>(lanes.n1[j]);
    const double uu = 2 * static_cast<double>(lanes.n2[j]) - u;
    sums.n += n;
    sums.t += end * n - 4 * u;
    sums.tt += end * (end * n - 8 * u) + 16 * uu;
    sums.r += lanes.r[j];
    sums.tr += end * lanes.r[j] - 4 * lanes.r1[j];
    sums.rr += lanes.rr[j];
    sums.mm += lanes.mm[j];
  }
}

}  // namespace

AcceptedSums SumAccepted(const double* y, const double* mean, std::size_t length, const SegmentLine& line,
                         const AcceptanceLimits& limits) {
  AcceptedSums sums;
  const std::size_t groups = WholeGroups(length) / kLaneCount;
  for (std::size_t first = 0; first < groups; first += kChunkGroups) {
    const std::size_t count = std::min(kChunkGroups, groups - first);
    const std::size_t offset = first * kLaneCount;
    const double firstT = static_cast<double>(offset) - 0.5 * static_cast<double>(length - 1);
    LaneSums lanes;
    SumLanes(y + offset, mean + offset, count, firstT, line, limits, lanes);
    AddMoments(lanes, count, firstT, sums);
  }
  return sums;
}

}  // namespace TslMath
