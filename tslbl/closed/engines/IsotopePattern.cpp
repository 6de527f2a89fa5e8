#include <tslbl/closed/engines/IsotopePattern.h>

#include <tslbl/closed/engines/Elements.h>

#include <algorithm>
#include <cmath>
#include <numeric>
#include <stdexcept>

namespace TslMath {

namespace {

constexpr double kOnTheWay = 1e-3;        // of the molecule threshold
constexpr double kLeastOnTheWay = 1e-30;  // far below what a sum of doubles near 1 can tell
constexpr double kBinOfLogMass = 0.004;

// Mean masses stand relative to the main isotopes: small numbers, which lose nothing in large molecules.
struct Distribution {
  std::int32_t firstOffset = 0;
  std::vector<double> probability = {1.0};
  std::vector<double> mass = {0.0};
};

// Cuts both ends down to the limit, but never the top.
void Prune(Distribution& d, double limit) {
  const auto begin = d.probability.begin();
  const auto top = std::max_element(begin, d.probability.end());
  const auto kept = [=](double p) { return p >= limit; };
  const auto first = std::find_if(begin, top, kept) - begin;
  const auto pastLast =
      std::find_if(d.probability.rbegin(), std::make_reverse_iterator(top), kept).base() - begin;
  const auto last = std::max(pastLast, top - begin + 1);
  d.firstOffset += static_cast<std::int32_t>(first);
  for (auto* values : {&d.probability, &d.mass}) {
    values->erase(values->begin() + last, values->end());
    values->erase(values->begin(), values->begin() + first);
  }
}

Distribution Convolve(const Distribution& a, const Distribution& b, double limit) {
  Distribution r;
  r.firstOffset = a.firstOffset + b.firstOffset;
  const std::size_t size = a.probability.size() + b.probability.size() - 1;
  r.probability.assign(size, 0.0);
  r.mass.assign(size, 0.0);
  for (std::size_t i = 0; i < a.probability.size(); ++i) {
    for (std::size_t j = 0; j < b.probability.size(); ++j) {
      const double p = a.probability[i] * b.probability[j];
      r.probability[i + j] += p;
      r.mass[i + j] += p * (a.mass[i] + b.mass[j]);
    }
  }
  for (std::size_t k = 0; k < size; ++k) {
    const double p = r.probability[k];
    r.mass[k] = p > 0 ? r.mass[k] / p : r.firstOffset + static_cast<double>(k);
  }
  Prune(r, limit);
  return r;
}

Distribution OneAtom(const Element& element, double threshold) {
  const Isotope& main = element.isotopes[element.main];
  std::vector<Isotope> kept;
  for (const Isotope& isotope : element.isotopes) {
    if (isotope.abundance >= threshold || &isotope == &main) kept.push_back(isotope);
  }
  const double sum = std::accumulate(kept.begin(), kept.end(), 0.0,
                                     [](double s, const Isotope& isotope) { return s + isotope.abundance; });
  Distribution d;
  d.firstOffset = kept.front().massNumber - main.massNumber;
  const auto size = static_cast<std::size_t>(kept.back().massNumber - kept.front().massNumber) + 1;
  d.probability.assign(size, 0.0);
  d.mass.resize(size);
  std::iota(d.mass.begin(), d.mass.end(), static_cast<double>(d.firstOffset));
  for (const Isotope& isotope : kept) {
    const auto place = static_cast<std::size_t>(isotope.massNumber - kept.front().massNumber);
    d.probability[place] = isotope.abundance / sum;
    d.mass[place] = isotope.mass - main.mass;
  }
  return d;
}

Distribution Power(Distribution base, std::int64_t count, double limit) {
  Distribution r;
  for (; count > 0; count >>= 1) {
    if (count & 1) r = Convolve(r, base, limit);
    if (count > 1) base = Convolve(base, base, limit);
  }
  return r;
}

}  // namespace

std::size_t IsotopePattern::Top() const {
  const auto top = std::max_element(probability.begin(), probability.end());
  return static_cast<std::size_t>(top - probability.begin());
}

double IsotopePattern::Mean() const {
  return std::inner_product(probability.begin(), probability.end(), mass.begin(), 0.0);
}

IsotopePattern MakeIsotopePattern(const Composition& composition, const IsotopeThresholds& thresholds) {
  const double limit = std::max(thresholds.molecule * kOnTheWay, kLeastOnTheWay);
  Distribution molecule;
  for (std::size_t i = 0; i < composition.counts.size(); ++i) {
    if (composition.counts[i] <= 0) continue;
    const Distribution atom = OneAtom(Elements()[i], thresholds.atom);
    molecule = Convolve(molecule, Power(atom, composition.counts[i], limit), limit);
  }
  Prune(molecule, thresholds.molecule);
  const double sum = std::accumulate(molecule.probability.begin(), molecule.probability.end(), 0.0);
  for (double& p : molecule.probability) p /= sum;
  return {molecule.firstOffset, std::move(molecule.probability), std::move(molecule.mass),
          MonoMass(composition)};
}

IsotopePatternCache::IsotopePatternCache(const Composition& unit, const IsotopeThresholds& thresholds)
    : unit_(unit), thresholds_(thresholds) {}

const IsotopePattern& IsotopePatternCache::At(double monoMass) {
  if (!(monoMass > 0) || !std::isfinite(monoMass)) {
    throw std::invalid_argument("An isotope pattern needs a positive, finite mass.");
  }
  const double bin = std::floor(std::log(monoMass) / kBinOfLogMass);
  const auto [found, isNew] = patterns_.try_emplace(static_cast<std::int32_t>(bin));
  if (isNew) {
    const double middle = std::exp((bin + 0.5) * kBinOfLogMass);
    found->second = MakeIsotopePattern(ScaleToMass(unit_, middle), thresholds_);
  }
  return found->second;
}

}  // namespace TslMath
