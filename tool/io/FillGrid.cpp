#include <tool/io/FillGrid.h>

#include <algorithm>
#include <cmath>
#include <cstddef>
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
  if (!LeavesPlacesOut(mz, step)) return false;
  Fill(step, mz, amplitude);
  return true;
}

}  // namespace TslTool
