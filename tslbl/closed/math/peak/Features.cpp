#include <tslbl/closed/math/peak/Features.h>

#include <algorithm>
#include <bit>
#include <cstddef>

namespace TslMath {
namespace {

constexpr std::size_t kBlockSize = 64;

// The samples first .. last, all equal.
struct Run {
  std::size_t first;
  std::size_t last;

  std::size_t Middle() const { return (first + last) / 2; }
};

struct Samples {
  const double* y;
  std::size_t n;

  Run RunAround(std::size_t idx) const {
    Run run{idx, idx};
    while (run.first > 0 && y[run.first - 1] == y[idx]) --run.first;
    while (run.last + 1 < n && y[run.last + 1] == y[idx]) ++run.last;
    return run;
  }

  bool IsFeature(const Run& run) const {
    return run.first > 0 && run.last + 1 < n && y[run.first - 1] < y[run.first] &&
           y[run.last + 1] < y[run.last];
  }

  bool RisesLeftOf(const Run& run) const { return run.first > 0 && y[run.first - 1] > y[run.first]; }
  bool RisesRightOf(const Run& run) const { return run.last + 1 < n && y[run.last + 1] > y[run.last]; }
  bool LeftIsHigher(const Run& run) const {
    return RisesLeftOf(run) && !(RisesRightOf(run) && y[run.last + 1] > y[run.first - 1]);
  }

  CurvePt Point(const Run& run) const { return {static_cast<std::uint32_t>(run.Middle()), y[run.Middle()]}; }
};

// Bit k tells that y[begin + k] is above the sample before and not below the one after. Without a branch on
// the data, since on noise every third sample would be guessed wrongly.
std::uint64_t PossibleFeatures(const double* y, std::size_t begin, std::size_t end) {
  std::uint64_t bits = 0;
  bool rises = y[begin - 1] < y[begin];
  for (std::size_t i = begin; i < end; ++i) {
    const bool risesOn = y[i] < y[i + 1];
    bits |= static_cast<std::uint64_t>(rises & !risesOn) << (i - begin);
    rises = risesOn;
  }
  return bits;
}

}  // namespace

void FindFeatures(const double* y, std::uint32_t n, std::uint32_t start, std::uint32_t count,
                  std::vector<CurvePt>& found) {
  found.clear();
  if (n < 3 || start >= n || count == 0) return;
  const Samples samples{y, n};
  const std::size_t first = std::max<std::size_t>(start, 1);
  const std::size_t last = std::min<std::size_t>(std::size_t{start} + count, n - 1);

  const auto report = [&](const Run& run) {
    if (samples.IsFeature(run) && run.Middle() >= first && run.Middle() < last)
      found.push_back(samples.Point(run));
  };
  if (first < last) {
    const Run cut = samples.RunAround(first);
    if (cut.first < first) report(cut);
  }
  for (std::size_t begin = first; begin < last; begin += kBlockSize) {
    std::uint64_t possible = PossibleFeatures(y, begin, std::min(begin + kBlockSize, last));
    for (; possible != 0; possible &= possible - 1) {
      report(samples.RunAround(begin + static_cast<std::size_t>(std::countr_zero(possible))));
    }
  }
}

bool FindOneFeature(const double* y, std::uint32_t n, std::uint32_t idx, CurvePt& found) {
  if (n == 0) return false;
  const Samples samples{y, n};
  Run run = samples.RunAround(std::min(idx, n - 1));
  while (samples.RisesLeftOf(run) || samples.RisesRightOf(run)) {
    run = samples.RunAround(samples.LeftIsHigher(run) ? run.first - 1 : run.last + 1);
  }
  if (!samples.IsFeature(run)) return false;
  found = samples.Point(run);
  return true;
}

}  // namespace TslMath
