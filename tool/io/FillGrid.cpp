#include <tool/io/FillGrid.h>

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <functional>
#include <utility>

namespace TslTool {
namespace {

constexpr std::size_t kLeastPoints = 20;
constexpr double kMostPoints = 1e6;
constexpr double kSingle = 1.5;     // steps, of neighbours with no place between them
constexpr double kFew = 3.5;        // steps, of neighbours that miss one place or two
constexpr double kTelling = 16.0;   // steps; of longer ones rounding hides whether they are multiples
constexpr double kRounding = 0.25;  // of a step
constexpr std::size_t kSingleOf = 3;
constexpr std::size_t kFewOf = 20;
constexpr std::size_t kOddOf = 50;
constexpr std::size_t kListedOf = 100;
constexpr std::size_t kTallOf = 50;
constexpr std::size_t kLongRun = 16;
constexpr double kSeldom = 0.5;  // of what chance has
constexpr double kFewCounts = 2.5;

// The mean of the steps between neighbours: each one may be rounded.
double StepOf(const std::vector<double>& mz) {
  double least = mz[1] - mz[0];
  for (std::size_t i = 2; i < mz.size(); ++i) least = std::min(least, mz[i] - mz[i - 1]);
  double sum = 0.0;
  double count = 0.0;
  for (std::size_t i = 1; i < mz.size(); ++i) {
    const double step = mz[i] - mz[i - 1];
    if (!(step <= kSingle * least)) continue;
    sum += step;
    count += 1.0;
  }
  return count > 0.0 ? sum / count : 0.0;
}

// Whether two or three times the step follow each other as no zeros do: a scan goes on with that step.
bool HasAnotherStep(const std::vector<double>& mz, double step) {
  std::size_t run = 0;
  double last = 0.0;
  for (std::size_t i = 1; i < mz.size(); ++i) {
    const double steps = (mz[i] - mz[i - 1]) / step;
    run = steps >= kSingle && std::abs(steps - last) < kRounding ? run + 1 : 0;
    if (run >= kLongRun) return true;
    last = steps;
  }
  return false;
}

bool LeavesPlacesOut(const std::vector<double>& mz, double step) {
  std::size_t single = 0;
  std::size_t few = 0;
  std::size_t odd = 0;
  for (std::size_t i = 1; i < mz.size(); ++i) {
    const double steps = (mz[i] - mz[i - 1]) / step;
    if (steps > kTelling) continue;
    single += steps < kSingle ? 1 : 0;
    few += steps >= kSingle && steps < kFew ? 1 : 0;
    odd += std::abs(steps - std::round(steps)) > kRounding ? 1 : 0;
  }
  const std::size_t all = mz.size() - 1;
  return kSingleOf * single >= all && kFewOf * few >= all && kOddOf * odd <= all;
}

// Points about one place that is missing, or two.
std::vector<std::size_t> BehindHoles(const std::vector<double>& mz, double step) {
  std::vector<std::size_t> behind;
  for (std::size_t i = 1; i < mz.size(); ++i) {
    const double steps = (mz[i] - mz[i - 1]) / step;
    if (steps >= kSingle && steps < kFew) behind.push_back(i);
  }
  return behind;
}

// The amplitude that one point in `of` reaches.
double ReachedByOneOf(std::size_t of, std::vector<double> amplitude) {
  const auto at = amplitude.begin() + static_cast<std::ptrdiff_t>(amplitude.size() / of);
  std::nth_element(amplitude.begin(), at, amplitude.end(), std::greater<>());
  return *at;
}

// Rounding of m/z makes holes beside tall points as often as beside others.
bool AvoidTallPoints(const std::vector<std::size_t>& behind, const std::vector<double>& amplitude) {
  const double tall = ReachedByOneOf(kTallOf, amplitude);
  const auto isTall = [tall](double value) { return value >= tall; };
  const auto beside = std::ranges::count_if(
      behind, [&](std::size_t i) { return isTall(std::max(amplitude[i - 1], amplitude[i])); });
  const double share =
      static_cast<double>(std::ranges::count_if(amplitude, isTall)) / static_cast<double>(amplitude.size());
  return static_cast<double>(beside) <= kSeldom * 2.0 * share * static_cast<double>(behind.size());
}

// Whether the lower neighbour of most holes is a count, or two.
bool AreBesideFewCounts(const std::vector<std::size_t>& behind, std::vector<double> amplitude) {
  const auto lower = [&](std::size_t i) { return std::min(amplitude[i - 1], amplitude[i]); };
  std::vector<double> low;
  low.reserve(behind.size());
  for (const std::size_t i : behind) low.push_back(lower(i));
  const double usual = ReachedByOneOf(2, std::move(low));
  std::ranges::sort(amplitude);
  amplitude.erase(std::unique(amplitude.begin(), amplitude.end()), amplitude.end());
  const double least = amplitude.front();
  double count = least;
  for (std::size_t i = 1; i < amplitude.size(); ++i) count = std::min(count, amplitude[i] - amplitude[i - 1]);
  return usual <= kFewCounts * least && least <= kFewCounts * count;
}

// A place is left out where its neighbours are near 0, too; a file that lists zeros leaves others out between
// zeros only.
bool AreZeros(const std::vector<std::size_t>& behind, const std::vector<double>& amplitude) {
  const bool avoidTall = AvoidTallPoints(behind, amplitude);
  const auto listed = static_cast<std::size_t>(std::ranges::count(amplitude, 0.0));
  if (kListedOf * listed < amplitude.size()) return avoidTall || AreBesideFewCounts(behind, amplitude);
  const auto between = std::ranges::count_if(
      behind, [&](std::size_t i) { return amplitude[i - 1] == 0.0 && amplitude[i] == 0.0; });
  return avoidTall && 2 * static_cast<std::size_t>(between) > behind.size();
}

void Fill(double step, std::vector<double>& mz, std::vector<double>& amplitude) {
  std::vector<double> x = {mz.front()};
  std::vector<double> y = {amplitude.front()};
  for (std::size_t i = 1; i < mz.size(); ++i) {
    const double from = mz[i - 1];
    const auto places = static_cast<std::size_t>(std::max(std::round((mz[i] - from) / step), 1.0));
    for (std::size_t k = 1; k < places; ++k) {
      x.push_back(from + (mz[i] - from) * static_cast<double>(k) / static_cast<double>(places));
      y.push_back(0.0);
    }
    x.push_back(mz[i]);
    y.push_back(amplitude[i]);
  }
  mz = std::move(x);
  amplitude = std::move(y);
}

}  // namespace

bool FillGrid(std::vector<double>& mz, std::vector<double>& amplitude) {
  if (mz.size() < kLeastPoints) return false;
  const double step = StepOf(mz);
  if (!(step > 0.0) || !((mz.back() - mz.front()) / step < kMostPoints)) return false;
  if (!LeavesPlacesOut(mz, step) || HasAnotherStep(mz, step)) return false;
  if (!AreZeros(BehindHoles(mz, step), amplitude)) return false;
  Fill(step, mz, amplitude);
  return true;
}

}  // namespace TslTool
