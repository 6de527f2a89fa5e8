#include <tool/io/Gaps.h>

#include <algorithm>

namespace TslTool {
namespace {

constexpr double kGap = 3.5;  // steps
// Of the steps of a block the usual one is a low one, as others lead over gaps; the lowest may lie between
// two segments of a scan that nearly touch.
constexpr std::size_t kBlock = 64;
constexpr double kUsual = 0.2;
// Steps on either side, of which the least is asked; near an end there may be too few to tell.
constexpr std::size_t kBeside = 32;
constexpr std::size_t kTelling = 8;

std::vector<double> StepsOf(const std::vector<double>& x) {
  std::vector<double> steps;
  for (std::size_t i = 1; i < x.size(); ++i) steps.push_back(x[i] - x[i - 1]);
  return steps;
}

double UsualOf(std::vector<double> steps) {
  const auto usual = steps.begin() + static_cast<std::ptrdiff_t>(kUsual * static_cast<double>(steps.size()));
  std::nth_element(steps.begin(), usual, steps.end());
  return *usual;
}

// Whether all steps from begin to end are as long as this one.
bool AreAllAsLong(const std::vector<double>& steps, std::size_t begin, std::size_t end, double step) {
  if (end - begin < kTelling) return false;
  const auto at = [&](std::size_t i) { return steps.begin() + static_cast<std::ptrdiff_t>(i); };
  return kGap * *std::min_element(at(begin), at(end)) >= step;
}

bool BelongsToItsSide(const std::vector<double>& steps, std::size_t i) {
  return AreAllAsLong(steps, i - std::min(i, kBeside), i, steps[i]) ||
         AreAllAsLong(steps, i + 1, std::min(i + 1 + kBeside, steps.size()), steps[i]);
}

}  // namespace

std::vector<Gap> GapsOf(const std::vector<double>& x) {
  const std::vector<double> steps = StepsOf(x);
  std::vector<Gap> gaps;
  for (std::size_t begin = 0; begin < steps.size(); begin += kBlock) {
    const std::size_t end = std::min(begin + kBlock, steps.size());
    const double usual = UsualOf({steps.begin() + static_cast<std::ptrdiff_t>(begin),
                                  steps.begin() + static_cast<std::ptrdiff_t>(end)});
    for (std::size_t i = begin; i < end; ++i)
      if (steps[i] > kGap * usual && !BelongsToItsSide(steps, i)) gaps.push_back({i + 1, usual});
  }
  return gaps;
}

}  // namespace TslTool
