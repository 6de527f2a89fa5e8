#include <tool/commands/decon/MoleculeCheck.h>

#include <fmt/format.h>

#include <tslbl/closed/common/Text.h>
#include <tslbl/closed/engines/Formula.h>
#include <tslbl/closed/engines/IsotopePattern.h>
#include <algorithm>
#include <cmath>
#include <limits>
#include <map>

namespace TslTool {
namespace {

using TslBL::AvgMoleculeInfo;
using TslBL::CSSeriesInfo;
using TslBL::DeconSpectrum;

constexpr double kIsotopeSpacing = 1.00235;  // Da, as in an average protein
// Of lighter ones the first isotope can be seen, and none is miscounted.
constexpr double kLeastMass = 3000.0;  // Da
constexpr std::size_t kLeastIsotopes = 5;
// Molecules of the same kind differ in what they are made of, and so by parts of an isotope in where the
// pattern stands.
constexpr double kStep = 0.25;   // isotopes
constexpr int kFarthest = 16;    // steps that the count may be off by
constexpr double kBetter = 2.0;  // in squares that are left; other molecules of the same kind are not

struct Isotope {
  std::int32_t number;  // beyond the monoisotopic one
  double intensity;
};
using IsotopesByCharge = std::map<std::uint32_t, std::vector<Isotope>>;

double IntensityOf(const DeconSpectrum& spectrum, std::uint32_t peakId) {
  const std::uint32_t peaks = spectrum.QNumPeaks();
  if (peakId < peaks) return spectrum.peaks.at(peakId).area;
  const TslBL::OverlapPeakInfo& fit = spectrum.overlapPeaks.at(peakId - peaks);
  return fit.Height * std::abs(fit.FWHM);
}

IsotopesByCharge IsotopesOf(const DeconSpectrum& spectrum, const CSSeriesInfo& series) {
  const double carrier = spectrum.CSParams.GetAdductIonInfo().MonoMass;
  IsotopesByCharge charges;
  for (const TslBL::CSSeriesPeakInfo& member : series.Peaks) {
    const double off = member.Charge * (member.MZ - carrier) - series.AvgMass;
    charges[member.Charge].push_back({static_cast<std::int32_t>(std::lround(off / kIsotopeSpacing)),
                                      IntensityOf(spectrum, member.PeakId)});
  }
  std::erase_if(charges, [](const auto& charge) { return charge.second.size() < kLeastIsotopes; });
  return charges;
}

double ShareOf(const TslMath::IsotopePattern& pattern, double isotope) {
  const double place = isotope - pattern.firstOffset;
  if (place < 0.0 || place + 1.0 >= static_cast<double>(pattern.probability.size())) return 0.0;
  const auto below = static_cast<std::size_t>(place);
  const double beyond = place - static_cast<double>(below);
  return std::pow(pattern.probability[below], 1.0 - beyond) *
         std::pow(pattern.probability[below + 1], beyond);
}

// Sum of the squares that the pattern leaves of one charge, if isotopes are counted from so many further on.
double SquaresLeft(const std::vector<Isotope>& isotopes, const TslMath::IsotopePattern& pattern,
                   double shift) {
  double all = 0.0;
  double products = 0.0;
  double squares = 0.0;
  for (const auto& [number, intensity] : isotopes) {
    const double share = ShareOf(pattern, number - shift);
    all += intensity * intensity;
    products += intensity * share;
    squares += share * share;
  }
  return squares > 0.0 ? all - products * products / squares : all;
}

// Of all charges, at the count that leaves least.
double LeastLeft(const IsotopesByCharge& charges, const TslMath::IsotopePattern& pattern) {
  double least = std::numeric_limits<double>::infinity();
  for (int step = -kFarthest; step <= kFarthest; ++step) {
    const double shift = kStep * step;
    double left = 0.0;
    for (const auto& [charge, isotopes] : charges) left += SquaresLeft(isotopes, pattern, shift);
    least = std::min(least, left);
  }
  return least;
}

TslMath::IsotopePattern PatternOf(AvgMoleculeInfo::AvgMolecule molecule, double mass) {
  const AvgMoleculeInfo info = AvgMoleculeInfo::GetStandardAvgMolecule(molecule);
  const TslMath::Composition unit = TslMath::ParseFormula(TslCommon::ToUtf8(info.Formula));
  return TslMath::MakeIsotopePattern(TslMath::ScaleToMass(unit, mass));
}

bool IsOfOtherKind(bool areNucleic, const IsotopesByCharge& charges, double mass) {
  const double ofProtein = LeastLeft(charges, PatternOf(AvgMoleculeInfo::Averagine, mass));
  const double ofNucleic = std::min(LeastLeft(charges, PatternOf(AvgMoleculeInfo::DNAgine, mass)),
                                    LeastLeft(charges, PatternOf(AvgMoleculeInfo::RNAgine, mass)));
  return areNucleic ? kBetter * ofProtein < ofNucleic : kBetter * ofNucleic < ofProtein;
}

double SumOf(const IsotopesByCharge& charges) {
  double sum = 0.0;
  for (const auto& [charge, isotopes] : charges)
    for (const Isotope& isotope : isotopes) sum += isotope.intensity;
  return sum;
}

}  // namespace

void MoleculeCheck::Look(const DeconSpectrum& spectrum, std::uint32_t scan) {
  const AvgMoleculeInfo::AvgMolecule chosen = spectrum.CSParams.Resolved.AvgMolecule;
  if (chosen == AvgMoleculeInfo::Custom) return;
  const bool areNucleic = chosen != AvgMoleculeInfo::Averagine;
  for (const CSSeriesInfo& series : spectrum.Series) {
    if (series.Series.Type != TslBL::CSSeries::Resolved || series.AvgMass < kLeastMass) continue;
    const IsotopesByCharge charges = IsotopesOf(spectrum, series);
    if (charges.empty()) continue;
    const bool isOther = IsOfOtherKind(areNucleic, charges, series.AvgMass);
    const double intensity = SumOf(charges);
    const std::lock_guard lock(mutex_);
    areNucleic_ = areNucleic;
    ++molecules_;
    intensity_ += intensity;
    if (!isOther) continue;
    firstScan_ = others_ == 0 ? scan : std::min(firstScan_, scan);
    ++others_;
    intensityOfOthers_ += intensity;
  }
}

std::vector<std::string> MoleculeCheck::Warnings() const {
  const std::lock_guard lock(mutex_);
  if (2.0 * intensityOfOthers_ <= intensity_) return {};
  return {
      fmt::format("{} of {} resolved molecules above 3000 Da have the isotopes of {} (first at scan {}), and "
                  "masses may be off by whole isotopes; --molecule {} counts them",
                  others_, molecules_, areNucleic_ ? "proteins" : "nucleic acids", firstScan_,
                  areNucleic_ ? "averagine" : "dnagine or rnagine")};
}

}  // namespace TslTool
