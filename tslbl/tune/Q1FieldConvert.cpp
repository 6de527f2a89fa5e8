#include <tslbl/tune/Q1FieldConvert.h>

#include <tslbl/closed/common/MessageId.h>
#include <tslbl/closed/common/StringTable.h>
#include <tslbl/records/VexException.h>
#include <tslbl/tune/FieldLimits.h>
#include <tslbl/tune/FieldTable.h>
#include <tslbl/tune/PointTable.h>
#include <algorithm>

namespace TslBL {
namespace {

double Cut(double value, double min, double max) { return value < min ? min : value > max ? max : value; }

}  // namespace

void Q1FieldConvert::WCalPts(const std::vector<Q1CalPt>& points, TuneField::Id field) {
  const FieldRow* row = FindField(field);
  if (row == nullptr || !row->IsSteppable())
    throw VexException(L"The field " + TuneField::FieldToString(field) + L" is not steppable.");
  PointTable table;
  for (const Q1CalPt& point : points) {
    const auto entry = point.Fields.find(field);
    if (entry != point.Fields.end()) table.emplace_back(point.MZ, entry->second);
  }
  SortByAbscissa(table);
  points_ = std::move(table);
  level_ = row->traits.beyondEnds == BeyondEnds::Level;
  const Limits limits = FieldLimits().QLimits(Probes::ESI, static_cast<int>(field));
  min_ = limits.Min;
  max_ = limits.Max;
}

bool Q1FieldConvert::MZToFieldVal(double mz, double& value, std::wstring& error) const {
  if (Empty()) {
    error = TslLoadString(ModuleHandle(), kNoPointsForField);
    return false;
  }
  value = MZToFieldVal(mz);
  return true;
}

std::optional<double> Q1FieldConvert::QOpenMZ() const {
  const auto twin = std::ranges::adjacent_find(points_, {}, &TablePoint::first);
  return twin != points_.end() ? std::optional(twin->first) : std::nullopt;
}

double Q1FieldConvert::MZToFieldVal(double mz) const { return Cut(Interpolate(mz), min_, max_); }

double Q1FieldConvert::Interpolate(double mz) const {
  if (points_.empty()) return 0.0;
  if (points_.size() == 1) return points_.front().second;
  const std::size_t last = points_.size() - 1;
  if (mz < points_.front().first)
    return level_ ? points_.front().second : LineThrough(points_[0], points_[1]).At(mz);
  if (mz > points_.back().first)
    return level_ ? points_.back().second : LineThrough(points_[last - 1], points_[last]).At(mz);
  const std::size_t end = SegmentEnd<&TablePoint::first>(points_, mz);
  return CheckedLineThrough(points_[end - 1], points_[end]).At(mz);
}

}  // namespace TslBL
