#include <tool/plot/Labels.h>

#include <tslbl/closed/common/Text.h>
#include <algorithm>
#include <vector>

namespace TslTool {
namespace {

constexpr double kSize = 10;
constexpr double kAbove = 4;  // from the point to the text

// What the text will take on the page; fonts differ, so not too little.
Box BoxOf(const Label& label) {
  const double width = 0.65 * kSize * static_cast<double>(TslCommon::FromUtf8(label.text).size());
  return {label.at.x - width / 2, label.at.y - kAbove - kSize, width, kSize};
}

bool Overlap(const Box& a, const Box& b) {
  return a.left < b.Right() && b.left < a.Right() && a.top < b.Bottom() && b.top < a.Bottom();
}

bool IsInside(const Box& inner, const Box& outer) {
  return inner.left >= outer.left && inner.Right() <= outer.Right() && inner.top >= outer.top &&
         inner.Bottom() <= outer.Bottom();
}

}  // namespace

void DrawLabels(Svg& svg, const Box& box, std::span<const Label> labels) {
  std::vector<Box> taken;
  for (const Label& label : labels) {
    const Box wanted = BoxOf(label);
    const auto isCovered = [&](const Box& other) { return Overlap(wanted, other); };
    if (!IsInside(wanted, box) || std::ranges::any_of(taken, isCovered)) continue;
    svg.Text({label.at.x, label.at.y - kAbove}, Anchor::Middle, kSize, label.text);
    taken.push_back(wanted);
  }
}

}  // namespace TslTool
