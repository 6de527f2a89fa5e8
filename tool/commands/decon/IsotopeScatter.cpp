#include <tool/commands/decon/IsotopeScatter.h>

#include <tslbl/closed/math/Median.h>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <map>
#include <utility>
#include <vector>

namespace TslTool {
namespace {

constexpr double kIsotopeSpacing = 1.00235;  // Da, as in an average protein
constexpr std::size_t kLeastFree = 6;
constexpr double kMedianOfNormal = 0.6745;  // of the absolute value, in standard deviations

struct Isotope {
  double number;
  double mz;
};

std::map<std::uint32_t, std::vector<Isotope>> IsotopesOf(const TslBL::CSSeriesInfo& series) {
  std::map<std::uint32_t, std::vector<Isotope>> charges;
  for (const TslBL::CSSeriesPeakInfo& member : series.Peaks) {
    std::vector<Isotope>& isotopes = charges[member.Charge];
    const double first = isotopes.empty() ? member.MZ : isotopes.front().mz;
    isotopes.push_back({std::round((member.MZ - first) * member.Charge / kIsotopeSpacing), member.MZ});
  }
  return charges;
}

// What the isotopes lie off their line, in units of what they are expected to for an error of 1, relative.
void AddResiduals(const std::vector<Isotope>& isotopes, std::vector<double>& residuals) {
  const double count = static_cast<double>(isotopes.size());
  double meanNumber = 0.0;
  double meanMz = 0.0;
  for (const auto& [number, mz] : isotopes) {
    meanNumber += number / count;
    meanMz += mz / count;
  }
  double squares = 0.0;
  double products = 0.0;
  for (const auto& [number, mz] : isotopes) {
    squares += (number - meanNumber) * (number - meanNumber);
    products += (number - meanNumber) * (mz - meanMz);
  }
  if (!(squares > 0.0)) return;
  for (const auto& [number, mz] : isotopes) {
    const double u = number - meanNumber;
    const double free = 1.0 - 1.0 / count - u * u / squares;
    if (free > 0.0)
      residuals.push_back(std::abs(mz - meanMz - products / squares * u) / std::sqrt(free) / mz);
  }
}

}  // namespace

double IsotopeScatter(const TslBL::DeconSpectrum& spectrum) {
  std::vector<double> residuals;
  std::size_t free = 0;
  for (const TslBL::CSSeriesInfo& series : spectrum.Series) {
    if (series.Series.Type != TslBL::CSSeries::Resolved) continue;
    for (const auto& [charge, isotopes] : IsotopesOf(series)) {
      if (isotopes.size() <= 2) continue;
      free += isotopes.size() - 2;
      AddResiduals(isotopes, residuals);
    }
  }
  if (free < kLeastFree) return std::numeric_limits<double>::quiet_NaN();
  return TslMath::Median(std::move(residuals)) / kMedianOfNormal;
}

}  // namespace TslTool
