#include <tool/chain/SmoothFilter.h>

#include <tslbl/curve/CurveEval.h>
#include <tslbl/curve/FilterWeights.h>
#include <tslbl/curve/SmoothParams.h>
#include <algorithm>
#include <deque>
#include <mutex>
#include <optional>
#include <utility>

namespace TslTool {
namespace {

constexpr std::size_t kMostKept = 16;

// Nothing for two smoothings.
std::optional<TslBL::SmoothParams> SmoothingOf(const TslBL::Curve& curve) {
  const auto smooths = std::ranges::count_if(
      curve.evals, [](const TslBL::CurveEval& eval) { return eval.Type() == TslBL::EvalType::Smooth; });
  if (smooths > 1) return std::nullopt;
  TslBL::SmoothParams smoothing = curve.smoothParams;
  if (smooths == 0) smoothing.Passes = 0;
  return smoothing;
}

std::shared_ptr<const SmoothFilter> Make(const TslBL::SmoothParams& smoothing) {
  std::vector<double> weights = TslBL::QFilterWeights(smoothing);
  return weights.empty() ? nullptr : std::make_shared<const SmoothFilter>(std::move(weights));
}

}  // namespace

std::shared_ptr<const SmoothFilter> FilterOf(const TslBL::Curve& curve) {
  static std::mutex mutex;
  static std::deque<std::pair<TslBL::SmoothParams, std::shared_ptr<const SmoothFilter>>> kept;
  const auto smoothing = SmoothingOf(curve);
  if (!smoothing) return nullptr;
  const std::lock_guard lock(mutex);
  for (const auto& [known, filter] : kept)
    if (known == *smoothing) return filter;
  kept.emplace_front(*smoothing, Make(*smoothing));
  if (kept.size() > kMostKept) kept.pop_back();
  return kept.front().second;
}

bool OnlySmooths(const TslBL::Curve& curve) {
  return std::ranges::none_of(curve.evals, [](const TslBL::CurveEval& eval) {
    return eval.Type() == TslBL::EvalType::AerosolFilter ||
           eval.Type() == TslBL::EvalType::BaselineSubtract ||
           eval.Type() == TslBL::EvalType::ThresholdSubtract;
  });
}

}  // namespace TslTool
