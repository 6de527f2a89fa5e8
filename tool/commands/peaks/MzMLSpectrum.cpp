#include <tool/commands/peaks/MzMLSpectrum.h>

#include <fmt/format.h>

#include <tool/frame/Printable.h>
#include <tool/io/EncodeArray.h>
#include <algorithm>
#include <cmath>
#include <iterator>
#include <stdexcept>

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
    {Cv::kOtherArray, "width", [](const ReportedPeak& p) { return p.row.Width; }},
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

void RequireFinite(const Peaks& peaks) {
  for (const ReportedPeak& peak : peaks)
    if (!std::isfinite(Mz(peak)) || !std::isfinite(Intensity(peak)))
      throw std::runtime_error(
          fmt::format("the peak at m/z {} has the amplitude {}, and mzML takes finite "
                      "numbers only",
                      Mz(peak), Intensity(peak)));
}

std::vector<double> ValuesOf(const Peaks& peaks, Get get) {
  std::vector<double> values(peaks.size());
  std::ranges::transform(peaks, values.begin(), get);
  return values;
}

std::string Text(double value) { return fmt::format("{}", value); }

// xsd: \S+=\S+( \S+=\S+)*
bool IsId(const std::string& id) {
  if (id.empty() || id.front() == ' ' || id.back() == ' ') return false;
  for (std::size_t begin = 0, end = 0; end != std::string::npos; begin = end + 1) {
    end = id.find(' ', begin);
    const std::string word = id.substr(begin, end - begin);
    const std::size_t sign = word.find('=', 1);
    if (sign == std::string::npos || sign + 1 == word.size()) return false;
  }
  return std::ranges::none_of(id, [](char c) { return static_cast<unsigned char>(c) < 0x20; });
}

void AddScan(pugi::xml_node& spectrum, double rtSeconds) {
  pugi::xml_node list = AddList(spectrum, "scanList", 1);
  AddTerm(list, Cv::kNoCombination);
  pugi::xml_node scan = list.append_child("scan");
  if (!std::isnan(rtSeconds)) AddTerm(scan, Cv::kScanStartTime, Text(rtSeconds), Cv::kSecond);
}

void AddSums(pugi::xml_node& spectrum, const Peaks& peaks, const CvTerm& unit) {
  double total = 0.0;
  for (const ReportedPeak& peak : peaks) total += Intensity(peak);
  AddTerm(spectrum, Cv::kTotalIonCurrent, Text(total));
  if (peaks.empty()) return;
  const auto base = std::ranges::max_element(peaks, {}, Intensity);
  AddTerm(spectrum, Cv::kBasePeakMz, Text(Mz(*base)), Cv::kMzUnit);
  AddTerm(spectrum, Cv::kBasePeakIntensity, Text(Intensity(*base)), unit);
  AddTerm(spectrum, Cv::kLowestMz, Text(Mz(peaks.front())), Cv::kMzUnit);
  AddTerm(spectrum, Cv::kHighestMz, Text(Mz(peaks.back())), Cv::kMzUnit);
}

void AddHead(pugi::xml_node& spectrum, const LoadedSpectrum& loaded, const Peaks& peaks, const CvTerm& unit) {
  AddTerm(spectrum, SpectrumType(loaded.msLevel));
  AddTerm(spectrum, Cv::kCentroidSpectrum);
  if (loaded.msLevel > 0) AddTerm(spectrum, Cv::kMsLevel, std::to_string(loaded.msLevel));
  if (loaded.polarity > 0) AddTerm(spectrum, Cv::kPositiveScan);
  if (loaded.polarity < 0) AddTerm(spectrum, Cv::kNegativeScan);
  AddSums(spectrum, peaks, unit);
  if (!loaded.id.empty() && !IsId(loaded.id))
    AddUserParam(spectrum, "id in the source", Printable(loaded.id, loaded.id.size()));
}

void AddArrays(pugi::xml_node& spectrum, const Peaks& peaks, const CvTerm& unit) {
  pugi::xml_node list = AddList(spectrum, "binaryDataArrayList", 2 + std::size(kMoreArrays));
  AddArray(list, {Cv::kMzArray, "", Cv::kMzUnit}, ValuesOf(peaks, Mz));
  AddArray(list, {Cv::kIntensityArray, "", unit}, ValuesOf(peaks, Intensity));
  for (const MoreArray& array : kMoreArrays)
    AddArray(list, {array.term, array.name}, ValuesOf(peaks, array.get));
}

}  // namespace

const CvTerm& SpectrumType(int msLevel) {
  if (msLevel == 0) return Cv::kMassSpectrum;
  return msLevel == 1 ? Cv::kMs1Spectrum : Cv::kMsnSpectrum;
}

std::string IdFor(const LoadedSpectrum& loaded) {
  return IsId(loaded.id) ? loaded.id : fmt::format("scan={}", loaded.scan);
}

std::string SpectrumElement(const LoadedSpectrum& loaded, const Peaks& all, const CvTerm& unit,
                            unsigned depth) {
  const Peaks peaks = InOrder(all);
  RequireFinite(peaks);
  pugi::xml_document document;
  pugi::xml_node spectrum = document.append_child("spectrum");
  spectrum.append_attribute("id") = IdFor(loaded).c_str();
  spectrum.append_attribute("defaultArrayLength") = std::to_string(peaks.size()).c_str();
  AddHead(spectrum, loaded, peaks, unit);
  AddScan(spectrum, loaded.rtSeconds);
  AddArrays(spectrum, peaks, unit);
  return ElementText(spectrum, depth);
}

}  // namespace TslTool
