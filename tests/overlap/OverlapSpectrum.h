#pragma once
// Spectra with data peaks as overlap peak deconvolution sees them.

#include <spectrum/SampleSpectrum.h>
#include <tslbl/overlap/OPDCandidate.h>
#include <string>
#include <vector>

namespace tests {

// A data peak, in points. One of width 1 resolves more than 1500 near m/z 100, one of width 2 does not.
struct DataPeak {
  std::uint32_t start;
  double apex;
  std::uint32_t end;
  double width = 2.0;
  double endAmpl = 80.0;
  double ampl = 100.0;
  double maxFromCentroid = 0.0;
};

// Points at m/z 100, 100.05, 100.1 ... with a baseline of 10, on which the amplitudes lie but for what
// the peaks say.
inline Spectrum SpectrumOfPeaks(const std::vector<DataPeak>& dataPeaks, std::size_t points = 200) {
  Spectrum s = SpectrumOf(std::vector<double>(points, 10.0));
  for (std::size_t i = 0; i < s.xAxis.size(); ++i) s.xAxis[i] = 100.0 + 0.05 * static_cast<double>(i);
  s.baseline.assign(s.yAxis.size(), 10.0);
  for (const DataPeak& peak : dataPeaks) {
    PeakInfo& row = s.peaks.emplace_back();
    row.startIdx = peak.start;
    row.apexIdx = static_cast<std::uint32_t>(peak.apex);
    row.endIdx = peak.end;
    row.centroidIdx = peak.apex;
    row.maxIdx = peak.apex + peak.maxFromCentroid;
    row.centroidAmpl = row.maxAmpl = row.apexAmpl = peak.ampl;
    row.baselineAmpl = row.maxBaseline = 10.0;
    row.halfHeightLeftIdx = peak.apex - peak.width / 2;
    row.halfHeightRightIdx = peak.apex + peak.width / 2;
    row.areaStartIdx = peak.start;
    row.areaEndIdx = peak.end;
    s.yAxis[row.apexIdx] = peak.ampl;
    s.yAxis[peak.end] = peak.endAmpl;
  }
  s.largestCentroidIdx = dataPeaks.empty() ? -1 : 0;
  s.AddStatus(Spectrum::STATUS_BASELINE);
  s.AddStatus(Spectrum::STATUS_NOISE);
  s.AddStatus(Spectrum::STATUS_PEAKS);
  return s;
}

// Two peaks that run into each other and one that stands apart from them.
inline Spectrum TwoJoinedAndOne() { return SpectrumOfPeaks({{10, 15, 20}, {20, 25, 30}, {60, 65, 70}}); }

// "group:dataPeak@apex ...", with "*" behind what needs a fit.
inline std::string Text(const std::vector<TslBL::OPDCandidate>& candidates) {
  std::ostringstream out;
  for (const auto& c : candidates)
    out << (&c == candidates.data() ? "" : " ") << c.GroupId << ':' << c.DataPeakId << '@' << c.ApexIdx
        << (c.NeedsFit ? "*" : "");
  return out.str();
}
inline std::string Text(const std::vector<TslBL::OPDEstimate>& estimates) {
  std::ostringstream out;
  for (const auto& e : estimates)
    out << (&e == estimates.data() ? "" : " ") << e.GroupId << ':' << e.DataPeakId << '@' << e.ApexIdx;
  return out.str();
}

// The text of the exception of type E that `work` throws; "" if it throws none.
template <class E, class Work>
std::string Thrown(Work work) {
  try {
    work();
  } catch (const E& e) {
    return e.what();
  }
  return "";
}

}  // namespace tests
