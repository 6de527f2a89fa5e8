#include <tool/io/CorrelatedNoise.h>

#include <tool/io/CountStep.h>
#include <tslbl/closed/math/Median.h>
#include <algorithm>
#include <cmath>
#include <span>
#include <utility>

namespace TslTool {
namespace {

constexpr double kBlock = 4.0;         // widths, so that some lie between peaks
constexpr std::size_t kShortest = 64;  // points of a block
constexpr std::size_t kMostBlocks = 512;
constexpr std::size_t kTelling = 500;  // points
constexpr std::size_t kQuiet = 4;      // one in so many has no peak
constexpr double kShare = 0.5;
constexpr std::ptrdiff_t kZerosOf = 10;
constexpr double kMedianSize = 0.6745;     // standard deviations, of a normal number
constexpr double kSecondDifference = 6.0;  // variances of a point
constexpr double kAgreement = 1.7;

struct Block {
  double near;  // how neighbours scatter about each other
  double far;   // the same of points a width apart
  double level;
};

// The median of |y[i - step] - 2 y[i] + y[i + step]|, which a slope does not change.
double ScatterOver(std::span<const double> y, std::size_t step) {
  std::vector<double> sizes;
  for (std::size_t i = step; i + step < y.size(); ++i)
    sizes.push_back(std::abs(y[i - step] - 2.0 * y[i] + y[i + step]));
  return TslMath::Median(std::move(sizes));
}

// Those without peaks: where points a width apart scatter least.
std::vector<Block> QuietBlocks(const std::vector<double>& y, double pointsAcross) {
  const auto far = static_cast<std::size_t>(std::ceil(std::max(pointsAcross, 2.0)));
  const std::size_t length = std::max(kShortest, static_cast<std::size_t>(kBlock * pointsAcross));
  const std::size_t stride = std::max(length, y.size() / kMostBlocks);
  std::vector<Block> blocks;
  for (std::size_t from = 0; from + length <= y.size(); from += stride) {
    const std::span<const double> points(y.data() + from, length);
    blocks.push_back({ScatterOver(points, 1), ScatterOver(points, far),
                      TslMath::Median(std::vector<double>(points.begin(), points.end()))});
  }
  std::ranges::sort(blocks, {}, &Block::far);
  const std::size_t quiet = blocks.size() / kQuiet;
  blocks.resize(quiet * length < kTelling ? 0 : quiet);
  return blocks;
}

double Mean(const std::vector<Block>& blocks, double Block::*value) {
  double sum = 0.0;
  for (const Block& block : blocks) sum += block.*value;
  return sum / static_cast<double>(blocks.size());
}

// Of counts neighbours differ by what these make, however close lines stand.
bool IsScatterOfCounts(double scatter, double level, const std::vector<double>& y) {
  const double ofCounts = kMedianSize * std::sqrt(kSecondDifference * CountStepOf(y) * level);
  return scatter > ofCounts / kAgreement && scatter < ofCounts * kAgreement;
}

}  // namespace

bool IsNoiseCorrelated(const std::vector<double>& y, double pointsAcross) {
  if (kZerosOf * std::ranges::count(y, 0.0) >= std::ssize(y)) return false;
  const std::vector<Block> blocks = QuietBlocks(y, pointsAcross);
  if (blocks.empty()) return false;
  const double near = Mean(blocks, &Block::near);
  if (IsScatterOfCounts(near, Mean(blocks, &Block::level), y)) return false;
  return near > 0.0 && near < kShare * Mean(blocks, &Block::far);
}

}  // namespace TslTool
