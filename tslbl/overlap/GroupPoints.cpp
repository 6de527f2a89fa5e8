#include <tslbl/overlap/GroupPoints.h>

#include <numeric>
#include <stdexcept>

namespace TslBL {

GroupPoints QGroupPoints(const Spectrum& spectrum, std::uint32_t first, std::uint32_t last) {
  if (last < first) throw std::logic_error("Invalid group range.");
  if (last >= std::min(spectrum.xAxis.size(), spectrum.yAxis.size()))
    throw std::logic_error("Invalid spectrum range.");
  const std::span<const double> y = std::span(spectrum.yAxis).subspan(first, last - first + 1);
  GroupPoints points{first, std::vector<double>(y.size()), std::vector<double>(y.begin(), y.end())};
  std::iota(points.x.begin(), points.x.end(), 0.0);
  return points;
}

}  // namespace TslBL
