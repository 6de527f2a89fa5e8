#include <tslbl/chargestate/DeconXMLParser.h>

#include <tslbl/closed/common/Text.h>
#include <tslbl/closed/common/XMLTree.h>
#include <charconv>
#include <cmath>
#include <initializer_list>
#include <limits>
#include <stdexcept>
#include <string_view>
#include <variant>

namespace TslBL {
namespace {

constexpr const char* kRoot = "CSDecon";

[[noreturn]] void Fail(const char* text) { throw std::runtime_error(text); }

// A node or attribute that could not be made is null: there was no memory for it.
template <class Handle>
Handle Made(Handle handle) {
  if (!handle) Fail("Error writing XML content");
  return handle;
}

class TextWriter final : public pugi::xml_writer {
 public:
  void write(const void* data, std::size_t size) override {
    text.append(static_cast<const char*>(data), size);
  }
  std::string text;
};

struct Attribute {
  const char* name;
  std::variant<double, std::uint32_t> value;
};

void Write(pugi::xml_node element, std::initializer_list<Attribute> attributes) {
  for (const Attribute& attribute : attributes) {
    char text[32] = {};
    std::visit([&](auto value) { std::to_chars(text, text + sizeof text - 1, value); }, attribute.value);
    if (!Made(element.append_attribute(attribute.name)).set_value(text)) Fail("Error writing XML content");
  }
}

std::string_view Trimmed(std::string_view text) {
  constexpr const char* kBlanks = " \t\r\n";
  const auto begin = text.find_first_not_of(kBlanks);
  if (begin == std::string_view::npos) return {};
  return text.substr(begin, text.find_last_not_of(kBlanks) - begin + 1);
}

// The whole text of an attribute as a finite number.
double Real(pugi::xml_node element, const char* name) {
  const std::string_view text = Trimmed(element.attribute(name).value());
  double value = 0.0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
  if (error != std::errc() || end != text.data() + text.size() || !std::isfinite(value))
    Fail("Error reading XML content");
  return value;
}

// A number with a fraction is rounded, as engines may count in real numbers.
template <class Int>
Int Integer(pugi::xml_node element, const char* name) {
  const double value = std::nearbyint(Real(element, name));
  if (value < std::numeric_limits<Int>::min() || value > std::numeric_limits<Int>::max())
    Fail("Error reading XML content");
  return static_cast<Int>(value);
}

FoundSeries::ChargeState ReadChargeState(pugi::xml_node element) {
  FoundSeries::ChargeState state{Integer<std::int32_t>(element, "charge"),
                                 Real(element, "dev"),
                                 Integer<std::uint32_t>(element, "monoPk"),
                                 Real(element, "monoMass"),
                                 {}};
  for (const pugi::xml_node peak : element.children("Peak"))
    state.peakIds.push_back(Integer<std::uint32_t>(peak, "id"));
  return state;
}

}  // namespace

struct DeconXMLParser::Impl {
  pugi::xml_document document;

  void MakeRoot(const char* failure) {
    document.reset();
    if (!document.append_child(kRoot)) Fail(failure);
  }

  pugi::xml_node Root() const { return document.document_element(); }

  pugi::xml_node Add(const std::string& name) {
    if (!Root()) Fail("Error writing XML content.");
    if (Root().child(name.c_str())) throw std::runtime_error("Only one " + name + " node is allowed.");
    return Made(Root().append_child(name.c_str()));
  }

  pugi::xml_node Plot() const {
    const pugi::xml_node plot = Root().child("Plot");
    if (!plot) Fail("No Plot node found.");
    return plot;
  }
};

DeconXMLParser::DeconXMLParser() : impl_(std::make_unique<Impl>()) {
  impl_->MakeRoot("Error creating XML document.");
}
DeconXMLParser::DeconXMLParser(const std::wstring& text) : impl_(std::make_unique<Impl>()) { WText(text); }
DeconXMLParser::~DeconXMLParser() = default;

void DeconXMLParser::Clear() { impl_->MakeRoot("Error clearing XML content"); }

void DeconXMLParser::WText(const std::wstring& text) {
  if (!LoadXmlTree(ToUtf8(text), pugi::encoding_utf8, impl_->document).empty())
    Fail("Error reading XML content.");
}

std::wstring DeconXMLParser::QText() const {
  TextWriter out;
  impl_->document.save(out, "", pugi::format_raw | pugi::format_no_declaration, pugi::encoding_utf8);
  return FromUtf8(out.text);
}

void DeconXMLParser::WResPrefs(const ResPrefs& prefs) {
  pugi::xml_node element = impl_->Add("ResPrefs");
  Write(element, {
                     {"snCutoff", prefs.snCutoff},
                     {"resLow", prefs.resLow},
                     {"resHigh", prefs.resHigh},
                     {"minPatternScore", prefs.minPatternScore},
                     {"zMax", prefs.zMax},
                     {"maxGaps", prefs.maxGaps},
                     {"tolerance", prefs.tolerance},
                     {"adductMass", prefs.adductMass},
                     {"csfTolerance", prefs.csfTolerance},
                     {"csfAllowableGaps", prefs.csfAllowableGaps},
                     {"scoreFunct", prefs.scoreFunct},
                     {"mmCalcFunc", prefs.mmCalcFunc},
                     {"atomicProbability", prefs.atomicProbability},
                     {"molecularProbability", prefs.molecularProbability},
                     {"csfMaxFamily", prefs.csfMaxFamily},
                 });
  pugi::xml_node formula = Made(element.append_child("Formula"));
  if (!formula.text().set(ToUtf8(prefs.formula).c_str())) Fail("Error writing XML content");
}

void DeconXMLParser::WUnresPrefs(const UnresPrefs& prefs) {
  Write(impl_->Add("UnresPrefs"), {
                                      {"minMass", prefs.minMass},
                                      {"maxMass", prefs.maxMass},
                                      {"chargeCarrierMass", prefs.chargeCarrierMass},
                                      {"minSeriesSize", prefs.minSeriesSize},
                                      {"maxSeries", prefs.maxSeries},
                                      {"isotopicGaps", prefs.isotopicGaps},
                                      {"massAccuracy", prefs.massAccuracy},
                                  });
}

void DeconXMLParser::WMZPeaks(const std::vector<PeakRow>& peaks) {
  pugi::xml_node element = impl_->Add("MZPeaks");
  for (const PeakRow& peak : peaks)
    Write(Made(element.append_child("Peak")), {{"id", peak.Id},
                                               {"mz", peak.Mz},
                                               {"ampl", peak.Ampl},
                                               {"area", peak.Area},
                                               {"sn", peak.SN},
                                               {"res", peak.Res}});
}

void DeconXMLParser::WSeriesPeaks(double avgMass, const std::vector<std::uint32_t>& peakIds) {
  pugi::xml_node element = impl_->Add("SeriesPeaks");
  Write(element, {{"avgMass", avgMass}});
  for (const std::uint32_t id : peakIds) Write(Made(element.append_child("Peak")), {{"id", id}});
}

void DeconXMLParser::WPlot(const std::vector<PlotPoint>& points) {
  pugi::xml_node element = impl_->Add("Plot");
  for (const PlotPoint& point : points)
    Write(Made(element.append_child("Point")), {{"x", point.x}, {"y", point.y}});
}

void DeconXMLParser::WPlot(const std::vector<PlotPoint>& points, double adductMass, std::uint32_t charge) {
  WPlot(points);
  Write(impl_->Plot(), {{"adductMass", adductMass}, {"charge", charge}});
}

std::vector<FoundSeries> DeconXMLParser::QSeries() const {
  std::vector<FoundSeries> all;
  for (const pugi::xml_node element : impl_->Root().children("Series")) {
    FoundSeries& series = all.emplace_back();
    series.avgMass = Real(element, "avgMass");
    series.stdDev = Real(element, "stdDev");
    for (const pugi::xml_node state : element.children("ChargeState"))
      series.chargeStates.push_back(ReadChargeState(state));
  }
  return all;
}

std::vector<PlotPoint> DeconXMLParser::QPlot() const {
  std::vector<PlotPoint> points;
  for (const pugi::xml_node point : impl_->Plot().children("Point"))
    points.push_back({Real(point, "x"), Real(point, "y")});
  return points;
}

}  // namespace TslBL
