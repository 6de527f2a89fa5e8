#include <tool/commands/peaks/PeakArrays.h>

#include <algorithm>
#include <iterator>

namespace TslTool {
namespace {

using Peaks = std::vector<ReportedPeak>;
using Get = double (*)(const ReportedPeak&);

double Mz(const ReportedPeak& peak) { return peak.row.Mass; }
double Intensity(const ReportedPeak& peak) { return peak.row.Ampl; }

// Under the names of the other formats.
struct MoreArray {
  CvTerm term;
  const char* name;
  Get get;
};
constexpr MoreArray kMoreArrays[] = {
    {Cv::kSignalToNoiseArray, "", [](const ReportedPeak& p) { return p.row.Signal2Noise; }},
    {Cv::kOtherArray, "area", [](const ReportedPeak& p) { return p.area; }},
    {Cv::kOtherArray, "width", [](const ReportedPeak& p) { return p.Width(); }},
    {Cv::kOtherArray, "height", [](const ReportedPeak& p) { return p.errors.height; }},
    {Cv::kOtherArray, "mz_se", [](const ReportedPeak& p) { return p.errors.mz; }},
    {Cv::kOtherArray, "amplitude_se", [](const ReportedPeak& p) { return p.errors.amplitude; }},
    {Cv::kOtherArray, "area_se", [](const ReportedPeak& p) { return p.errors.area; }},
    {Cv::kOtherArray, "counted", [](const ReportedPeak& p) { return p.errors.isCounted ? 1.0 : 0.0; }},
};

Peaks InOrder(const Peaks& peaks) {
  Peaks ordered;
  std::ranges::copy_if(peaks, std::back_inserter(ordered),
                       [](const ReportedPeak& peak) { return !peak.row.IsOverlapped; });
  std::ranges::stable_sort(ordered, {}, Mz);
  return ordered;
}

std::vector<double> ValuesOf(const Peaks& peaks, Get get) {
  std::vector<double> values(peaks.size());
  std::ranges::transform(peaks, values.begin(), get);
  return values;
}

}  // namespace

SpectrumArrays PeakArrays(const Peaks& all, const CvTerm& unit) {
  const Peaks peaks = InOrder(all);
  SpectrumArrays arrays = {Cv::kCentroidSpectrum, ValuesOf(peaks, Mz), ValuesOf(peaks, Intensity), unit};
  for (const MoreArray& array : kMoreArrays)
    arrays.more.push_back({{array.term, array.name}, ValuesOf(peaks, array.get)});
  return arrays;
}

}  // namespace TslTool
