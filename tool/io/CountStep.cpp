#include <tool/io/CountStep.h>

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <numeric>
#include <span>

namespace TslTool {
namespace {

constexpr std::size_t kSample = 1024;  // points, enough to meet neighbouring counts
constexpr double kRounding = 0.02;     // of a step
constexpr double kFloatRounding = 1.2e-7;
constexpr double kFollowed = 0.25;  // of a step, while it is not yet known well
constexpr double kMostCounts = 1e9;
// Each may be as another range of the detector gave it.
constexpr std::size_t kParts = 8;
constexpr int kTelling = 32;  // amplitudes, which do not all share a factor by chance
// Of the largest amplitude; what differs by less is equal but for rounding.
constexpr double kSame = 1e-9;

std::vector<double> SortedSample(const std::vector<double>& amplitudes) {
  const std::size_t stride = amplitudes.size() / kSample + 1;
  std::vector<double> sample{0.0};
  for (std::size_t i = 0; i < amplitudes.size(); i += stride) sample.push_back(amplitudes[i]);
  std::ranges::sort(sample);
  return sample;
}

double SmallestGap(const std::vector<double>& sorted) {
  const double same = kSame * sorted.back();
  double smallest = 0.0;
  for (std::size_t i = 1; i < sorted.size(); ++i) {
    const double gap = sorted[i] - sorted[i - 1];
    if (gap > same && (smallest == 0.0 || gap < smallest)) smallest = gap;
  }
  return smallest;
}

// Each larger amplitude tells the step better, as long as the number of steps in it is not in doubt.
double Refined(double step, const std::vector<double>& sorted) {
  double products = 0.0;
  double squares = 0.0;
  for (const double amplitude : sorted) {
    const double counts = std::round(amplitude / step);
    if (!(std::abs(amplitude - counts * step) <= kFollowed * step)) return 0.0;
    products += amplitude * counts;
    squares += counts * counts;
    if (squares > 0.0) step = products / squares;
  }
  return step;
}

bool AreMultiples(const std::vector<double>& amplitudes, double step) {
  return std::ranges::all_of(amplitudes, [&](double amplitude) {
    const double counts = amplitude / step;
    return counts >= 0.0 && counts <= kMostCounts &&
           std::abs(counts - std::round(counts)) <= kRounding + kFloatRounding * counts;
  });
}

// Whether the numbers of steps in these amplitudes share a factor, so that their own step is larger.
bool ShareAFactor(std::span<const double> amplitudes, double step) {
  long long factor = 0;
  int telling = 0;
  for (const double amplitude : amplitudes) {
    const long long counts = std::llround(amplitude / step);
    if (counts == 0) continue;
    factor = std::gcd(factor, counts);
    ++telling;
    if (factor == 1) return false;
  }
  return telling >= kTelling;
}

bool IsStepOfEachPart(std::span<const double> amplitudes, double step) {
  for (std::size_t part = 0; part < kParts; ++part) {
    const std::size_t begin = part * amplitudes.size() / kParts;
    const std::size_t end = (part + 1) * amplitudes.size() / kParts;
    if (ShareAFactor(amplitudes.subspan(begin, end - begin), step)) return false;
  }
  return true;
}

}  // namespace

double CountStepOf(const std::vector<double>& amplitudes) {
  const std::vector<double> sorted = SortedSample(amplitudes);
  if (sorted.front() < 0.0) return 0.0;
  const double gap = SmallestGap(sorted);
  const double step = gap > 0.0 ? Refined(gap, sorted) : 0.0;
  const bool isCount = step > 0.0 && AreMultiples(amplitudes, step) && IsStepOfEachPart(amplitudes, step);
  return isCount ? step : 0.0;
}

}  // namespace TslTool
