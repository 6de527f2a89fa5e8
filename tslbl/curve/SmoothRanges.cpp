#include <tslbl/curve/SmoothRanges.h>

#include <tslbl/closed/common/Truncate.h>
#include <tslbl/curve/Curve.h>
#include <algorithm>
#include <cstdlib>
#include <utility>

namespace TslBL {
namespace {

class RangeBuilder {
 public:
  explicit RangeBuilder(const Curve& curve) : curve_(curve) {}

  std::vector<SmoothRange> Build() {
    const std::vector<SmoothStep>& steps = curve_.smoothParams.Steps;
    if (steps.size() == 1) BuildOne(steps.front());
    if (steps.size() > 1) BuildSeveral(steps);
    return std::move(ranges_);
  }

 private:
  void BuildOne(const SmoothStep& step) {
    if (step.Value > curve_.xAxis.back()) return;
    const std::uint32_t first =
        step.Value > curve_.xAxis.front() ? curve_.QXAxisToIdx(step.Value, ROUND_DOWN) : 0;
    ranges_.push_back({first, curve_.QNumPoints(), step.Size});
  }

  // A step at or below the place reached so far only sets the width from there on.
  void BuildSeveral(std::vector<SmoothStep> steps) {
    std::ranges::stable_sort(steps, {}, &SmoothStep::Value);
    double x = curve_.xAxis.front();
    std::uint32_t width = 0;
    bool seen = false;
    for (const SmoothStep& step : steps) {
      if (step.Value > x) {
        if (step.Value > curve_.xAxis.back()) {
          if (!seen) return;
          break;
        }
        if (seen) AddTransition(x, step.Value, width, step.Size);
        x = step.Value;
      }
      width = step.Size;
      seen = true;
    }
    AddTransition(x, curve_.xAxis.back(), width, width);
  }

  void AddTransition(double a, double b, std::uint32_t fromWidth, std::uint32_t toWidth) {
    const std::uint32_t first = curve_.QXAxisToIdx(a, ROUND_DOWN);
    const std::uint32_t end = curve_.QXAxisToIdx(b, ROUND_UP) + 1;
    const std::uint32_t span = end - first;
    const auto delta = static_cast<std::int64_t>(toWidth) - static_cast<std::int64_t>(fromWidth);
    const auto pieces = static_cast<std::uint32_t>(std::abs(delta) / 2);
    if (curve_.smoothParams.StepTrans == SmoothParams::Staggered || span < 2 || pieces < 2) {
      ranges_.push_back({first, end, fromWidth});
    } else {
      AddPieces(first, span, fromWidth, delta, pieces);
    }
  }

  // Cuts the stretch so that the width moves by 2 from piece to piece, or by more where
  // there are fewer points than that.
  void AddPieces(std::uint32_t first, std::uint32_t span, std::uint32_t fromWidth, std::int64_t delta,
                 std::uint32_t pieces) {
    double increment = delta < 0 ? -2.0 : 2.0;
    double length = span;
    if (pieces < span) length = static_cast<double>(span) / pieces;
    if (span < pieces) {
      length = 1.0;
      increment = static_cast<double>(delta) / span;
      pieces = span;
    }
    double position = first;
    double width = fromWidth;
    std::uint32_t start = first;
    for (std::uint32_t i = 0; i < pieces; ++i) {
      position += length;
      const auto end = Truncate<std::uint32_t>(position);
      ranges_.push_back({start, end, Truncate<std::uint32_t>(width) | 1});
      width += increment;
      start = end;
    }
  }

  const Curve& curve_;
  std::vector<SmoothRange> ranges_;
};

}  // namespace

std::vector<SmoothRange> BuildSmoothRanges(const Curve& curve) { return RangeBuilder(curve).Build(); }

}  // namespace TslBL
