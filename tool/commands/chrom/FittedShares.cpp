#include <tool/commands/chrom/FittedShares.h>

#include <tslbl/closed/math/overlap/FitPeaks.h>
#include <algorithm>
#include <cmath>
#include <cstdint>
#include <limits>
#include <numeric>

namespace TslTool {
namespace {

constexpr double kFull = 2.3548200450309493;  // width at half height of a Gaussian, in standard deviations
constexpr double kMostWork = 1e6;             // points times the square of the peaks
constexpr double kOfLowest = 0.03;
constexpr double kOfNoise = 2.0;

double Misfit(const TslMath::PeakSum& sum, const TouchingPeaks& group) {
  double squares = 0.0;
  for (std::size_t i = 0; i < group.seconds.size(); ++i) {
    const double residual = group.values[i] - sum.At(group.seconds[i]);
    squares += residual * residual;
  }
  return std::sqrt(squares / static_cast<double>(group.seconds.size()));
}

bool Follows(const TslMath::PeakSum& sum, const TouchingPeaks& group) {
  const double lowest = *std::ranges::min_element(sum.heights);
  return lowest > 0.0 && Misfit(sum, group) <= std::max(kOfLowest * lowest, kOfNoise * group.noise);
}

}  // namespace

std::vector<FittedShare> FittedShares(const TouchingPeaks& group) {
  const auto peaks = static_cast<double>(group.tops.size());
  if (peaks < 2.0 || static_cast<double>(group.seconds.size()) * peaks * peaks > kMostWork) return {};
  const std::vector<std::int32_t> apexes(group.tops.begin(), group.tops.end());
  const auto fit =
      TslMath::FitOverlap(TslMath::FitMethod::LevenbergMarquardt,
                          {group.seconds, group.values, apexes, group.level, group.widthSeconds / kFull});
  if (!fit || !Follows(fit->sum, group)) return {};
  std::vector<FittedShare> shares(group.tops.size());
  double all = 0.0;
  for (std::size_t k = 0; k < shares.size(); ++k) {
    shares[k] = {fit->sum.Area(k),
                 k < fit->errors.size() ? fit->errors[k].area : std::numeric_limits<double>::quiet_NaN()};
    all += shares[k].share;
  }
  for (FittedShare& share : shares) share.share /= all;
  return shares;
}

}  // namespace TslTool
