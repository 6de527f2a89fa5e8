#include <tool/commands/chrom/PeakAreas.h>

#include <tool/commands/chrom/FittedShares.h>
#include <tslbl/curve/CurveEval.h>
#include <algorithm>
#include <cmath>
#include <limits>
#include <numeric>

namespace TslTool {
namespace {

constexpr double kBeyond = 0.5;        // widths by which a peak is longer than it stands out of the noise
constexpr double kLeastHalf = 1.25;    // widths from the top to an end, 99.8 % of a Gaussian
constexpr double kBeside = 2.0;        // widths on which the level is taken
constexpr std::size_t kRoomParts = 3;  // the rest shows the level
constexpr std::size_t kFewest = 4;

// Points from `first` up to, not including, `end`.
struct Stretch {
  std::size_t first = 0;
  std::size_t end = 0;

  std::size_t Size() const { return end > first ? end - first : 0; }
};

// Peaks that touch: rows from `first` up to, not including, `end`, and the points that they may have.
struct Group {
  Stretch rows;
  Stretch points;
  Stretch room;
};

// The level beside a group at one side.
struct Level {
  double seconds = 0.0;
  double value = 0.0;
  double variance = 0.0;
  bool isKnown = false;
};

double WidthOf(const TslBL::PeakInfo& peak) {
  return std::max(peak.halfHeightRightIdx - peak.halfHeightLeftIdx, 1.0);
}

std::vector<double> VarianceOf(const Chromatogram& measured, const TslBL::ICObj& curve,
                               const SmoothFilter* filter) {
  if (!measured.variance.empty()) return measured.variance;
  if (!filter || curve.noise.size() != curve.yAxis.size()) return {};
  const std::vector<double>& weights = filter->weights;
  const double squares = std::inner_product(weights.begin(), weights.end(), weights.begin(), 0.0);
  std::vector<double> variance;
  variance.reserve(curve.noise.size());
  for (const double noise : curve.noise) variance.push_back(noise * noise / squares);
  return variance;
}

class Integral {
 public:
  Integral(const Chromatogram& measured, const TslBL::ICObj& curve, const SmoothFilter* filter)
      : seconds_(measured.seconds),
        above_(OnlySmooths(curve) ? measured.values : curve.yAxis),
        curve_(curve),
        variance_(VarianceOf(measured, curve, filter)) {
    for (std::size_t i = 0; i < curve.baseline.size(); ++i) above_[i] -= curve.baseline[i];
  }

  std::vector<PeakArea> OfAll() const {
    std::vector<PeakArea> areas;
    for (const Group& group : Groups()) AddGroup(group, areas);
    return areas;
  }

  PeakArea Between(std::size_t first, std::size_t last, const Level& left = {},
                   const Level& right = {}) const {
    PeakArea found{0.0, 0.0, first, last};
    double variance = 0.0;
    for (std::size_t i = first; i <= last; ++i) {
      const double length = (seconds_[std::min(i + 1, last)] - seconds_[std::max(i, first + 1) - 1]) / 2.0;
      found.area += length * above_[i];
      if (!variance_.empty()) variance += length * length * variance_[i];
    }
    for (const auto& [level, other] : {std::pair{left, right}, {right, left}}) {
      if (!level.isKnown) continue;
      const double share = ShareOf(level, other, seconds_[first], seconds_[last]);
      found.area -= share * level.value;
      variance += share * share * level.variance;
    }
    found.error = variance_.empty() ? std::numeric_limits<double>::quiet_NaN() : std::sqrt(variance);
    return found;
  }

 private:
  // What the integral from `from` to `to` of the line through two levels has of one of them.
  static double ShareOf(const Level& level, const Level& other, double from, double to) {
    const double length = to - from;
    if (!other.isKnown) return length;
    const double middle = (from + to) / 2.0;
    return length * (other.seconds - middle) / (other.seconds - level.seconds);
  }

  std::vector<Group> Groups() const {
    std::vector<Group> groups;
    const auto& peaks = curve_.peaks;
    for (std::size_t i = 0; i < peaks.size(); ++i) {
      const bool touches = i > 0 && peaks[i].startIdx <= peaks[i - 1].endIdx + 1;
      if (!touches) groups.push_back({{i, i}, {peaks[i].startIdx, 0}, {0, seconds_.size()}});
      groups.back().rows.end = i + 1;
      groups.back().points.end = peaks[i].endIdx + 1;
    }
    for (std::size_t i = 1; i < groups.size(); ++i)
      groups[i - 1].room.end = groups[i].room.first = (groups[i - 1].points.end + groups[i].points.first) / 2;
    return groups;
  }

  void AddGroup(const Group& group, std::vector<PeakArea>& areas) const {
    const auto& peaks = curve_.peaks;
    const auto points = [&](double widths, std::size_t row) {
      return static_cast<std::size_t>(std::lround(widths * WidthOf(peaks[row])));
    };
    const std::size_t lastRow = group.rows.end - 1;
    const std::size_t begin =
        Back(group.points.first, Lacking(peaks[group.rows.first], true), group.room.first, kRoomParts);
    const std::size_t end =
        Forth(group.points.end, Lacking(peaks[lastRow], false), group.room.end, kRoomParts);
    Level left;
    Level right;
    if (curve_.baselineParams.Auto && !curve_.baseline.empty()) {
      left = LevelOf({Back(begin, points(kBeside, group.rows.first), group.room.first), begin});
      right = LevelOf({end, Forth(end, points(kBeside, lastRow), group.room.end)});
    }
    for (std::size_t row = group.rows.first; row < group.rows.end; ++row) {
      const std::size_t first = row == group.rows.first ? begin : peaks[row].startIdx;
      const std::size_t last = row + 1 == group.rows.end ? end - 1 : peaks[row].endIdx;
      areas.push_back(Between(first, last, left, right));
    }
    Share(group, {begin, end}, left, right, areas);
  }

  // Divides what peaks that touch have together as a fit tells, if it tells.
  void Share(const Group& group, const Stretch& points, const Level& left, const Level& right,
             std::vector<PeakArea>& areas) const {
    if (group.rows.Size() < 2) return;
    const double level = MeanBaseline(points);
    std::vector<double> values(above_.begin() + Offset(points.first), above_.begin() + Offset(points.end));
    for (std::size_t i = 0; i < values.size(); ++i)
      values[i] += level - LevelAt(seconds_[points.first + i], left, right);
    std::vector<std::size_t> tops;
    double width = 0.0;
    for (std::size_t row = group.rows.first; row < group.rows.end; ++row) {
      tops.push_back(curve_.peaks[row].apexIdx - points.first);
      width = std::max(width, SecondsAcross(curve_.peaks[row]));
    }
    const double noise = variance_.empty() ? 0.0 : std::sqrt(variance_[points.first]);
    const std::vector<FittedShare> shares = FittedShares(
        {std::span(seconds_).subspan(points.first, points.Size()), values, tops, level, width, noise});
    if (shares.empty()) return;
    const auto first = areas.end() - std::ssize(shares);
    const double all = std::accumulate(first, areas.end(), 0.0,
                                       [](double sum, const PeakArea& area) { return sum + area.area; });
    for (std::size_t k = 0; k < shares.size(); ++k) {
      PeakArea& area = first[Offset(k)];
      area.area = shares[k].share * all;
      if (!std::isnan(area.error) && shares[k].error > area.error) area.error = shares[k].error;
    }
  }

  static std::ptrdiff_t Offset(std::size_t index) { return static_cast<std::ptrdiff_t>(index); }

  // At least 0.
  double MeanBaseline(const Stretch& points) const {
    if (curve_.baseline.empty()) return 0.0;
    const auto first = curve_.baseline.begin() + Offset(points.first);
    const double sum = std::accumulate(first, first + Offset(points.Size()), 0.0);
    return std::max(sum / static_cast<double>(points.Size()), 0.0);
  }

  double SecondsAcross(const TslBL::PeakInfo& peak) const {
    const double step = (seconds_[peak.endIdx] - seconds_[peak.startIdx]) / (peak.endIdx - peak.startIdx);
    return WidthOf(peak) * step;
  }

  // On the line through the levels of both sides, or at the one that is known.
  static double LevelAt(double seconds, const Level& left, const Level& right) {
    if (!left.isKnown || !right.isKnown) return left.isKnown ? left.value : right.value;
    return left.value +
           (seconds - left.seconds) / (right.seconds - left.seconds) * (right.value - left.value);
  }

  // Points by which a peak is longer than it stands out of the noise.
  static std::size_t Lacking(const TslBL::PeakInfo& peak, bool isLeft) {
    const double half = isLeft ? static_cast<double>(peak.apexIdx) - peak.startIdx
                               : static_cast<double>(peak.endIdx) - peak.apexIdx;
    const double width = WidthOf(peak);
    return static_cast<std::size_t>(std::lround(std::max(kBeyond * width, kLeastHalf * width - half)));
  }

  // At most to the end of the room, of which a part may be kept free.
  static std::size_t Back(std::size_t from, std::size_t by, std::size_t least, std::size_t part = 1) {
    const std::size_t room = from - std::min(least, from);
    return from - std::min(by, room / part);
  }
  static std::size_t Forth(std::size_t from, std::size_t by, std::size_t most, std::size_t part = 1) {
    const std::size_t room = std::max(most, from) - from;
    return from + std::min(by, room / part);
  }

  Level LevelOf(const Stretch& beside) const {
    if (beside.Size() < kFewest) return {};
    const auto count = static_cast<double>(beside.Size());
    Level level;
    level.isKnown = true;
    for (std::size_t i = beside.first; i < beside.end; ++i) {
      level.seconds += seconds_[i] / count;
      level.value += above_[i] / count;
      if (!variance_.empty()) level.variance += variance_[i] / (count * count);
    }
    return level;
  }

  const std::vector<double>& seconds_;
  std::vector<double> above_;  // the baseline
  const TslBL::ICObj& curve_;
  std::vector<double> variance_;  // empty: not known
};

}  // namespace

std::vector<PeakArea> PeakAreas(const Chromatogram& measured, const TslBL::ICObj& curve,
                                const SmoothFilter* filter) {
  return Integral(measured, curve, filter).OfAll();
}

PeakArea AreaBetween(const Chromatogram& measured, const TslBL::ICObj& curve, const SmoothFilter* filter,
                     std::size_t first, std::size_t last) {
  return Integral(measured, curve, filter).Between(first, last);
}

}  // namespace TslTool
