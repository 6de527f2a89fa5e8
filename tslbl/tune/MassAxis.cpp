#include <tslbl/tune/MassAxis.h>

#include <tslbl/tune/PointTable.h>
#include <algorithm>
#include <limits>

namespace TslBL {
namespace {

// The line that one DAC value lies on, and which others do too.
class Stretch {
 public:
  // For a table of two points or more.
  Stretch(const PointTable& table, double dac)
      : front_(table.front().second), back_(table.back().second), outside_(Outside(dac)) {
    const std::size_t end = outside_ ? table.size() - 1 : SegmentEnd<&TablePoint::second>(table, dac);
    const TablePoint& start = outside_ ? table.front() : table[end - 1];
    line_ = CheckedLineThrough(start, table[end]);
    flatMZ_ = start.first;
    upTo_ = table[end].second;
    // DAC values that do not rise leave a segment only what no earlier one takes.
    for (std::size_t i = 1; i < end; ++i) above_ = std::max(above_, table[i].second);
  }

  bool Holds(double dac) const {
    return Outside(dac) == outside_ && (outside_ || (dac > above_ && dac <= upTo_));
  }
  double MZ(double dac) const { return line_.slope == 0.0 ? flatMZ_ : (dac - line_.intercept) / line_.slope; }

 private:
  bool Outside(double dac) const { return dac < front_ || dac > back_; }

  double front_;
  double back_;
  bool outside_;
  Line line_{};
  double flatMZ_ = 0.0;
  double above_ = -std::numeric_limits<double>::infinity();
  double upTo_ = 0.0;
};

}  // namespace

std::vector<double> MassAxis(const MZConvert& convert, double start, double step, std::size_t points) {
  const PointTable& table = convert.Points();
  if (table.size() < 2) return std::vector<double>(points, table.empty() ? 0.0 : table.front().first);
  const auto dac = [=](std::size_t i) { return static_cast<double>(i) * step + start; };
  std::vector<double> axis(points);
  for (std::size_t i = 0; i < points;) {
    const Stretch stretch(table, dac(i));
    do {
      axis[i] = stretch.MZ(dac(i));
    } while (++i < points && stretch.Holds(dac(i)));
  }
  return axis;
}

}  // namespace TslBL
