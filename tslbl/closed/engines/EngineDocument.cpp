#include <tslbl/closed/engines/EngineDocument.h>

#include <tslbl/closed/common/Text.h>
#include <tslbl/closed/common/XMLTree.h>

#include <array>
#include <charconv>
#include <cmath>
#include <cstring>
#include <pugixml.hpp>
#include <stdexcept>
#include <type_traits>
#include <unordered_map>

namespace TslMath {
namespace {

constexpr const char* kRoot = "CSDecon";

class Document {
 public:
  explicit Document(const std::wstring& text) {
    const std::wstring reason = TslCommon::LoadXmlTree(TslCommon::ToUtf8(text), pugi::encoding_utf8, tree_);
    if (!reason.empty())
      throw std::runtime_error("The document cannot be read: " + TslCommon::ToUtf8(reason));
    root_ = tree_.child(kRoot);
    if (!root_) throw std::runtime_error("The document has no element CSDecon.");
  }

  pugi::xml_node Child(const char* name) const { return root_.child(name); }
  pugi::xml_node RequiredChild(const char* name) const {
    const pugi::xml_node child = Child(name);
    if (!child) throw std::runtime_error(std::string("The document has no element ") + name + ".");
    return child;
  }

 private:
  pugi::xml_document tree_;
  pugi::xml_node root_;
};

[[noreturn]] void Refuse(pugi::xml_node element, const char* name, const char* text) {
  throw std::runtime_error(std::string(element.name()) + ": " + name + " is no number: \"" + text + "\"");
}

template <class Number>
Number Required(pugi::xml_node element, const char* name) {
  const pugi::xml_attribute attribute = element.attribute(name);
  if (!attribute) throw std::runtime_error(std::string(element.name()) + " has no " + name + ".");
  const char* text = attribute.value();
  const char* end = text + std::strlen(text);
  Number number{};
  const auto [stop, error] = std::from_chars(text, end, number);
  if (error != std::errc() || stop != end) Refuse(element, name, text);
  return number;
}

double Real(pugi::xml_node element, const char* name) { return Required<double>(element, name); }
std::int32_t Whole(pugi::xml_node element, const char* name) { return Required<std::int32_t>(element, name); }

IonPeak ReadPeak(pugi::xml_node element) {
  return {Real(element, "mz"), Real(element, "ampl"), Real(element, "area"), Real(element, "sn"),
          Real(element, "res")};
}

void ReadSeeds(pugi::xml_node element, PeakDocument& read) {
  if (!element) return;
  std::unordered_map<std::uint32_t, std::size_t> places;
  for (std::size_t i = 0; i < read.ids.size(); ++i) places.emplace(read.ids[i], i);
  read.seedMass = Real(element, "avgMass");
  for (const pugi::xml_node peak : element.children("Peak")) {
    const auto found = places.find(Required<std::uint32_t>(peak, "id"));
    if (found != places.end()) read.seeds.push_back(found->second);
  }
}

// Text is put together by hand: a plot has hundreds of thousands of points.
class Writer {
 public:
  Writer& operator<<(const char* text) {
    text_ += text;
    return *this;
  }
  template <class Number>
  requires std::is_arithmetic_v<Number> Writer& operator<<(Number number) {
    std::array<char, 32> digits;
    const auto [end, error] = std::to_chars(digits.data(), digits.data() + digits.size(), number);
    text_.append(digits.data(), end);
    return *this;
  }

  std::wstring Text() const { return {text_.begin(), text_.end()}; }  // all of it is ASCII

 private:
  std::string text_;
};

void Write(Writer& out, const ReplyState& state, const std::vector<std::uint32_t>& ids) {
  out << "<ChargeState charge=\"" << state.charge << "\" dev=\"" << state.deviation << "\" monoPk=\""
      << ids[state.monoPeak] << "\" monoMass=\"" << state.monoMass << "\">";
  for (const std::size_t peak : state.peaks) out << "<Peak id=\"" << ids[peak] << "\" />";
  out << "</ChargeState>";
}

}  // namespace

ResolvedPrefs ReadResolvedPrefs(const std::wstring& text) {
  const Document document(text);
  const pugi::xml_node element = document.RequiredChild("ResPrefs");
  ResolvedPrefs prefs;
  prefs.leastSignalToNoise = Real(element, "snCutoff");
  prefs.lowestResolution = Real(element, "resLow");
  prefs.highestResolution = Real(element, "resHigh");
  prefs.leastScore = Real(element, "minPatternScore");
  prefs.maxCharge = Whole(element, "zMax");
  prefs.maxIsotopeGaps = Whole(element, "maxGaps");
  prefs.accuracy = Real(element, "tolerance");
  prefs.carrierMass = Real(element, "adductMass");
  prefs.massAccuracy = Real(element, "csfTolerance");
  prefs.maxChargeGaps = Whole(element, "csfAllowableGaps");
  prefs.score =
      Whole(element, "scoreFunct") == 1 ? PatternScore::CrossCorrelation : PatternScore::SumOfDeviations;
  prefs.mean = Whole(element, "mmCalcFunc") == 1 ? MassMean::Weighted : MassMean::Plain;
  prefs.thresholds.atom = Real(element, "atomicProbability");
  prefs.thresholds.molecule = Real(element, "molecularProbability");
  prefs.maxSpecies = Whole(element, "csfMaxFamily");
  prefs.averageMolecule = ParseFormula(element.child("Formula").text().get());
  return prefs;
}

UnresolvedPrefs ReadUnresolvedPrefs(const std::wstring& text) {
  const Document document(text);
  const pugi::xml_node element = document.RequiredChild("UnresPrefs");
  UnresolvedPrefs prefs;
  prefs.minMass = Real(element, "minMass");
  prefs.maxMass = Real(element, "maxMass");
  prefs.carrierMass = Real(element, "chargeCarrierMass");
  prefs.minSeriesSize = Whole(element, "minSeriesSize");
  prefs.maxSeries = Whole(element, "maxSeries");
  prefs.maxGaps = Whole(element, "isotopicGaps");
  prefs.accuracy = Real(element, "massAccuracy");
  return prefs;
}

PeakDocument ReadPeaks(const std::wstring& text) {
  const Document document(text);
  PeakDocument read;
  for (const pugi::xml_node peak : document.RequiredChild("MZPeaks").children("Peak")) {
    read.ids.push_back(Required<std::uint32_t>(peak, "id"));
    read.peaks.push_back(ReadPeak(peak));
  }
  ReadSeeds(document.Child("SeriesPeaks"), read);
  return read;
}

ProfileDocument ReadProfile(const std::wstring& text) {
  const Document document(text);
  const pugi::xml_node plot = document.RequiredChild("Plot");
  ProfileDocument read;
  read.carrierMass = Real(plot, "adductMass");
  read.charge = Whole(plot, "charge");
  for (const pugi::xml_node point : plot.children("Point")) {
    read.x.push_back(Real(point, "x"));
    read.y.push_back(Real(point, "y"));
  }
  return read;
}

MassCurve ReadMassCurve(const std::wstring& text) {
  const Document document(text);
  MassCurve curve;
  for (const pugi::xml_node point : document.RequiredChild("Plot").children("Point")) {
    const double mass = Real(point, "x");
    if (!std::isfinite(mass) || (!curve.mass.empty() && mass <= curve.mass.back()))
      throw std::runtime_error("Plot: the masses do not ascend.");
    curve.mass.push_back(mass);
    curve.density.push_back(Real(point, "y"));
  }
  return curve;
}

std::wstring WriteSeries(const std::vector<ReplySeries>& series, const std::vector<std::uint32_t>& ids) {
  Writer out;
  out << "<CSDecon>";
  for (const ReplySeries& one : series) {
    out << "<Series avgMass=\"" << one.mass << "\" stdDev=\"" << one.standardDeviation << "\">";
    for (const ReplyState& state : one.states) Write(out, state, ids);
    out << "</Series>";
  }
  out << "</CSDecon>";
  return out.Text();
}

std::wstring WriteMassCurve(const MassCurve& curve) {
  Writer out;
  out << "<CSDecon><Plot>";
  for (std::size_t i = 0; i < curve.mass.size(); ++i)
    out << "<Point x=\"" << curve.mass[i] << "\" y=\"" << curve.density[i] << "\" />";
  out << "</Plot></CSDecon>";
  return out.Text();
}

}  // namespace TslMath
