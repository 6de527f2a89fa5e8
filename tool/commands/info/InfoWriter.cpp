#include <tool/commands/info/InfoWriter.h>

#include <fmt/format.h>
#include <tool/frame/Printable.h>

#include <tslbl/closed/common/Text.h>
#include <cmath>
#include <nlohmann/json.hpp>
#include <stdexcept>
#include <variant>

namespace TslTool {
namespace {

using Json = nlohmann::ordered_json;

// Nothing is what the file does not tell.
using Cell = std::variant<std::monostate, double, std::uint64_t, std::string>;

Cell OrNothing(double value) { return std::isnan(value) ? Cell() : Cell(value); }

Cell OrNothing(const std::string& name) { return name == "unknown" ? Cell() : Cell(name); }

struct Column {
  const char* name;
  Cell (*cell)(const ScanFacts& scan);
};

constexpr Column kColumns[] = {
    {"scan", [](const ScanFacts& s) { return Cell(std::uint64_t{s.number}); }},
    {"id", [](const ScanFacts& s) { return Cell(s.id); }},
    {"rt_s", [](const ScanFacts& s) { return OrNothing(s.rtSeconds); }},
    {"ms_level",
     [](const ScanFacts& s) {
       return s.msLevel == 0 ? Cell() : Cell(static_cast<std::uint64_t>(s.msLevel));
     }},
    {"polarity", [](const ScanFacts& s) { return OrNothing(NameOfPolarity(s.polarity)); }},
    {"marked", [](const ScanFacts& s) { return OrNothing(NameOfRepresentation(s.marked)); }},
    {"judged",
     [](const ScanFacts& s) { return OrNothing(NameOfRepresentation(s.judged.value_or(Scan::Unknown))); }},
    {"points", [](const ScanFacts& s) { return Cell(s.points); }},
    {"mz_from", [](const ScanFacts& s) { return OrNothing(s.mzFrom); }},
    {"mz_to", [](const ScanFacts& s) { return OrNothing(s.mzTo); }},
    {"tic", [](const ScanFacts& s) { return OrNothing(s.tic); }},
    {"base_peak_mz", [](const ScanFacts& s) { return OrNothing(s.basePeakMz); }},
    {"base_peak", [](const ScanFacts& s) { return OrNothing(s.basePeak); }},
    {"zeros", [](const ScanFacts& s) { return Cell(s.zeros); }},
};

struct TextOfCell {
  std::string operator()(std::monostate) const { return ""; }
  std::string operator()(double value) const { return fmt::format("{}", value); }
  std::string operator()(std::uint64_t value) const { return fmt::format("{}", value); }
  std::string operator()(const std::string& text) const { return Printable(text, text.size()); }
};

struct JsonOfCell {
  Json operator()(std::monostate) const { return nullptr; }
  template <class Value>
  Json operator()(const Value& value) const {
    return value;
  }
};

class InfoTsv final : public InfoWriter {
 public:
  using InfoWriter::InfoWriter;

  std::string Head() const override {
    return Line([](const Column& column) { return std::string(column.name); });
  }
  std::string Part(const ScanFacts& scan) const override {
    return Line([&](const Column& column) { return std::visit(TextOfCell(), column.cell(scan)); });
  }

 private:
  template <class Text>
  static std::string Line(Text text) {
    std::string line;
    for (const Column& column : kColumns) line += (line.empty() ? "" : "\t") + text(column);
    return line + '\n';
  }
};

// Names of files and titles may be no UTF-8.
std::string Dump(const Json& json) { return json.dump(-1, ' ', false, Json::error_handler_t::replace); }

Json JsonOf(const Span& span) {
  return span.IsKnown() ? Json{{"from", span.from}, {"to", span.to}} : Json(nullptr);
}

template <class Counts, class Name>
Json JsonOf(const Counts& counts, Name name) {
  Json json = Json::object();
  for (const auto& [key, count] : counts) json[name(key)] = count;
  return json;
}

std::string NameOfLevel(int level) { return level == 0 ? "unknown" : std::to_string(level); }

Json JsonOf(const FileTail& tail) {
  const FileFacts& f = tail.facts;
  Json json;
  json["spectra"] = f.spectra;
  json["empty"] = f.empty;
  json["first"] = f.spectra > 0 ? Json(f.firstNumber) : Json(nullptr);
  json["last"] = f.spectra > 0 ? Json(f.lastNumber) : Json(nullptr);
  json["ascending"] = f.ascends;
  json["ms_levels"] = JsonOf(f.msLevels, NameOfLevel);
  json["polarities"] = JsonOf(f.polarities, NameOfPolarity);
  if (!f.functions.empty())
    json["functions"] = JsonOf(f.functions, [](std::uint32_t function) { return std::to_string(function); });
  json["marked"] = JsonOf(f.marked, NameOfRepresentation);
  json["judged"] = JsonOf(f.judged, NameOfRepresentation);
  json["not_as_marked"] = f.differing;
  json["points"] = f.points;
  json["zeros"] = f.zeros;
  json["fewest_points"] = f.spectra > 0 ? Json(f.fewest) : Json(nullptr);
  json["most_points"] = f.spectra > 0 ? Json(f.most) : Json(nullptr);
  json["mz"] = JsonOf(f.mz);
  json["rt_s"] = JsonOf(f.rtSeconds);
  json["tic"] = JsonOf(f.tic);
  json["base_peak"] = JsonOf(f.basePeak);
  json["points_across_a_peak"] = tail.pointsAcross > 0.0 ? Json(tail.pointsAcross) : Json(nullptr);
  json["chromatograms"] = {{"count", tail.chromatograms.count}, {"points", tail.chromatograms.points}};
  return json;
}

// One object; the facts of the file that are known at its end stand behind the scans, so that none of these
// is kept.
class InfoJson final : public InfoWriter {
 public:
  using InfoWriter::InfoWriter;

  std::string Head() const override {
    Json json = {{"file", About().file}, {"format", About().format}};
    if (About().isRun) json["title"] = About().title;
    for (const auto& [id, tune] : About().tunes)
      json["tunes"].push_back({{"id", id}, {"name", TslCommon::ToUtf8(tune.Info.Name)}});
    if (const auto& method = About().method)
      json["method"] = {{"description", TslCommon::ToUtf8(method->Desc)},
                        {"time_periods", method->TimePeriods.size()},
                        {"tune_runs", method->TuneRuns.size()}};
    std::string text = Dump(json);
    text.pop_back();
    return text + ",\"scans\":[\n";
  }
  std::string Part(const ScanFacts& scan) const override {
    Json json;
    for (const Column& column : kColumns) json[column.name] = std::visit(JsonOfCell(), column.cell(scan));
    return Dump(json);
  }
  std::string Between() const override { return ",\n"; }
  std::string Tail(const FileTail& tail) const override {
    return "\n]," + Dump(JsonOf(tail)).substr(1) + '\n';
  }
};

template <class Writer>
std::unique_ptr<InfoWriter> Make(const FileHead& head) {
  return std::make_unique<Writer>(head);
}

struct Format {
  const char* name;
  std::unique_ptr<InfoWriter> (*make)(const FileHead& head);
};
constexpr Format kFormats[] = {{"table", MakeInfoTable}, {"tsv", Make<InfoTsv>}, {"json", Make<InfoJson>}};

}  // namespace

const std::vector<std::string>& InfoFormats() {
  static const std::vector<std::string> names = [] {
    std::vector<std::string> all;
    for (const Format& format : kFormats) all.emplace_back(format.name);
    return all;
  }();
  return names;
}

std::unique_ptr<InfoWriter> MakeInfoWriter(const std::string& format, const FileHead& head) {
  for (const Format& known : kFormats)
    if (format == known.name) return known.make(head);
  throw std::logic_error("unknown format " + format);
}

}  // namespace TslTool
