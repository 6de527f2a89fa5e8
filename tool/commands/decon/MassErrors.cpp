#include <tool/commands/decon/MassErrors.h>

#include <tool/commands/decon/IsotopeScatter.h>
#include <tslbl/closed/math/chargestate/UnresolvedSeries.h>
#include <algorithm>
#include <cmath>
#include <cstddef>
#include <limits>
#include <map>

namespace TslTool {
namespace {

using TslBL::ChargeStateParams;
using TslBL::CSSeriesInfo;
using TslBL::CSSeriesPeakInfo;

constexpr double kUnknown = std::numeric_limits<double>::quiet_NaN();
constexpr std::size_t kLeastToScatter = 3;
constexpr double kIsotopeSpacing = 1.00235;  // Da, as in an average protein
// Da times Da: by so much, over the mass, each isotope beyond the first lies off its place in the average
// molecule, as real ones have more or less sulfur.
constexpr double kComposition = 1.1;

// Isotopes whose tops have merged are taken apart less well than the fit of a few peaks tells: from this
// width on, in distances of isotopes, by so much, Da.
constexpr double kMerged = 0.7;
constexpr double kMergedError = 0.25;

// To so much of it, smoothing and baseline leave the skew of peaks as it is.
constexpr double kSkewKnown = 0.03;
// Where the tails of lines run into each other, it is that of isotopes to so much.
constexpr double kSkewOfIsotopesKnown = 0.25;
// The same of a Gaussian that was fitted: a little more of one that stands alone, less beside a neighbour.
constexpr double kSkewOfFit = 8e-5;
constexpr double kSkewOfFitKnown = 0.4;
// The isotopes of an average protein put the mean of a peak above the centroid over its top 30 percent by
// this times its mass over its variance, Da, within 6 percent from 6 to 148 kDa. More is not of isotopes.
constexpr double kIsotopeSkew = 3.1e-4;
constexpr double kMostOfIsotopes = 2.0;
constexpr double kIsotopeVariance = 5.9e-4;  // Da times Da, of an average protein's isotopes, over its mass
constexpr double kWidthOfSigma = 2.3548200450309493;
// Of a list nobody tells whether its positions are tops or means: so much of what they differ by is the root
// mean square of both; and peaks are as wide as those of a quadrupole, m/z.
constexpr double kTopOrMean = 0.7;
constexpr double kUsualWidth = 0.6;

// One charge of a resolved series.
struct ChargeError {
  double weights = 0.0;
  double squares = 0.0;    // of weight times error in mass
  double deviation = 0.0;  // of its mass from that of the series
  double isotopes = 0.0;   // weight times isotopes beyond the first

  double Variance() const { return squares / (weights * weights); }
};

// How much more the charges differ than their errors make them; 1 at least.
double BirgeRatio(const std::map<std::uint32_t, ChargeError>& charges) {
  if (charges.size() < kLeastToScatter) return 1.0;
  double sum = 0.0;
  for (const auto& [charge, error] : charges) sum += error.deviation * error.deviation / error.Variance();
  return std::max(1.0, std::sqrt(sum / (static_cast<double>(charges.size()) - 1.0)));
}

double IsotopesBeyondFirst(const CSSeriesPeakInfo& peak, double carrier, double monoMass) {
  const double off = peak.Charge * (peak.MZ - carrier) - monoMass;
  return std::max(0.0, std::round(off / kIsotopeSpacing) - 1.0);
}

double MeanOf(const CSSeriesPeakInfo& member, const std::vector<double>& means) {
  return member.PeakId < means.size() ? means[member.PeakId] : kUnknown;
}

bool IsFit(const ReportedPeak& peak) { return peak.row.Kind == TslBL::MZPeak::OverlapPeak; }

double ScatterError(const CSSeriesInfo& series, std::size_t charges) {
  if (charges < kLeastToScatter) return kUnknown;
  return series.StdDev / std::sqrt(static_cast<double>(charges));
}

}  // namespace

MassErrors::MassErrors(const TslBL::DeconSpectrum& spectrum, const std::vector<ReportedPeak>& peaks,
                       const PeakShares& shares)
    : spectrum_(spectrum), peaks_(peaks), shares_(shares), ofIsotopes_(IsotopeScatter(spectrum)) {}

SeriesMass MassErrors::Of(const CSSeriesInfo& series, const std::vector<double>& means) const {
  if (series.Series.Type == TslBL::CSSeries::Resolved)
    return {series.AvgMass, OfResolved(series), series.StdDev};
  CSSeriesInfo own = series;
  std::erase_if(own.Peaks,
                [this](const CSSeriesPeakInfo& member) { return shares_.IsShared(member.PeakId); });
  const bool isEnough = own.Peaks.size() >= kLeastToScatter && own.Peaks.size() < series.Peaks.size();
  return OfUnresolved(isEnough ? own : series, means, isEnough);
}

double MassErrors::IntensityOf(const ReportedPeak& peak) const {
  return spectrum_.CSParams.PkIntensity == ChargeStateParams::Area ? peak.row.Area : peak.row.Ampl;
}

double MassErrors::MzErrorOf(const ReportedPeak& peak, double mz) const {
  return std::isnan(peak.errors.mz) ? ofIsotopes_ * mz : peak.errors.mz;
}

double MassErrors::WeightOf(const ReportedPeak& peak) const {
  const bool isWeighted = spectrum_.CSParams.Resolved.MMFunction == TslBL::ResolvedParams::WeightedAvg;
  return isWeighted ? IntensityOf(peak) : 1.0;
}

// By the library's own mean over the same peaks. Those whose mean is not known are as skew as the others.
SeriesMass MassErrors::OfUnresolved(const CSSeriesInfo& series, const std::vector<double>& means,
                                    bool isPart) const {
  const Skew skew = means.empty() ? Skew() : SkewOf(series, means);
  std::vector<TslMath::IonPeak> peaks;
  std::vector<std::size_t> members;
  double ofFits = 0.0;
  for (const CSSeriesPeakInfo& member : series.Peaks) {
    const ReportedPeak& peak = peaks_.at(member.PeakId);
    double off = 0.0;
    if (IsFit(peak) && !means.empty()) {
      off = kSkewOfFit * series.AvgMass / VarianceOf(member, series.AvgMass) / member.Charge;
      ofFits += member.Charge * off / static_cast<double>(series.Peaks.size());
    } else {
      const double mean = MeanOf(member, means);
      const bool isMeasured = skew.share != 0.0 && !std::isnan(mean);
      off = isMeasured ? skew.share * (mean - member.MZ) : skew.mass / member.Charge;
    }
    members.push_back(peaks.size());
    peaks.push_back(IonPeakOf(member, off));
  }
  TslMath::UnresolvedPrefs prefs;
  prefs.carrierMass = spectrum_.CSParams.GetAdductIonInfo().AvgMass;
  const auto again = TslMath::RecalculateSeries(peaks, prefs, series.AvgMass, members);
  const bool isTold = again && members.size() >= kLeastToScatter && again->standardError > 0.0;
  const double error = isTold ? again->standardError : kUnknown;
  const double doubt =
      means.empty() ? kTopOrMean * SkewOfIsotopes(series) : std::hypot(skew.doubt, kSkewOfFitKnown * ofFits);
  if (!again || (skew.mass == 0.0 && ofFits == 0.0 && !isPart))
    return {series.AvgMass, std::hypot(error, doubt), series.StdDev};
  return {again->mass, std::hypot(error, doubt), again->standardDeviation};
}

// The library's rows have areas and widths of fits in points.
TslMath::IonPeak MassErrors::IonPeakOf(const CSSeriesPeakInfo& member, double off) const {
  const ReportedPeak& peak = peaks_.at(member.PeakId);
  if (!IsFit(peak))
    return {member.MZ + off, IntensityOf(peak), peak.row.Area, peak.row.Signal2Noise, peak.row.Resolution};
  return {member.MZ + off, IntensityOf(peak), peak.area, peak.row.Signal2Noise, member.MZ / WidthOf(member)};
}

// m/z; 0 if it is not known.
double MassErrors::WidthOf(const CSSeriesPeakInfo& member) const {
  const ReportedPeak& peak = peaks_.at(member.PeakId);
  if (IsFit(peak)) {
    const TslBL::OverlapPeakInfo& fit = spectrum_.overlapPeaks.at(member.PeakId - spectrum_.QNumPeaks());
    return std::abs(fit.FWHM) * MzPerPoint(spectrum_, fit);
  }
  return peak.row.Resolution > 0.0 ? member.MZ / peak.row.Resolution : 0.0;
}

double MassErrors::VarianceOf(const CSSeriesPeakInfo& member, double mass) const {
  const double sigma = member.Charge * WidthOf(member) / kWidthOfSigma;
  return std::max(sigma * sigma, kIsotopeVariance * mass);
}

double MassErrors::SkewOfIsotopes(const CSSeriesInfo& series) const {
  double weights = 0.0;
  double sum = 0.0;
  for (const CSSeriesPeakInfo& member : series.Peaks) {
    const double weight = IntensityOf(peaks_.at(member.PeakId));
    const double sigma = member.Charge * kUsualWidth / kWidthOfSigma;
    weights += weight;
    sum += weight * kIsotopeSkew * series.AvgMass / (sigma * sigma + kIsotopeVariance * series.AvgMass);
  }
  return weights > 0.0 ? sum / weights : 0.0;
}

MassErrors::Skew MassErrors::SkewOf(const CSSeriesInfo& series, const std::vector<double>& means) const {
  double weights = 0.0;
  double ofIsotopes = 0.0;
  double weightsOfKnown = 0.0;
  double measured = 0.0;
  double ofIsotopesOfKnown = 0.0;
  std::size_t known = 0;
  std::size_t all = 0;
  for (const CSSeriesPeakInfo& member : series.Peaks) {
    const ReportedPeak& peak = peaks_.at(member.PeakId);
    if (IsFit(peak) || !(peak.row.Resolution > 0.0)) continue;
    ++all;
    const double weight = IntensityOf(peak);
    const double expected = weight * kIsotopeSkew * series.AvgMass / VarianceOf(member, series.AvgMass);
    weights += weight;
    ofIsotopes += expected;
    const double mean = MeanOf(member, means);
    if (std::isnan(mean)) continue;
    ++known;
    weightsOfKnown += weight;
    measured += weight * member.Charge * (mean - member.MZ);
    ofIsotopesOfKnown += expected;
  }
  if (!(weights > 0.0)) return {};
  if (2 * known <= all) return {ofIsotopes / weights, 0.0, kSkewOfIsotopesKnown * ofIsotopes / weights};
  if (measured == 0.0) return {};
  // Below 0 it is noise, which must not count on one side alone.
  const double most = kMostOfIsotopes * ofIsotopesOfKnown;
  const double taken = std::clamp(measured, -most, most);
  return {taken / weightsOfKnown, taken / measured, std::abs(kSkewKnown * taken / weightsOfKnown)};
}

double MassErrors::OfMerging(const CSSeriesInfo& series) const {
  double widest = 0.0;  // in isotopes
  for (const CSSeriesPeakInfo& member : series.Peaks) {
    if (!IsFit(peaks_.at(member.PeakId))) continue;
    widest = std::max(widest, WidthOf(member) * member.Charge / kIsotopeSpacing);
  }
  return kMergedError * std::max(widest - kMerged, 0.0);
}

double MassErrors::OfResolved(const CSSeriesInfo& series) const {
  const double carrier = spectrum_.CSParams.GetAdductIonInfo().MonoMass;
  std::map<std::uint32_t, ChargeError> charges;
  for (const CSSeriesPeakInfo& member : series.Peaks) {
    const ReportedPeak& peak = peaks_.at(member.PeakId);
    const double weight = WeightOf(peak);
    const double error = weight * member.Charge * MzErrorOf(peak, member.MZ);
    ChargeError& charge = charges[member.Charge];
    charge.weights += weight;
    charge.squares += error * error;
    charge.isotopes += weight * IsotopesBeyondFirst(member, carrier, series.AvgMass);
    if (member.IsMonoPeak) charge.deviation = member.MassDev;
  }
  const bool isWeighted = spectrum_.CSParams.Resolved.MMFunction == TslBL::ResolvedParams::WeightedAvg;
  double weights = 0.0;
  double squares = 0.0;
  double isotopes = 0.0;
  for (const auto& [charge, error] : charges) {
    const double weight = isWeighted ? error.weights : 1.0;
    weights += weight;
    squares += weight * weight * error.Variance();
    isotopes += weight * error.isotopes / error.weights;
  }
  const double counted = std::sqrt(squares) / weights * BirgeRatio(charges);
  const double composition = kComposition / series.AvgMass * isotopes / weights;
  return std::hypot(std::isfinite(counted) ? counted : ScatterError(series, charges.size()), composition,
                    OfMerging(series));
}

}  // namespace TslTool
