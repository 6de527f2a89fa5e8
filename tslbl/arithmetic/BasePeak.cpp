#include <tslbl/arithmetic/BasePeak.h>

#include <tslbl/arithmetic/PartialSpectrum.h>
#include <tslbl/detect/FindPeak.h>
#include <tslbl/spectrum/PeakTable.h>
#include <algorithm>

namespace TslBL {
namespace {

// Points to either side that an evaluation needs.
constexpr std::uint32_t kAround = 300;

std::uint32_t TallestPoint(const std::vector<double>& y, std::uint32_t first, std::uint32_t last) {
  const auto tallest = std::max_element(y.begin() + first, y.begin() + last + 1);
  return static_cast<std::uint32_t>(tallest - y.begin());
}

}  // namespace

bool CalcBasePeak(const Spectrum& spectrum, const MZRange& range, const std::vector<CurveEval>& evals,
                  MZPeak& peak, bool& evalFailed, std::wstring& error) {
  evalFailed = false;
  if (spectrum.yAxis.empty()) return false;
  const std::uint32_t end = spectrum.QNumPoints() - 1;
  const std::uint32_t low = spectrum.QXAxisToIdx(range.Start, ROUND_DOWN);
  const std::uint32_t high = std::min(spectrum.QXAxisToIdx(range.End, ROUND_UP), end);
  if (low > high) return false;
  const std::uint32_t tallest = TallestPoint(spectrum.yAxis, low, high);
  const std::uint32_t first = tallest - std::min(tallest, kAround);
  Spectrum part = MakePartialSpectrum(spectrum, first, std::min(end - tallest, kAround) + tallest);
  Changed changed;
  if (!ExecuteCurveEvals(part, evals, changed, error)) {
    evalFailed = true;
    return false;
  }
  const std::int32_t row = FindPeakIdxByCurveIdx(part.peaks, tallest - first);
  if (row < 0) return false;
  peak = TranslateMZPeak(part, static_cast<std::uint32_t>(row));
  return true;
}

}  // namespace TslBL
