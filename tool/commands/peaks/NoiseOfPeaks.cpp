#include <tool/commands/peaks/NoiseOfPeaks.h>

#include <tool/io/Gaps.h>
#include <algorithm>
#include <cmath>
#include <vector>

namespace TslTool {
namespace {

constexpr double kTooLarge = 10.0;
constexpr std::size_t kSample = 4096;  // points, enough for a median
// The median size of a second difference, in standard deviations of normal noise.
constexpr double kOfSecondDifference = 0.6745 * 2.4494897;

double MedianOf(std::vector<double>& values) {
  const auto middle = values.begin() + static_cast<std::ptrdiff_t>(values.size() / 2);
  std::nth_element(values.begin(), middle, values.end());
  return *middle;
}

}  // namespace

bool IsNoiseOfPeaks(const LoadedSpectrum& loaded) {
  const std::vector<double>& y = loaded.measured;
  const std::vector<double>& noise = loaded.spectrum->noise;
  if (y.size() < 3 || noise.size() != y.size()) return false;
  if (!loaded.spectrum->peaks.empty() && GapsOf(loaded.spectrum->xAxis).empty()) return false;
  const std::size_t stride = y.size() / kSample + 1;
  std::vector<double> scatter;
  std::vector<double> told;
  for (std::size_t i = 1; i + 1 < y.size(); i += stride) {
    scatter.push_back(std::abs(y[i - 1] - 2.0 * y[i] + y[i + 1]) / kOfSecondDifference);
    told.push_back(noise[i]);
  }
  const double usual = MedianOf(scatter);
  return usual > 0.0 && MedianOf(told) > kTooLarge * usual;
}

}  // namespace TslTool
