#include <tool/mzml/SpectrumElement.h>

#include <fmt/format.h>

#include <tool/frame/Printable.h>
#include <algorithm>
#include <cmath>
#include <numeric>
#include <stdexcept>

namespace TslTool {
namespace {

void RequireFinite(const SpectrumArrays& arrays) {
  for (std::size_t i = 0; i < arrays.mz.size(); ++i)
    if (!std::isfinite(arrays.mz[i]) || !std::isfinite(arrays.intensity[i]))
      throw std::runtime_error(
          fmt::format("what stands at m/z {} has the amplitude {}, and mzML takes finite numbers only",
                      arrays.mz[i], arrays.intensity[i]));
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

void AddScan(pugi::xml_node& spectrum, double rtSeconds, const CvTerm& combination) {
  pugi::xml_node list = AddList(spectrum, "scanList", 1);
  AddTerm(list, combination);
  pugi::xml_node scan = list.append_child("scan");
  if (!std::isnan(rtSeconds)) AddTerm(scan, Cv::kScanStartTime, Text(rtSeconds), Cv::kSecond);
}

void AddSums(pugi::xml_node& spectrum, const SpectrumArrays& arrays) {
  const std::vector<double>& mz = arrays.mz;
  const std::vector<double>& intensity = arrays.intensity;
  AddTerm(spectrum, Cv::kTotalIonCurrent, Text(std::accumulate(intensity.begin(), intensity.end(), 0.0)));
  if (mz.empty()) return;
  const auto base = std::ranges::max_element(intensity) - intensity.begin();
  AddTerm(spectrum, Cv::kBasePeakMz, Text(*(mz.begin() + base)), Cv::kMzUnit);
  AddTerm(spectrum, Cv::kBasePeakIntensity, Text(*(intensity.begin() + base)), arrays.unit);
  AddTerm(spectrum, Cv::kLowestMz, Text(mz.front()), Cv::kMzUnit);
  AddTerm(spectrum, Cv::kHighestMz, Text(mz.back()), Cv::kMzUnit);
}

void AddHead(pugi::xml_node& spectrum, const LoadedSpectrum& loaded, const SpectrumArrays& arrays) {
  AddTerm(spectrum, SpectrumType(loaded.msLevel));
  AddTerm(spectrum, arrays.representation);
  if (loaded.msLevel > 0) AddTerm(spectrum, Cv::kMsLevel, std::to_string(loaded.msLevel));
  if (loaded.polarity > 0) AddTerm(spectrum, Cv::kPositiveScan);
  if (loaded.polarity < 0) AddTerm(spectrum, Cv::kNegativeScan);
  AddSums(spectrum, arrays);
  if (!loaded.id.empty() && !IsId(loaded.id))
    AddUserParam(spectrum, "id in the source", Printable(loaded.id, loaded.id.size()));
  for (const auto& [name, value] : arrays.told) AddUserParam(spectrum, name, value);
}

void AddArrays(pugi::xml_node& spectrum, const SpectrumArrays& arrays) {
  pugi::xml_node list = AddList(spectrum, "binaryDataArrayList", 2 + arrays.more.size());
  AddArray(list, {Cv::kMzArray, "", Cv::kMzUnit}, arrays.mz);
  AddArray(list, {Cv::kIntensityArray, "", arrays.unit}, arrays.intensity);
  for (const auto& [kind, values] : arrays.more) AddArray(list, kind, values);
}

}  // namespace

const CvTerm& SpectrumType(int msLevel) {
  if (msLevel == 0) return Cv::kMassSpectrum;
  return msLevel == 1 ? Cv::kMs1Spectrum : Cv::kMsnSpectrum;
}

std::string IdFor(const LoadedSpectrum& loaded) {
  return IsId(loaded.id) ? loaded.id : fmt::format("scan={}", loaded.scan);
}

std::string SpectrumElement(const LoadedSpectrum& loaded, const SpectrumArrays& arrays, unsigned depth) {
  RequireFinite(arrays);
  pugi::xml_document document;
  pugi::xml_node spectrum = document.append_child("spectrum");
  spectrum.append_attribute("id") = IdFor(loaded).c_str();
  spectrum.append_attribute("defaultArrayLength") = std::to_string(arrays.mz.size()).c_str();
  AddHead(spectrum, loaded, arrays);
  AddScan(spectrum, loaded.rtSeconds, arrays.combination);
  AddArrays(spectrum, arrays);
  return ElementText(spectrum, depth);
}

}  // namespace TslTool
