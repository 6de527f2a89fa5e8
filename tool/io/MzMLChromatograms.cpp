#include <tool/io/MzMLChromatograms.h>

#include <fmt/format.h>
#include <fmt/ranges.h>

#include <tool/frame/InputError.h>
#include <tool/frame/Printable.h>
#include <tool/frame/Utf8.h>
#include <tool/io/MzMLArray.h>
#include <tool/io/MzMLElement.h>
#include <tool/io/MzMLHead.h>
#include <tool/io/XmlScanner.h>
#include <algorithm>
#include <cmath>
#include <optional>
#include <stdexcept>
#include <utility>

namespace TslTool {
namespace {

constexpr std::string_view kTimeArray = "MS:1000595";
constexpr std::string_view kIntensityArray = "MS:1000515";
constexpr std::string_view kTarget = "MS:1000827";  // of an isolation window, m/z
constexpr std::size_t kMostListed = 8;

struct Type {
  std::string_view accession;
  const char* title;
};
constexpr Type kTypes[] = {
    {"MS:1000235", "total ion current"},
    {"MS:1000628", "base peak"},
    {"MS:1000627", "selected ion current"},
    {"MS:1001472", "selected ion monitoring"},
    {"MS:1001473", "selected reaction"},
    {"MS:1001474", "consecutive reaction"},
    {"MS:1000811", "electromagnetic radiation"},
    {"MS:1000812", "absorption"},
    {"MS:1000813", "emission"},
};

class ChromatogramReader {
 public:
  ChromatogramReader(ByteSource source, const std::string& only) : xml_(std::move(source)), only_(only) {}

  Traces Read(std::vector<std::string> warnings) {
    traces_.warnings = std::move(warnings);
    for (auto event = xml_.Next(); event != XmlScanner::Event::Finished; event = xml_.Next()) {
      if (event != XmlScanner::Event::Start) continue;
      const std::string_view name = LocalName(xml_.Name());
      if (xml_.Depth() == 1 && name != "mzML" && name != "indexedmzML")
        throw InputError(xml_.File(), xml_.Place(),
                         "the root element is <" + Printable(xml_.Name()) + ">, not <mzML>");
      if (name == "referenceableParamGroup") ReadGroup();
      if (name == "chromatogram") ReadOne();
    }
    if (!only_.empty() && !isFound_) RefuseOnly();
    return std::move(traces_);
  }

 private:
  template <class Step>
  void Try(Step step) const {
    try {
      step();
    } catch (const InputError&) {
      throw;
    } catch (const std::runtime_error& error) {
      throw InputError(xml_.File(), place_, error.what());
    } catch (const std::bad_alloc&) {
      throw InputError(xml_.File(), place_, "is too large for the memory that there is");
    }
  }

  void ReadGroup() {
    place_ = xml_.Place();
    Try([&] {
      pugi::xml_document document;
      ParseElement(xml_.ReadElement(), document);
      groups_.Add(document.document_element());
    });
  }

  void ReadOne() {
    const std::string number = std::to_string(seen_++);
    const std::string id = xml_.Attribute("id").value_or("");
    place_ = xml_.Place() + ", chromatogram \"" + Printable(id, 100) + "\"";
    if (ids_.size() < kMostListed) ids_.push_back(Printable(id));
    // An id is meant before a number.
    const bool isMeant = only_.empty() || id == only_ || (number == only_ && !isFound_);
    if (!isMeant) return;
    isFound_ = true;
    Try([&] {
      pugi::xml_document document;
      ParseElement(xml_.ReadElement(), document);
      if (!only_.empty()) traces_.all.clear();
      Take(document.document_element());
    });
  }

  void Take(const pugi::xml_node& element) {
    Trace trace;
    trace.name = ToUtf8(element.attribute("id").value());
    const auto points = ToNumber<std::uint64_t>(element.attribute("defaultArrayLength").value());
    if (!points) throw std::runtime_error("no defaultArrayLength that is a number");
    if (*points < 2) return LeaveOut(trace.name, "of less than two points");
    auto seconds = Times(element, *points);
    auto values = Array(element, kIntensityArray, "intensity", *points);
    if (!seconds || !values) return LeaveOut(trace.name, seconds ? "without intensities" : "without times");
    trace.seconds = std::move(*seconds);
    trace.values = std::move(*values);
    RequireCurve(trace);
    trace.title = TitleOf(element);
    traces_.all.push_back(std::move(trace));
  }

  void LeaveOut(const std::string& id, const char* why) {
    traces_.warnings.push_back(fmt::format("chromatogram \"{}\" {}, left out", Printable(id, 100), why));
  }

  std::optional<std::vector<double>> Array(const pugi::xml_node& element, std::string_view kind,
                                           const char* what, std::uint64_t points,
                                           MzMLTerm* found = nullptr) {
    for (const pugi::xml_node& array :
         ChildrenOf(ChildOf(element, "binaryDataArrayList"), "binaryDataArray")) {
      const MzMLTerms terms = groups_.TermsOf(array);
      const MzMLTerm* term = terms.Find(kind);
      if (!term) continue;
      if (found) *found = *term;
      const std::string own = array.attribute("arrayLength").value();
      return DecodeArray(array, terms, what, ToNumber<std::uint64_t>(own).value_or(points)).values;
    }
    return std::nullopt;
  }

  std::optional<std::vector<double>> Times(const pugi::xml_node& element, std::uint64_t points) {
    MzMLTerm term;
    auto times = Array(element, kTimeArray, "time", points, &term);
    if (!times) return times;
    const auto unit = SecondsIn(term.unit);
    if (!unit)
      traces_.warnings.push_back(
          fmt::format("chromatogram \"{}\" tells no unit of its times, taken as seconds",
                      Printable(element.attribute("id").value(), 100)));
    for (double& time : *times) time *= unit.value_or(1.0);
    return times;
  }

  static void RequireCurve(const Trace& trace) {
    if (trace.seconds.size() != trace.values.size())
      throw std::runtime_error(fmt::format("the time array has {} points and the intensity array {}",
                                           trace.seconds.size(), trace.values.size()));
    for (std::size_t i = 0; i < trace.seconds.size(); ++i) {
      if (!std::isfinite(trace.seconds[i]) || !std::isfinite(trace.values[i]))
        throw std::runtime_error(fmt::format("point {} is not a finite number", i + 1));
      if (i > 0 && !(trace.seconds[i] > trace.seconds[i - 1]))
        throw std::runtime_error(
            fmt::format("the time of point {}, {} s, does not come after the {} s of the one "
                        "before it",
                        i + 1, trace.seconds[i], trace.seconds[i - 1]));
    }
  }

  std::string TargetIn(const pugi::xml_node& element, std::string_view child) {
    const MzMLTerms terms = groups_.TermsOf(ChildOf(ChildOf(element, child), "isolationWindow"));
    const MzMLTerm* term = terms.Find(kTarget);
    return term ? Printable(term->value) : "";
  }

  std::string TitleOf(const pugi::xml_node& element) {
    std::string title;
    const MzMLTerms terms = groups_.TermsOf(element);
    for (const Type& type : kTypes)
      if (terms.Find(type.accession)) title = type.title;
    const std::string from = TargetIn(element, "precursor");
    const std::string to = TargetIn(element, "product");
    if (!from.empty()) title += (title.empty() ? "" : " ") + from + (to.empty() ? "" : " > " + to);
    return title;
  }

  [[noreturn]] void RefuseOnly() const {
    const std::string more = seen_ > ids_.size() ? ", ..." : "";
    const std::string held = ids_.empty()
                                 ? "holds no chromatogram"
                                 : fmt::format("its {} chromatogram{} \"{}\"{}", seen_,
                                               seen_ == 1 ? " is" : "s are", fmt::join(ids_, "\", \""), more);
    throw InputError(xml_.File(), "", fmt::format("has no chromatogram \"{}\": {}", Printable(only_), held));
  }

  XmlScanner xml_;
  const std::string& only_;
  MzMLGroups groups_;
  std::string place_;
  std::uint64_t seen_ = 0;
  bool isFound_ = false;
  std::vector<std::string> ids_;  // the first
  Traces traces_;
};

}  // namespace

Traces ReadChromatograms(ByteSource source, const std::string& only, std::vector<std::string> warnings) {
  return ChromatogramReader(std::move(source), only).Read(std::move(warnings));
}

}  // namespace TslTool
