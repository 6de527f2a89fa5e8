#include <tool/io/FillGaps.h>

#include <algorithm>
#include <numeric>
#include <utility>

namespace TslTool {
namespace {

constexpr double kGap = 3.5;  // steps
constexpr std::size_t kZeros = 16;
constexpr std::size_t kManyGaps = 20;
constexpr double kDown = 0.5;
constexpr std::size_t kWindow = 8;  // points
constexpr std::ptrdiff_t kEdge = 3;
constexpr double kStillFalls = 0.6;
// Of the steps of a block the usual one is a low one, as others lead over gaps; the lowest may lie between
// two segments of a scan that nearly touch.
constexpr std::size_t kBlock = 64;
constexpr double kUsual = 0.2;

std::ptrdiff_t Offset(std::size_t index) { return static_cast<std::ptrdiff_t>(index); }

// The usual step along the axis, one for each block of points.
class UsualSteps {
 public:
  explicit UsualSteps(const std::vector<double>& mz) {
    std::vector<double> steps;
    for (std::size_t begin = 0; begin + 1 < mz.size(); begin += kBlock) {
      steps.clear();
      const std::size_t end = std::min(begin + kBlock, mz.size() - 1);
      for (std::size_t i = begin; i < end; ++i) steps.push_back(mz[i + 1] - mz[i]);
      const auto usual =
          steps.begin() + Offset(static_cast<std::size_t>(kUsual * static_cast<double>(steps.size())));
      std::nth_element(steps.begin(), usual, steps.end());
      blocks_.push_back(*usual);
    }
  }
  // From point i to the next.
  double At(std::size_t i) const { return blocks_[i / kBlock]; }

 private:
  std::vector<double> blocks_;
};

// The points in front of which a gap lies.
std::vector<std::size_t> GapsOf(const std::vector<double>& mz, const UsualSteps& usual) {
  std::vector<std::size_t> gaps;
  for (std::size_t i = 0; i + 1 < mz.size(); ++i)
    if (mz[i + 1] - mz[i] > kGap * usual.At(i)) gaps.push_back(i + 1);
  return gaps;
}

// Whether the amplitude of the points begin .. end-1 falls towards the end `at`. A peak that was cut out
// still falls there, the background in the window of a selected ion does not.
bool FallsTo(std::size_t at, std::size_t begin, std::size_t end, const std::vector<double>& amplitude) {
  if (end - begin < 3) return true;
  const auto first = amplitude.begin() + Offset(begin);
  const auto last = amplitude.begin() + Offset(end);
  if (amplitude[at] > kDown * *std::max_element(first, last)) return false;
  if (end - begin < kWindow || amplitude[at] == 0.0) return true;
  const auto outer = at == begin ? first : last - kEdge;
  const auto inner = at == begin ? first + kEdge : last - 2 * kEdge;
  return std::accumulate(outer, outer + kEdge, 0.0) <=
         kStillFalls * std::accumulate(inner, inner + kEdge, 0.0);
}

// Leaves the gaps that the ends of peaks make.
void KeepEndsOfPeaks(const std::vector<double>& amplitude, std::vector<std::size_t>& gaps) {
  if (gaps.size() >= kManyGaps) return;
  std::vector<std::size_t> kept;
  for (std::size_t k = 0; k < gaps.size(); ++k) {
    const std::size_t begin = k == 0 ? 0 : gaps[k - 1];
    const std::size_t end = k + 1 < gaps.size() ? gaps[k + 1] : amplitude.size();
    const std::size_t gap = gaps[k];
    if (FallsTo(gap - 1, begin, gap, amplitude) && FallsTo(gap, gap, end, amplitude)) kept.push_back(gap);
  }
  gaps = std::move(kept);
}

// Zeros from the two sides of a gap to its middle; none if the step is lost in the rounding of m/z.
void AddZeros(double from, double to, double step, std::vector<double>& mz) {
  if (!(from + 0.5 * step > from && to + 0.5 * step > to)) return;
  const double middle = 0.5 * (from + to);
  for (std::size_t k = 1; k <= kZeros && from + static_cast<double>(k) * step < middle; ++k)
    mz.push_back(from + static_cast<double>(k) * step);
  for (std::size_t k = kZeros; k > 0; --k)
    if (to - static_cast<double>(k) * step >= middle) mz.push_back(to - static_cast<double>(k) * step);
}

}  // namespace

std::size_t FillGaps(std::vector<double>& mz, std::vector<double>& amplitude) {
  if (mz.size() < 3) return 0;
  const UsualSteps usual(mz);
  std::vector<std::size_t> gaps = GapsOf(mz, usual);
  KeepEndsOfPeaks(amplitude, gaps);
  if (gaps.empty()) return 0;
  std::vector<double> x;
  std::vector<double> y;
  std::size_t begin = 0;
  for (const std::size_t gap : gaps) {
    x.insert(x.end(), mz.begin() + Offset(begin), mz.begin() + Offset(gap));
    y.insert(y.end(), amplitude.begin() + Offset(begin), amplitude.begin() + Offset(gap));
    AddZeros(mz[gap - 1], mz[gap], usual.At(gap - 1), x);
    y.resize(x.size(), 0.0);
    begin = gap;
  }
  x.insert(x.end(), mz.begin() + Offset(begin), mz.end());
  y.insert(y.end(), amplitude.begin() + Offset(begin), amplitude.end());
  mz = std::move(x);
  amplitude = std::move(y);
  return gaps.size();
}

}  // namespace TslTool
