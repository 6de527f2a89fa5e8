#include <tool/commands/average/ProfileSum.h>

#include <tool/commands/average/OnLine.h>
#include <algorithm>
#include <limits>

namespace TslTool {
namespace {

// In steps of the axis that is taken in: as wide is a gap at least, and as far from other points its points
// stay.
constexpr double kGap = 1.5;
constexpr double kApart = 0.5;

double StepAt(const std::vector<double>& mz, std::size_t i) {
  const double left = i > 0 ? mz[i] - mz[i - 1] : std::numeric_limits<double>::infinity();
  const double right = i + 1 < mz.size() ? mz[i + 1] - mz[i] : std::numeric_limits<double>::infinity();
  return std::min(left, right);
}

}  // namespace

// What is taken in between two points lies on the line between their sums; beyond the ends there is nothing.
void ProfileSum::TakeIn(const std::vector<double>& mz) {
  ProfileSum grown;
  const auto keep = [&](std::size_t i) {
    grown.mz_.push_back(mz_[i]);
    grown.sum_.push_back(sum_[i]);
    grown.reaching_.push_back(reaching_[i]);
  };
  std::size_t next = 0;  // point of the sum
  for (std::size_t i = 0; i < mz.size(); ++i) {
    for (; next < mz_.size() && mz_[next] <= mz[i]; ++next) keep(next);
    const double step = StepAt(mz, i);
    const bool isInside = next > 0 && next < mz_.size();
    const bool hasLeft = !grown.mz_.empty();
    if (hasLeft && mz[i] - grown.mz_.back() < kApart * step) continue;
    if (next < mz_.size() && mz_[next] - mz[i] < kApart * step) continue;
    if (isInside && mz_[next] - grown.mz_.back() < kGap * step) continue;
    grown.mz_.push_back(mz[i]);
    grown.sum_.push_back(isInside ? OnLine(mz[i], mz_[next - 1], sum_[next - 1], mz_[next], sum_[next])
                                  : 0.0);
    grown.reaching_.push_back(isInside ? std::min(reaching_[next - 1], reaching_[next]) : 0);
  }
  for (; next < mz_.size(); ++next) keep(next);
  mz_ = std::move(grown.mz_);
  sum_ = std::move(grown.sum_);
  reaching_ = std::move(grown.reaching_);
}

void ProfileSum::AddOnLines(const std::vector<double>& mz, const std::vector<double>& amplitude) {
  std::size_t right = 1;
  for (std::size_t i = 0; i < mz_.size(); ++i) {
    const double x = mz_[i];
    if (x < mz.front() || x > mz.back()) continue;
    while (mz[right] < x) ++right;
    sum_[i] += OnLine(x, mz[right - 1], amplitude[right - 1], mz[right], amplitude[right]);
    ++reaching_[i];
  }
}

void ProfileSum::Add(const std::vector<double>& mz, const std::vector<double>& amplitude) {
  if (count_++ == 0) {
    mz_ = mz;
    sum_ = amplitude;
    reaching_.assign(mz.size(), 1);
  } else if (isOneAxis_ && mz == mz_) {
    for (std::size_t i = 0; i < sum_.size(); ++i) sum_[i] += amplitude[i];
    for (std::uint32_t& reaching : reaching_) ++reaching;
  } else {
    isOneAxis_ = false;
    TakeIn(mz);
    AddOnLines(mz, amplitude);
  }
}

std::vector<double> ProfileSum::Mean(bool isZeroOutside) const {
  std::vector<double> mean(sum_.size());
  for (std::size_t i = 0; i < mean.size(); ++i) {
    const std::uint32_t profiles = isZeroOutside ? count_ : reaching_[i];
    if (profiles > 0) mean[i] = sum_[i] / profiles;
  }
  return mean;
}

}  // namespace TslTool
