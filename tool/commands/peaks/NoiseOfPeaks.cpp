#include <tool/commands/peaks/NoiseOfPeaks.h>

#include <tool/io/Gaps.h>
#include <tslbl/closed/math/Median.h>
#include <utility>
#include <vector>

namespace TslTool {
namespace {

constexpr double kLarge = 3.0;
constexpr double kTooLarge = 10.0;
constexpr std::size_t kSample = 4096;  // points, enough for a median

}  // namespace

bool IsNoiseOfPeaks(const LoadedSpectrum& loaded) {
  const std::vector<double>& y = loaded.measured;
  const std::vector<double>& noise = loaded.spectrum->noise;
  if (y.size() < 3 || noise.size() != y.size()) return false;
  const std::size_t stride = y.size() / kSample + 1;
  const double scatter = TslMath::PointScatter(y, stride);
  std::vector<double> told;
  for (std::size_t i = 0; i < noise.size(); i += stride) told.push_back(noise[i]);
  if (!(scatter > 0.0)) return false;
  const double ratio = TslMath::Median(std::move(told)) / scatter;
  if (loaded.spectrum->peaks.empty()) return ratio > kLarge;
  return ratio > kTooLarge && !GapsOf(loaded.spectrum->xAxis).empty();
}

}  // namespace TslTool
