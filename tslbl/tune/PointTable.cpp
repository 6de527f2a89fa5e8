#include <tslbl/tune/PointTable.h>

#include <algorithm>
#include <cmath>
#include <stdexcept>

namespace TslBL {

void SortByAbscissa(PointTable& points) {
  std::ranges::sort(points, [](const TablePoint& a, const TablePoint& b) {
    return a.first < b.first || (std::isnan(b.first) && !std::isnan(a.first));
  });
}

Line LineThrough(const TablePoint& a, const TablePoint& b) {
  const double slope = (b.second - a.second) / (b.first - a.first);
  return {slope, a.second - slope * a.first};
}

Line CheckedLineThrough(const TablePoint& a, const TablePoint& b) {
  if (a.first == b.first) throw std::runtime_error("Divide by zero error");
  return LineThrough(a, b);
}

}  // namespace TslBL
