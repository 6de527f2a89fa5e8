#include <tool/plot/CurvePart.h>

#include <algorithm>

namespace TslTool {

CurvePart::CurvePart(const std::vector<double>& x, const Range& view) {
  const auto begin = std::ranges::lower_bound(x, view.low) - x.begin();
  const auto end = std::ranges::upper_bound(x, view.high) - x.begin();
  const auto size = static_cast<std::ptrdiff_t>(x.size());
  begin_ = static_cast<std::size_t>(std::max<std::ptrdiff_t>(begin - 1, 0));
  end_ = static_cast<std::size_t>(std::min(end + 1, size));
}

std::span<const double> CurvePart::Of(const std::vector<double>& values) const {
  return values.size() < end_ ? std::span<const double>() : std::span(values).subspan(begin_, end_ - begin_);
}

}  // namespace TslTool
