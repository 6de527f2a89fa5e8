#include <tool/io/MzMLFile.h>

#include <tool/frame/InputError.h>
#include <tool/frame/Printable.h>
#include <tool/io/Axis.h>
#include <tool/io/MzMLText.h>
#include <tool/io/WarningCounts.h>
#include <tool/io/XmlScanner.h>

#include <algorithm>
#include <boost/make_shared.hpp>
#include <charconv>
#include <cmath>
#include <functional>
#include <pwiz/data/msdata/IO.hpp>
#include <pwiz/data/msdata/References.hpp>
#include <sstream>
#include <stdexcept>
#include <utility>

namespace TslTool {

namespace {

namespace cv = pwiz::cv;
namespace msdata = pwiz::msdata;
using pwiz::data::ParamContainer;

template <class Number>
std::optional<Number> ToNumber(std::string_view text) {
  Number value{};
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
  if (error != std::errc() || end != text.data() + text.size()) return std::nullopt;
  return value;
}

bool IsKnownTerm(const std::string& accession) {
  try {
    return cv::cvTermInfo(accession).cvid != cv::CVID_Unknown;
  } catch (const std::exception&) {
    return false;
  }
}

// N of "... scan=N ...", if it fits the type.
std::optional<std::uint32_t> NumberInId(std::string_view id) {
  constexpr std::string_view kKey = "scan=";
  const std::size_t at = id.starts_with(kKey) ? 0 : id.find(" scan=");
  if (at == std::string_view::npos) return std::nullopt;
  const std::string_view rest = id.substr(id.find('=', at) + 1);
  return ToNumber<std::uint32_t>(rest.substr(0, rest.find(' ')));
}

bool IsUtf8(std::string_view text) {
  int more = 0;
  for (const char c : text) {
    const auto byte = static_cast<unsigned char>(c);
    if (more > 0) {
      if ((byte & 0xc0) != 0x80) return false;
      --more;
    } else if (byte >= 0x80) {
      if (byte < 0xc2 || byte > 0xf4) return false;
      more = byte < 0xe0 ? 1 : byte < 0xf0 ? 2 : 3;
    }
  }
  return more == 0;
}

Scan::Representation RepresentationOf(const msdata::Spectrum& spectrum) {
  if (spectrum.hasCVParam(cv::MS_profile_spectrum)) return Scan::Profile;
  if (spectrum.hasCVParam(cv::MS_centroid_spectrum)) return Scan::Centroid;
  return Scan::Unknown;
}

int LevelOf(const msdata::Spectrum& spectrum) {
  const auto param = spectrum.cvParam(cv::MS_ms_level);
  if (param.empty()) return 0;
  const auto level = ToNumber<int>(param.value);
  if (!level || *level < 1) throw std::runtime_error("the MS level is \"" + param.value + "\"");
  return *level;
}

int PolarityOf(const msdata::Spectrum& spectrum) {
  if (spectrum.hasCVParam(cv::MS_positive_scan)) return 1;
  return spectrum.hasCVParam(cv::MS_negative_scan) ? -1 : 0;
}

// The decoder's own messages run over several lines.
std::string OneLine(std::string text) {
  const auto isBreak = [](char c) { return c == '\n' || c == '\r'; };
  while (!text.empty() && isBreak(text.back())) text.pop_back();
  std::replace_if(text.begin(), text.end(), isBreak, ' ');
  return text;
}

bool Ascends(const std::vector<double>& mz) {
  return std::ranges::adjacent_find(mz, std::greater_equal<>()) == mz.end();
}

void RequireFinite(const std::vector<double>& values, const char* what) {
  const auto isFinite = [](double value) { return std::isfinite(value); };
  const auto bad = std::find_if_not(values.begin(), values.end(), isFinite);
  if (bad == values.end()) return;
  throw std::runtime_error("point " + std::to_string(bad - values.begin() + 1) + " of the " + what +
                           " array is not a finite number");
}

// An empty array may still have the few bytes that its packing begins and ends with, which the decoder
// refuses.
void RequireNoData(std::string_view element) {
  constexpr std::size_t kPackingOnly = 32;
  if (LongestArrayText(element) > kPackingOnly) {
    throw std::runtime_error("announces 0 points, but its arrays are not empty");
  }
}

}  // namespace

struct MzMLFile::Impl {
  explicit Impl(ByteSource source) : xml(std::move(source)) { ReadHead(); }

  void ReadHead();
  void ReadParamGroup();
  bool ToNextSpectrum();
  bool ReadSpectrum(const ScanFilter& filter, Scan& scan);
  bool DecodeSpectrum(std::string_view element, const ScanFilter& filter, Scan& scan);
  msdata::Spectrum Parse(const std::string& text, msdata::IO::BinaryDataFlag flag) const;
  void TakeHead(const msdata::Spectrum& spectrum, Scan& scan);
  double StartTime(const msdata::Spectrum& spectrum);
  bool TakeArrays(const msdata::Spectrum& spectrum, Scan& scan);
  void SettleAxis(Scan& scan);
  void CompareCount();

  XmlScanner xml;
  msdata::MSData groups;  // holds only the parameter groups that spectra refer to
  std::optional<std::uint64_t> announced;
  std::uint64_t seen = 0;
  bool spent = false;
  std::string place;  // of the spectrum in hand
  std::optional<std::uint64_t> points;
  WarningCounts counts;
  std::vector<std::string> warnings;
};

// Stops at the list of spectra, or behind the place where it would stand.
void MzMLFile::Impl::ReadHead() {
  for (auto event = xml.Next(); event != XmlScanner::Event::Finished; event = xml.Next()) {
    if (event != XmlScanner::Event::Start) continue;
    const std::string name = xml.Name();
    if (xml.Depth() == 1 && name != "mzML" && name != "indexedmzML") {
      throw InputError(xml.File(), xml.Place(), "the root element is <" + Printable(name) + ">, not <mzML>");
    }
    if (name == "referenceableParamGroup") ReadParamGroup();
    if (name == "spectrumList") {
      announced = ToNumber<std::uint64_t>(xml.Attribute("count").value_or(""));
      return;
    }
    if (name == "chromatogramList") break;
  }
  announced = 0;
}

void MzMLFile::Impl::ReadParamGroup() {
  place = xml.Place();
  const std::string text = WithoutUnknownTerms(xml.ReadElement(), IsKnownTerm);
  try {
    std::istringstream stream(text);
    const auto group = boost::make_shared<pwiz::data::ParamGroup>();
    msdata::IO::read(stream, *group);
    groups.paramGroupPtrs.push_back(group);
  } catch (const std::exception& error) {
    throw InputError(xml.File(), place, OneLine(error.what()));
  }
}

bool MzMLFile::Impl::ToNextSpectrum() {
  for (auto event = xml.Next(); event != XmlScanner::Event::Finished; event = xml.Next()) {
    if (event == XmlScanner::Event::Start && xml.Name() == "spectrum") return true;
  }
  return false;
}

// False if the spectrum is not wanted or holds no mass spectrum.
bool MzMLFile::Impl::ReadSpectrum(const ScanFilter& filter, Scan& scan) {
  ++seen;
  place = xml.Place() + ", spectrum \"" + Printable(xml.Attribute("id").value_or(""), 100) + "\"";
  points = ToNumber<std::uint64_t>(xml.Attribute("defaultArrayLength").value_or(""));
  const std::string_view element = xml.ReadElement();
  try {
    return DecodeSpectrum(element, filter, scan);
  } catch (const std::exception& error) {
    throw InputError(xml.File(), place, OneLine(error.what()));
  } catch (...) {
    throw InputError(xml.File(), place, "cannot be decoded");
  }
}

bool MzMLFile::Impl::DecodeSpectrum(std::string_view element, const ScanFilter& filter, Scan& scan) {
  using namespace msdata::IO;
  if (!filter.WantsAll()) {
    const std::string head(element.substr(0, element.find("<binaryDataArrayList")));
    TakeHead(Parse(WithoutUnknownTerms(head, IsKnownTerm), IgnoreBinaryData), scan);
    if (!filter.Wants(scan)) return false;
  }
  if (!points) throw std::runtime_error("no defaultArrayLength that is a number");
  if (*points == 0) RequireNoData(element);
  const auto flag = *points == 0 ? IgnoreBinaryData : ReadBinaryData;
  const msdata::Spectrum spectrum = Parse(TidySpectrumText(element, IsKnownTerm), flag);
  TakeHead(spectrum, scan);
  return TakeArrays(spectrum, scan);
}

msdata::Spectrum MzMLFile::Impl::Parse(const std::string& text, msdata::IO::BinaryDataFlag flag) const {
  std::istringstream stream(text);
  msdata::Spectrum spectrum;
  msdata::IO::read(stream, spectrum, flag, 0, nullptr, &groups);
  msdata::References::resolve(static_cast<ParamContainer&>(spectrum), groups);
  for (auto& scan : spectrum.scanList.scans) {
    msdata::References::resolve(static_cast<ParamContainer&>(scan), groups);
  }
  for (auto& array : spectrum.binaryDataArrayPtrs) {
    msdata::References::resolve(static_cast<ParamContainer&>(*array), groups);
  }
  return spectrum;
}

void MzMLFile::Impl::TakeHead(const msdata::Spectrum& spectrum, Scan& scan) {
  if (!IsUtf8(spectrum.id)) throw std::runtime_error("the id is not UTF-8");
  const auto position = static_cast<std::uint32_t>(seen);
  scan.id = spectrum.id;
  scan.number = NumberInId(scan.id).value_or(position);
  scan.msLevel = LevelOf(spectrum);
  scan.representation = RepresentationOf(spectrum);
  scan.rtSeconds = StartTime(spectrum);
  scan.polarity = PolarityOf(spectrum);
}

double MzMLFile::Impl::StartTime(const msdata::Spectrum& spectrum) {
  constexpr double kUnknown = std::numeric_limits<double>::quiet_NaN();
  if (spectrum.scanList.empty()) return kUnknown;
  const auto param = spectrum.scanList.scans.front().cvParam(cv::MS_scan_start_time);
  if (param.empty()) return kUnknown;
  const auto value = ToNumber<double>(param.value);
  if (!value || !std::isfinite(*value)) {
    throw std::runtime_error("the scan start time is \"" + param.value + "\"");
  }
  if (param.units == cv::CVID_Unknown) {
    counts.Add("with a start time without a unit, taken as unknown", place);
    return kUnknown;
  }
  return param.timeInSeconds();
}

bool MzMLFile::Impl::TakeArrays(const msdata::Spectrum& spectrum, Scan& scan) {
  scan.mz.clear();
  scan.amplitude.clear();
  if (*points == 0) return true;
  const auto mz = spectrum.getMZArray();
  const auto amplitude = spectrum.getIntensityArray();
  if (amplitude && !mz) {
    counts.Add("without an m/z array, left out", place);
    return false;
  }
  if (!mz || !amplitude)
    throw std::runtime_error(mz ? "no intensity array" : "no m/z and no intensity array");
  if (mz->data.size() != amplitude->data.size()) {
    throw std::runtime_error("the m/z array has " + std::to_string(mz->data.size()) +
                             " points and the intensity array " + std::to_string(amplitude->data.size()));
  }
  scan.mz.assign(mz->data.begin(), mz->data.end());
  scan.amplitude.assign(amplitude->data.begin(), amplitude->data.end());
  RequireFinite(scan.mz, "m/z");
  RequireFinite(scan.amplitude, "intensity");
  if (!Ascends(scan.mz)) SettleAxis(scan);
  return true;
}

void MzMLFile::Impl::SettleAxis(Scan& scan) {
  if (scan.representation == Scan::Centroid) return SortPeaks(scan.mz, scan.amplitude);
  const std::vector<double> mz = scan.mz;
  const std::vector<double> amplitude = scan.amplitude;
  AxisRepair repair = RepairAxis(scan.mz, scan.amplitude);
  if (repair.disorder) {
    counts.Add("with m/z out of order, sorted", place);
    scan.mz = mz;
    scan.amplitude = amplitude;
    SortPeaks(scan.mz, scan.amplitude);
    repair = RepairAxis(scan.mz, scan.amplitude);
  }
  if (repair.exchanged) counts.Add("with neighbouring points in the wrong order, put in order", place);
  if (repair.merged) counts.Add("with repeated m/z values, averaged", place);
}

void MzMLFile::Impl::CompareCount() {
  if (announced && *announced != seen) {
    warnings.push_back("the file announces " + std::to_string(*announced) + " spectra and holds " +
                       std::to_string(seen));
  }
}

MzMLFile::MzMLFile(ByteSource source) : impl_(std::make_unique<Impl>(std::move(source))) {}

MzMLFile::~MzMLFile() = default;

bool MzMLFile::Next(Scan& scan) {
  Impl& in = *impl_;
  if (std::exchange(in.spent, true)) return false;
  while (in.ToNextSpectrum()) {
    if (!in.ReadSpectrum(Filter(), scan)) continue;
    in.spent = false;
    return true;
  }
  in.CompareCount();
  return false;
}

std::optional<std::uint64_t> MzMLFile::Count() const { return impl_->announced; }

std::string MzMLFile::Format() const { return "mzML"; }

std::vector<std::string> MzMLFile::Warnings() const {
  std::vector<std::string> texts = impl_->counts.Texts();
  texts.insert(texts.end(), impl_->warnings.begin(), impl_->warnings.end());
  return texts;
}

}  // namespace TslTool
