#include <tool/io/Gaps.h>

#include <algorithm>
#include <cmath>

namespace TslTool {
namespace {

constexpr double kGap = 3.5;  // steps
// Of the steps of a block the usual one is a low one, as others lead over gaps; the lowest may lie between
// two segments of a scan that nearly touch.
constexpr std::size_t kBlock = 64;
constexpr double kUsual = 0.2;
// It is that of an axis if so many are about as long; points that stand alone lie at any distance.
constexpr double kAlike = 1.5;
constexpr double kShareOfAxis = 0.3;
constexpr double kShareOfSide = 0.7;  // of a side without gaps
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

struct Block {
  double from;  // of the axis
  double to;
  double usual;  // step
  bool isOfAxis;

  double Centre() const { return 0.5 * (from + to); }
};

bool IsOfAxis(const std::vector<double>& steps, double usual, double share) {
  const auto alike = std::ranges::count_if(
      steps, [usual](double step) { return step <= kAlike * usual && usual <= kAlike * step; });
  return static_cast<double>(alike) >= share * static_cast<double>(steps.size());
}

// Straight on logarithmic scales, as steps grow with a power of m/z.
double UsualBetween(const Block& left, const Block& right, double x) {
  const double share = (x - left.Centre()) / (right.Centre() - left.Centre());
  return left.usual * std::pow(right.usual / left.usual, share);
}

// Blocks of points that stand alone have the step of those about them.
void TakeFromOthers(std::vector<Block>& blocks) {
  const Block* left = nullptr;
  for (std::size_t i = 0; i < blocks.size(); ++i) {
    if (blocks[i].isOfAxis) {
      left = &blocks[i];
      continue;
    }
    const auto right = std::find_if(blocks.begin() + static_cast<std::ptrdiff_t>(i), blocks.end(),
                                    [](const Block& block) { return block.isOfAxis; });
    if (left != nullptr && right != blocks.end())
      blocks[i].usual = UsualBetween(*left, *right, blocks[i].Centre());
    else if (left != nullptr || right != blocks.end())
      blocks[i].usual = left != nullptr ? left->usual : right->usual;
  }
}

std::vector<Block> BlocksOf(const std::vector<double>& x, const std::vector<double>& steps) {
  std::vector<Block> blocks;
  blocks.reserve(steps.size() / kBlock + 1);
  for (std::size_t begin = 0; begin < steps.size(); begin += kBlock) {
    const std::size_t end = std::min(begin + kBlock, steps.size());
    const std::vector<double> own(steps.begin() + static_cast<std::ptrdiff_t>(begin),
                                  steps.begin() + static_cast<std::ptrdiff_t>(end));
    const double usual = UsualOf(own);
    blocks.push_back({x[begin], x[end], usual, IsOfAxis(own, usual, kShareOfAxis)});
  }
  TakeFromOthers(blocks);
  return blocks;
}

// Whether the steps from begin to end are those of an axis, and all as long as this one.
bool AreAllAsLong(const std::vector<double>& steps, std::size_t begin, std::size_t end, double step) {
  if (end - begin < kTelling) return false;
  const auto first = steps.begin() + static_cast<std::ptrdiff_t>(begin);
  const auto last = steps.begin() + static_cast<std::ptrdiff_t>(end);
  if (kGap * *std::min_element(first, last) < step) return false;
  const std::vector<double> side(first, last);
  return IsOfAxis(side, UsualOf(side), kShareOfSide);
}

bool BelongsToItsSide(const std::vector<double>& steps, std::size_t i) {
  return AreAllAsLong(steps, i - std::min(i, kBeside), i, steps[i]) ||
         AreAllAsLong(steps, i + 1, std::min(i + 1 + kBeside, steps.size()), steps[i]);
}

}  // namespace

std::vector<Gap> GapsOf(const std::vector<double>& x) {
  const std::vector<double> steps = StepsOf(x);
  std::vector<Gap> gaps;
  const std::vector<Block> blocks = BlocksOf(x, steps);
  for (std::size_t i = 0; i < steps.size(); ++i) {
    const double usual = blocks[i / kBlock].usual;
    if (steps[i] > kGap * usual && !BelongsToItsSide(steps, i)) gaps.push_back({i + 1, usual});
  }
  return gaps;
}

}  // namespace TslTool
