#include <tslbl/tune/MZConvert.h>

#include <tslbl/tune/PointTable.h>

namespace TslBL {

void MZConvert::WCalPts(const std::vector<MZCalPt>& points) {
  PointTable table;
  table.reserve(points.size());
  for (const MZCalPt& point : points) table.emplace_back(point.MZ, point.MassDAC);
  SortByAbscissa(table);
  points_ = std::move(table);
}

double MZConvert::MZToDAC(double mz) const {
  if (points_.empty()) return 0.0;
  if (points_.size() == 1) return points_.front().second;
  const std::size_t last = points_.size() - 1;
  if (mz < points_.front().first) return LineThrough(points_[0], points_[1]).At(mz);
  if (mz > points_.back().first) return LineThrough(points_[last - 1], points_[last]).At(mz);
  const std::size_t end = SegmentEnd<&TablePoint::first>(points_, mz);
  return CheckedLineThrough(points_[end - 1], points_[end]).At(mz);
}

double MZConvert::DACToMZ(double dac) const {
  if (points_.empty()) return 0.0;
  if (points_.size() == 1) return points_.front().first;
  const bool outside = dac < points_.front().second || dac > points_.back().second;
  const std::size_t end = outside ? points_.size() - 1 : SegmentEnd<&TablePoint::second>(points_, dac);
  const TablePoint& start = outside ? points_.front() : points_[end - 1];
  const Line line = CheckedLineThrough(start, points_[end]);
  return line.slope == 0.0 ? start.first : (dac - line.intercept) / line.slope;
}

}  // namespace TslBL
