#include <tslbl/curve/SmoothPasses.h>

#include <tslbl/closed/math/smooth/Smoothing.h>
#include <tslbl/curve/SmoothParams.h>
#include <algorithm>
#include <cstring>

namespace TslBL {
namespace {

// Smooths one range of y into out; false for an algorithm that does not exist.
bool SmoothOneRange(const SmoothParams& p, const std::vector<double>& y, const SmoothRange& range,
                    std::vector<double>& out) {
  const auto n = static_cast<std::uint32_t>(y.size());
  switch (p.Alg) {
    case SmoothParams::Mean:
      TslMath::SmoothMean(y.data(), n, range.first, range.end, range.width, out.data());
      return true;
    case SmoothParams::Median:
      TslMath::SmoothMedian(y.data(), n, range.first, range.end, range.width, out.data());
      return true;
    case SmoothParams::SavitzkyGolay:
      TslMath::SmoothSavitzkyGolay(y.data(), n, range.first, range.end, range.width, p.Order, out.data());
      return true;
    case SmoothParams::Gaussian:
      TslMath::SmoothGaussian(y.data(), n, range.first, range.end, range.width, out.data());
      return true;
  }
  return false;
}

bool SmoothOnce(const SmoothParams& p, const std::vector<SmoothRange>& ranges, const std::vector<double>& y,
                std::vector<double>& out) {
  out = y;  // points outside all ranges keep their value
  return std::ranges::all_of(ranges,
                             [&](const SmoothRange& range) { return SmoothOneRange(p, y, range, out); });
}

bool SameBits(const std::vector<double>& a, const std::vector<double>& b) {
  return std::memcmp(a.data(), b.data(), a.size() * sizeof(double)) == 0;
}

}  // namespace

std::optional<std::vector<double>> SmoothPasses(const SmoothParams& p, const std::vector<SmoothRange>& ranges,
                                                const std::vector<double>& y) {
  std::vector<double> smoothed;  // empty before the first pass
  std::vector<double> out;
  for (std::uint32_t pass = 0; pass < p.Passes; ++pass) {
    const std::vector<double>& from = smoothed.empty() ? y : smoothed;
    if (!SmoothOnce(p, ranges, from, out)) return std::nullopt;
    if (SameBits(from, out)) break;  // and so would all further passes
    smoothed.swap(out);
  }
  if (smoothed.empty()) return y;
  return smoothed;
}

}  // namespace TslBL
