#include <tslbl/closed/math/overlap/FitEquations.h>

#include <tslbl/closed/math/overlap/PeakColumns.h>

#include <algorithm>
#include <cmath>

namespace TslMath {
namespace {

constexpr double kReachOfPeak = 8.0;  // widths
// Multiplications that go into a peak at a point, besides those of the equations.
constexpr std::size_t kEffortPerPeak = 30;

OnePeak PeakOf(const PeakSum& sum, std::size_t k) {
  return {sum.heights[k], sum.tops[k], sum.widths[k], sum.skew};
}

BlockPoints PointsOf(const GroupSamples& samples, std::size_t block) {
  const std::size_t first = block * kGroupBlock;
  return {samples.CountOf(block), samples.X() + first, samples.RootWeights() + first};
}

}  // namespace

EquationBuilder::EquationBuilder(const GroupSamples& samples, std::size_t peaks)
    : samples_(samples), residuals_(kGroupBlock) {
  const std::size_t terms = TermOrder(peaks, {true, FreeTerms::Widths::Own, true, true}).Count();
  near_.reserve(peaks);
  terms_.reserve(terms);
  columns_.resize(terms * kGroupBlock);
}

void EquationBuilder::Start(const PeakSum& sum, std::size_t block) {
  const auto [first, last] = samples_.Extent(block);
  const double reach = kReachOfPeak * (1.0 + std::abs(sum.skew));
  near_.clear();
  for (std::size_t k = 0; k < sum.Count(); ++k) {
    const double far = reach * sum.widths[k];
    if (sum.tops[k] >= first - far && sum.tops[k] <= last + far) near_.push_back(k);
  }
  const double* y = samples_.Y() + block * kGroupBlock;
  for (std::size_t i = 0; i < samples_.CountOf(block); ++i) residuals_[i] = y[i] - sum.baseline;
}

// The columns stand as `here` has the terms of the near peaks alone.
void EquationBuilder::ListTerms(const TermOrder& order, const TermOrder& here) {
  terms_.resize(here.Count());
  for (std::size_t k = 0; k < near_.size(); ++k) {
    terms_[here.Height(k)] = order.Height(near_[k]);
    if (order.Free().places) terms_[here.Top(k)] = order.Top(near_[k]);
    if (order.HasOwnWidths()) terms_[here.Width(k)] = order.Width(near_[k]);
  }
  if (order.HasSharedWidth()) terms_[here.Width(0)] = order.Width(0);
  if (order.Free().skew) terms_[here.Skew()] = order.Skew();
  if (order.Free().baseline) terms_[here.Baseline()] = order.Baseline();
}

void EquationBuilder::FillColumns(const PeakSum& sum, std::size_t block, const TermOrder& here) {
  const std::size_t count = samples_.CountOf(block);
  const BlockPoints points = PointsOf(samples_, block);
  const FreeTerms& free = here.Free();
  std::fill_n(Column(here.Width(0)), here.WidthCount() * kGroupBlock, 0.0);
  if (free.skew) std::fill_n(Column(here.Skew()), kGroupBlock, 0.0);
  for (std::size_t k = 0; k < near_.size(); ++k) {
    AddPeak(
        points, PeakOf(sum, near_[k]),
        {Column(here.Height(k)), free.places ? Column(here.Top(k)) : nullptr,
         here.WidthCount() > 0 ? Column(here.Width(k)) : nullptr, free.skew ? Column(here.Skew()) : nullptr},
        residuals_.data());
  }
  if (free.baseline) std::copy_n(points.rootWeights, count, Column(here.Baseline()));
  for (std::size_t i = 0; i < count; ++i) residuals_[i] *= points.rootWeights[i];
}

void EquationBuilder::Build(const PeakSum& sum, const TermOrder& order, FitEquations& equations) {
  equations.Clear(order.Count());
  for (std::size_t block = 0; block < samples_.BlockCount(); ++block) {
    Start(sum, block);
    const TermOrder here(near_.size(), order.Free());
    ListTerms(order, here);
    FillColumns(sum, block, here);
    AddProducts({samples_.CountOf(block), columns_.data(), terms_, residuals_.data()}, equations);
    effort_ += kGroupBlock * (near_.size() * kEffortPerPeak + here.Count() * here.Count());
  }
}

void EquationBuilder::Evaluate(const PeakSum& sum, std::vector<double>& values) {
  values.resize(samples_.PaddedSize());
  for (std::size_t block = 0; block < samples_.BlockCount(); ++block) {
    Start(sum, block);
    const std::size_t first = block * kGroupBlock;
    for (const std::size_t k : near_)
      AddPeak(PointsOf(samples_, block), PeakOf(sum, k), {}, residuals_.data());
    for (std::size_t i = 0; i < samples_.CountOf(block); ++i)
      values[first + i] = samples_.Y()[first + i] - residuals_[i];
    effort_ += kGroupBlock * near_.size() * kEffortPerPeak;
  }
}

}  // namespace TslMath
