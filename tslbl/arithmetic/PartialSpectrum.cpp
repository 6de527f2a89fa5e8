#include <tslbl/arithmetic/PartialSpectrum.h>

#include <tslbl/tune/MZConvert.h>
#include <algorithm>
#include <numeric>
#include <stdexcept>

namespace TslBL {
namespace {

// As far as there are values.
std::vector<double> Cut(const std::vector<double>& values, std::size_t begin, std::size_t end) {
  const auto at = [&](std::size_t i) {
    return values.begin() + static_cast<std::ptrdiff_t>(std::min(i, values.size()));
  };
  return {at(begin), at(end)};
}

double Sum(const std::vector<double>& values) { return std::accumulate(values.begin(), values.end(), 0.0); }

double StartOf(double firstMZ, const Spectrum& spectrum) {
  return MZConvert(spectrum.tuneMZCalPts).MZToDAC(firstMZ);
}

}  // namespace

bool MakePartialSpectrum(Spectrum& spectrum, double lowMZ, double highMZ) {
  const std::vector<double>& x = spectrum.xAxis;
  const auto begin = static_cast<std::size_t>(std::ranges::lower_bound(x, lowMZ) - x.begin());
  const auto end = static_cast<std::size_t>(std::ranges::upper_bound(x, highMZ) - x.begin());
  if (begin >= end || !(lowMZ <= highMZ)) return false;
  spectrum.startMDAC = StartOf(x[begin], spectrum);
  spectrum.xAxis = Cut(x, begin, end);
  spectrum.yAxis = Cut(spectrum.yAxis, begin, end);
  spectrum.tic = Sum(spectrum.yAxis);
  return true;
}

Spectrum MakePartialSpectrum(const Spectrum& spectrum, std::uint32_t first, std::uint32_t last) {
  if (first > last || last >= std::max(spectrum.xAxis.size(), spectrum.yAxis.size()))
    throw std::out_of_range("MakePartialSpectrum: no such points");
  const std::size_t end = std::size_t{last} + 1;
  const auto take = [&](Curve::Status bit, const std::vector<double>& values) {
    return spectrum.CheckAllStatus(bit) ? Cut(values, first, end) : std::vector<double>();
  };
  Spectrum part;
  part.status = spectrum.status;
  part.sourceListA = spectrum.sourceListA;
  part.sourceListB = spectrum.sourceListB;
  part.xAxis = take(Curve::STATUS_X, spectrum.xAxis);
  part.yAxis = take(Curve::STATUS_Y, spectrum.yAxis);
  part.baseline = take(Curve::STATUS_BASELINE, spectrum.baseline);
  part.noise = take(Curve::STATUS_NOISE, spectrum.noise);
  part.smoothParams = spectrum.smoothParams;
  part.baselineParams = spectrum.baselineParams;
  part.noiseParams = spectrum.noiseParams;
  part.thresholdParams = spectrum.thresholdParams;
  part.peakDetectParams = spectrum.peakDetectParams;
  part.opdParams = spectrum.opdParams;
  part.tuneId = spectrum.tuneId;
  part.tuneMZCalPts = spectrum.tuneMZCalPts;
  part.appliedMZCalPts = spectrum.appliedMZCalPts;
  part.timeStamp = spectrum.timeStamp;
  part.largestAreaIdx = spectrum.largestAreaIdx;
  part.largestMaxIdx = spectrum.largestMaxIdx;
  part.largestCentroidIdx = spectrum.largestCentroidIdx;
  part.peaks = spectrum.peaks;
  part.overlapPeaks = spectrum.overlapPeaks;
  if (!part.xAxis.empty()) part.startMDAC = StartOf(part.xAxis.front(), spectrum);
  part.tic = Sum(part.yAxis);
  return part;
}

}  // namespace TslBL
