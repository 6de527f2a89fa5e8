#include <tool/io/MzMLFile.h>

#include <tool/frame/InputError.h>
#include <tool/frame/Printable.h>
#include <tool/frame/Utf8.h>
#include <tool/io/Axis.h>
#include <tool/io/IonMobility.h>
#include <tool/io/MzMLArray.h>
#include <tool/io/MzMLElement.h>
#include <tool/io/MzMLHead.h>
#include <tool/io/WarningCounts.h>
#include <tool/io/XmlScanner.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <new>
#include <stdexcept>
#include <utility>

namespace TslTool {

namespace {

constexpr std::string_view kCalibrationSpectrum = "MS:1000928";
constexpr std::string_view kMzArray = "MS:1000514";
constexpr std::string_view kIntensityArray = "MS:1000515";
constexpr std::string_view kWavelengthArray = "MS:1000617";

constexpr const char* kSeveralMobilities =
    "of several ion mobilities (msconvert --filter \"scanSumming sumMs1=1\" sums them up)";

void RequireFinite(const std::vector<double>& values, const char* what) {
  const auto isFinite = [](double value) { return std::isfinite(value); };
  const auto bad = std::find_if_not(values.begin(), values.end(), isFinite);
  if (bad == values.end()) return;
  throw SpectrumDefect("with a value that is not finite",
                       "point " + std::to_string(bad - values.begin() + 1) + " of the " + what +
                           " array is not a finite number");
}

std::vector<pugi::xml_node> ArraysOf(const pugi::xml_node& spectrum) {
  return ChildrenOf(ChildOf(spectrum, "binaryDataArrayList"), "binaryDataArray");
}

// In mzML 1.0 "id" names the element only, and a nativeID that is a number is that of the scan.
std::string IdOf(const pugi::xml_node& spectrum) {
  const std::string native = spectrum.attribute("nativeID").value();
  if (native.empty()) return spectrum.attribute("id").value();
  return ToNumber<std::uint32_t>(native) ? "scan=" + native : native;
}

// An empty array may still have the few bytes that its packing begins and ends with.
void RequireNoData(const pugi::xml_node& spectrum) {
  constexpr std::size_t kPackingOnly = 32;
  for (const pugi::xml_node& array : ArraysOf(spectrum))
    if (TextOf(ChildOf(array, "binary")).size() > kPackingOnly)
      throw SpectrumDefect(kOtherLength, "announces 0 points, but its arrays are not empty");
}

}  // namespace

struct MzMLFile::Impl {
  Impl(ByteSource source, std::vector<std::string> odd) : xml(std::move(source)), warnings(std::move(odd)) {
    ReadHead();
  }

  template <class Step>
  bool Try(Step step) const;
  void ReadHead();
  void ReadParamGroup();
  void TakeIdFormat();
  void CountChromatogram();
  bool ToNextSpectrum();
  bool ReadSpectrum(const ScanFilter& filter, Scan& scan);
  bool DecodeSpectrum(std::string_view element, const ScanFilter& filter, Scan& scan);
  void TakeHead(const pugi::xml_node& spectrum, Scan& scan);
  double StartTime(const MzMLTerms& terms);
  bool TakeArrays(const pugi::xml_node& spectrum, Scan& scan);
  std::optional<std::vector<double>> FindArray(const pugi::xml_node& spectrum, std::string_view kind,
                                               const std::string& what);
  std::vector<double> Decode(const pugi::xml_node& array, const MzMLTerms& terms, const std::string& what);
  bool FindTerm(const pugi::xml_node& spectrum, std::string_view kind) const;
  void RequireOneMobility(const pugi::xml_node& spectrum) const;
  void SettleAxis(Scan& scan);
  void CompareCount();

  XmlScanner xml;
  MzMLGroups groups;
  IdFormat ids;
  std::optional<std::uint64_t> announced;
  std::uint64_t seen = 0;
  bool spent = false;
  std::string place;         // of the spectrum in hand
  std::uint64_t points = 0;  // that it announces
  Chromatograms chromatograms;
  WarningCounts counts;
  std::vector<std::string> warnings;
};

// Stops at the list of spectra, or behind the place where it would stand.
void MzMLFile::Impl::ReadHead() {
  for (auto event = xml.Next(); event != XmlScanner::Event::Finished; event = xml.Next()) {
    if (event != XmlScanner::Event::Start) continue;
    const std::string name(LocalName(xml.Name()));
    if (xml.Depth() == 1 && name != "mzML" && name != "indexedmzML") {
      throw InputError(xml.File(), xml.Place(),
                       "the root element is <" + Printable(xml.Name()) + ">, not <mzML>");
    }
    if (name == "referenceableParamGroup") ReadParamGroup();
    if (name == "cvParam" && ids.accession.empty()) TakeIdFormat();
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
  Try([&] {
    pugi::xml_document document;
    ParseElement(xml.ReadElement(), document);
    groups.Add(document.document_element());
    return true;
  });
}

// Of the first source file that has one; the names of all these terms end alike.
void MzMLFile::Impl::TakeIdFormat() {
  constexpr std::string_view kNone = "MS:1000824";
  const std::string name = xml.Attribute("name").value_or("");
  const std::string accession = xml.Attribute("accession").value_or("");
  if (accession.starts_with("MS:") && accession != kNone && name.ends_with(" nativeID format"))
    ids = {accession, name};
}

void MzMLFile::Impl::CountChromatogram() {
  ++chromatograms.count;
  chromatograms.points +=
      ToNumber<std::uint32_t>(xml.Attribute("defaultArrayLength").value_or("")).value_or(0);
}

bool MzMLFile::Impl::ToNextSpectrum() {
  for (auto event = xml.Next(); event != XmlScanner::Event::Finished; event = xml.Next()) {
    if (event != XmlScanner::Event::Start) continue;
    const std::string_view name = LocalName(xml.Name());
    if (name == "spectrum") return true;
    if (name == "chromatogram") CountChromatogram();
  }
  return false;
}

// False if the spectrum is not wanted or holds no mass spectrum.
bool MzMLFile::Impl::ReadSpectrum(const ScanFilter& filter, Scan& scan) {
  ++seen;
  place = xml.Place() + ", spectrum \"" + Printable(xml.Attribute("id").value_or(""), 100) + "\"";
  const std::string_view element = xml.ReadElement();
  return Try([&] { return DecodeSpectrum(element, filter, scan); });
}

// Runs what says by std::runtime_error what is wrong with the element in hand.
template <class Step>
bool MzMLFile::Impl::Try(Step step) const {
  try {
    return step();
  } catch (const InputError&) {
    throw;
  } catch (const std::runtime_error& error) {
    throw InputError(xml.File(), place, error.what());
  } catch (const std::bad_alloc&) {
    throw InputError(xml.File(), place, "is too large for the memory that there is");
  }
}

bool MzMLFile::Impl::DecodeSpectrum(std::string_view element, const ScanFilter& filter, Scan& scan) {
  pugi::xml_document document;
  ParseElement(element, document);
  const pugi::xml_node spectrum = document.document_element();
  TakeHead(spectrum, scan);
  if (!filter.Wants(scan)) {
    if (scan.isOfCalibration && !filter.takesCalibrations)
      counts.Add("of calibration, which are not of the sample, left out", place);
    return false;
  }
  const auto announces = ToNumber<std::uint64_t>(spectrum.attribute("defaultArrayLength").value());
  if (!announces) throw std::runtime_error("no defaultArrayLength that is a number");
  points = *announces;
  try {
    return TakeArrays(spectrum, scan);
  } catch (const SpectrumDefect& defect) {
    scan.mz.clear();
    scan.amplitude.clear();
    scan.defect = Defect{defect.Kind(), place, defect.what()};
    return true;
  }
}

void MzMLFile::Impl::TakeHead(const pugi::xml_node& spectrum, Scan& scan) {
  scan.defect.reset();
  scan.id = ToUtf8(IdOf(spectrum));
  scan.function = FunctionInId(scan.id);
  scan.number = NumberInId(scan.id).value_or(static_cast<std::uint32_t>(seen));
  const pugi::xml_node description = ChildOf(spectrum, "spectrumDescription");  // of mzML 1.0
  MzMLTerms terms = groups.TermsOf(spectrum);
  terms.Append(groups.TermsOf(description));
  const pugi::xml_node scans = description ? description : ChildOf(spectrum, "scanList");
  const MzMLTerms scanTerms = groups.TermsOf(ChildOf(scans, "scan"));
  scan.msLevel = LevelOf(terms);
  scan.representation = RepresentationOf(terms);
  scan.rtSeconds = StartTime(scanTerms);
  scan.polarity = PolarityOf(terms);
  scan.isOfCalibration = terms.Find(kCalibrationSpectrum) != nullptr;
  // Some writers tell it of the scan.
  if (scan.polarity == 0) scan.polarity = PolarityOf(scanTerms);
}

double MzMLFile::Impl::StartTime(const MzMLTerms& terms) {
  constexpr double kUnknown = std::numeric_limits<double>::quiet_NaN();
  const MzMLTerm* term = terms.Find("MS:1000016");
  if (!term) return kUnknown;
  const auto value = ToNumber<double>(term->value);
  if (!value || !std::isfinite(*value)) {
    throw std::runtime_error("the scan start time is \"" + Printable(term->value) + "\"");
  }
  const auto seconds = SecondsIn(term->unit);
  if (!seconds) {
    counts.Add(term->unit.empty() ? "with a start time without a unit, taken as unknown"
                                  : "with a start time in a unit that is none of time, taken as unknown",
               place);
    return kUnknown;
  }
  return *value * *seconds;
}

bool MzMLFile::Impl::TakeArrays(const pugi::xml_node& spectrum, Scan& scan) {
  scan.mz.clear();
  scan.amplitude.clear();
  if (points == 0) {
    RequireNoData(spectrum);
    return true;
  }
  auto mz = FindArray(spectrum, kMzArray, "m/z");
  auto amplitude = FindArray(spectrum, kIntensityArray, "intensity");
  if (amplitude && !mz) {
    const bool isOfWavelengths = FindTerm(spectrum, kWavelengthArray);
    counts.Add(isOfWavelengths ? "of wavelengths, left out" : "without an m/z array, left out", place);
    return false;
  }
  if (!mz || !amplitude)
    throw std::runtime_error(mz ? "no intensity array" : "no m/z and no intensity array");
  if (mz->size() != amplitude->size()) {
    throw SpectrumDefect(kOtherLength, "the m/z array has " + std::to_string(mz->size()) +
                                           " points and the intensity array " +
                                           std::to_string(amplitude->size()));
  }
  scan.mz = std::move(*mz);
  scan.amplitude = std::move(*amplitude);
  RequireFinite(scan.mz, "m/z");
  RequireFinite(scan.amplitude, "intensity");
  RequireOneMobility(spectrum);
  if (!Ascends(scan.mz)) SettleAxis(scan);
  return true;
}

// Nothing if the spectrum has no array of that kind. Arrays of other kinds, in any place, are passed over.
std::optional<std::vector<double>> MzMLFile::Impl::FindArray(const pugi::xml_node& spectrum,
                                                             std::string_view kind, const std::string& what) {
  std::optional<std::vector<double>> found;
  for (const pugi::xml_node& array : ArraysOf(spectrum)) {
    const MzMLTerms terms = groups.TermsOf(array);
    if (!terms.Find(kind)) continue;
    if (found) throw std::runtime_error("more than one " + what + " array");
    found = Decode(array, terms, what);
  }
  return found;
}

// Whether one of the arrays is of that kind.
bool MzMLFile::Impl::FindTerm(const pugi::xml_node& spectrum, std::string_view kind) const {
  return std::ranges::any_of(ArraysOf(spectrum), [&](const pugi::xml_node& array) {
    return groups.TermsOf(array).Find(kind) != nullptr;
  });
}

// Points of several mobilities are spectra of their own, mixed, on axes that need not be the same.
void MzMLFile::Impl::RequireOneMobility(const pugi::xml_node& spectrum) const {
  for (const pugi::xml_node& array : ArraysOf(spectrum)) {
    const MzMLTerms terms = groups.TermsOf(array);
    if (IsIonMobilityArray(array, terms) && !HasOneMobility(array, terms, points))
      throw SpectrumDefect(kSeveralMobilities,
                           "holds points of several ion mobilities, which msconvert sums up with --filter "
                           "\"scanSumming sumMs1=1\"");
  }
}

std::vector<double> MzMLFile::Impl::Decode(const pugi::xml_node& array, const MzMLTerms& terms,
                                           const std::string& what) {
  const std::string own = array.attribute("arrayLength").value();
  const auto length = own.empty() ? points : ToNumber<std::uint64_t>(own);
  if (!length)
    throw std::runtime_error("the arrayLength of the " + what + " array is \"" + Printable(own) + "\"");
  MzMLArray decoded = DecodeArray(array, terms, what, *length);
  if (!decoded.isLengthTrue)
    counts.Add("with an encodedLength that its text has not, read as the text is", place);
  return std::move(decoded.values);
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
  if (repair.dropped) counts.Add("with zeros that step back in m/z, left out", place);
  if (repair.merged) counts.Add("with repeated m/z values, averaged", place);
}

void MzMLFile::Impl::CompareCount() {
  if (announced && *announced != seen) {
    warnings.push_back("the file announces " + std::to_string(*announced) + " spectra and holds " +
                       std::to_string(seen));
  }
}

MzMLFile::MzMLFile(ByteSource source, std::vector<std::string> warnings)
    : impl_(std::make_unique<Impl>(std::move(source), std::move(warnings))) {}

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

IdFormat MzMLFile::Ids() const { return impl_->ids; }

Chromatograms MzMLFile::PassedOver() const { return impl_->chromatograms; }

std::vector<std::string> MzMLFile::Warnings() const {
  std::vector<std::string> texts = impl_->counts.Texts();
  texts.insert(texts.end(), impl_->warnings.begin(), impl_->warnings.end());
  return texts;
}

}  // namespace TslTool
