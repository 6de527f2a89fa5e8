#include <tslbl/closed/engines/resolved/VisiblePatterns.h>

#include <algorithm>
#include <cmath>

namespace TslMath {
namespace {

constexpr double kBin = 0.004;                       // of the logarithm
constexpr double kLeastLogMass = 3.912023005428146;  // of 50 Da
constexpr double kMostLogMass = 13.815510557964274;  // of 1 000 000 Da
constexpr double kLeastSeenOfTop = 0.01;
constexpr double kLeastOfMolecule = 1e-9;  // rarer places change no place that is seen

VisiblePattern Seen(const IsotopePattern& full) {
  const std::size_t top = full.Top();
  const double least = kLeastSeenOfTop * full.probability[top];
  std::size_t first = top;
  while (first > 0 && full.probability[first - 1] >= least) --first;
  std::size_t last = top;
  while (last + 1 < full.probability.size() && full.probability[last + 1] >= least) ++last;
  const auto from = static_cast<std::ptrdiff_t>(first);
  const auto to = static_cast<std::ptrdiff_t>(last + 1);
  return {full.firstOffset + static_cast<std::int32_t>(first),
          top - first,
          {full.probability.begin() + from, full.probability.begin() + to},
          {full.mass.begin() + from, full.mass.begin() + to}};
}

}  // namespace

VisiblePatterns::VisiblePatterns(const Composition& unit, const IsotopeThresholds& thresholds)
    : full_(unit, {thresholds.atom, std::max(thresholds.molecule, kLeastOfMolecule)}),
      visible_(static_cast<std::size_t>((kMostLogMass - kLeastLogMass) / kBin) + 1) {}

const VisiblePattern& VisiblePatterns::At(double logMass) {
  const double inside = std::clamp(logMass, kLeastLogMass, kMostLogMass);
  const auto bin = static_cast<std::size_t>((inside - kLeastLogMass) / kBin);
  std::optional<VisiblePattern>& pattern = visible_[bin];
  if (!pattern) pattern = Seen(full_.At(std::exp(kLeastLogMass + (static_cast<double>(bin) + 0.5) * kBin)));
  return *pattern;
}

}  // namespace TslMath
