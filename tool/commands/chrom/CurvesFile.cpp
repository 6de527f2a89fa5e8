#include <tool/commands/chrom/CurvesFile.h>

#include <fmt/format.h>
#include <pugixml.hpp>

#include <tool/commands/chrom/CurveChoice.h>
#include <tool/frame/InputError.h>
#include <tool/frame/Interrupt.h>
#include <tool/frame/Printable.h>
#include <tool/frame/UsageError.h>
#include <tool/io/DocumentCheck.h>
#include <tool/io/XmlScanner.h>
#include <tslbl/closed/common/Text.h>
#include <tslbl/closed/common/XMLBuilder.h>
#include <tslbl/closed/common/XMLParser.h>
#include <tslbl/records/MZRange.h>
#include <tslbl/results/ResultCurve.h>
#include <map>
#include <optional>
#include <string_view>

namespace TslTool {
namespace {

constexpr const char* kRanges = "MZRanges";
constexpr const char* kCurves = "CurveDefs";
constexpr std::size_t kMostRanges = 10;
// A curve names an earlier one by a digit, so that there are few.
constexpr std::size_t kMostCurves = 1000;

using Definitions = std::map<std::uint32_t, std::wstring>;

struct Sections {
  std::optional<std::string> ranges;
  std::optional<std::string> curves;
  bool areMeans = false;
};

void Take(XmlScanner& scanner, std::optional<std::string>& section) {
  const std::string name = scanner.Name();
  if (section) throw InputError(scanner.File(), scanner.Place(), "one element too many: \"" + name + "\"");
  section = scanner.ReadElement();
}

// The sections stand right below the root.
Sections FindSections(const std::string& file) {
  XmlScanner scanner{ByteSource(file)};
  Sections found;
  for (auto event = scanner.Next(); event != XmlScanner::Event::Finished; event = scanner.Next()) {
    ThrowIfInterrupted();
    if (event != XmlScanner::Event::Start) continue;
    if (scanner.Depth() == 1 && scanner.Name() != "Results")
      throw InputError(file, scanner.Place(),
                       fmt::format("is no document of results: it begins with \"{}\", not with \"Results\"",
                                   scanner.Name()));
    if (scanner.Depth() != 2) continue;
    if (scanner.Name() == kRanges)
      Take(scanner, found.ranges);
    else if (scanner.Name() == kCurves)
      Take(scanner, found.curves);
    else if (scanner.Name() == "Chromatograms")
      found.areMeans = scanner.Attribute("Values") == "mean";
  }
  for (const auto& [section, name] : {std::pair{&found.ranges, kRanges}, {&found.curves, kCurves}})
    if (!*section) throw InputError(file, "", fmt::format("the document has no element \"{}\"", name));
  return found;
}

// Opens the section and returns how many elements it has.
int Open(const std::string& file, const std::string& section, const char* name, std::size_t most,
         TslCommon::XMLParser& parser) {
  if (!parser.LoadText(TslCommon::FromUtf8(section)))
    throw InputError(file, name, TslCommon::ToUtf8(parser.QLoadError()));
  int count = 0;
  parser.StartList(TslCommon::FromUtf8(name).c_str(), count);
  if (static_cast<std::size_t>(count) > most)
    throw InputError(file, name, fmt::format("it has {} elements; {} are the most", count, most));
  return count;
}

// Ids are compared to the last digit, other numbers as far as the digits of a document go.
std::string Refuse(const DocumentValue& value) {
  if (!value.place.ends_with("@Id") || value.written == value.taken) return RefuseOther(value);
  return fmt::format("\"{}\" is not a value for it", Printable(value.written));
}

// What was not taken as it stands is refused.
void RequireTaken(const std::string& file, const std::string& section, const TslCommon::XMLBuilder& read) {
  pugi::xml_document written;
  pugi::xml_document taken;
  written.load_string(section.c_str());
  taken.load_string(TslCommon::ToUtf8(read.QXML()).c_str());
  CheckDocument(file, written.document_element(), taken.document_element(), Refuse);
}

// The library would take the limits of an instrument for those that are missing.
void RequireEnds(const std::string& file, const std::string& section) {
  pugi::xml_document written;
  written.load_string(section.c_str());
  int number = 0;
  for (const pugi::xml_node range : written.document_element().children("MZRange")) {
    ++number;
    if (std::string_view(range.attribute("Type").value()) == "Full") continue;
    for (const char* end : {"Start", "End"})
      if (!range.attribute(end))
        throw InputError(file, fmt::format("{}/MZRange[{}]", kRanges, number),
                         fmt::format("it has no \"{}\"", end));
  }
}

std::vector<TslBL::MZRange> ReadRanges(const std::string& file, const std::string& section) {
  TslCommon::XMLParser parser;
  std::vector<TslBL::MZRange> ranges;
  for (int count = Open(file, section, kRanges, kMostRanges, parser); count > 0; --count)
    TslBL::LoadMZRange(parser, ranges);
  TslCommon::XMLBuilder read;
  read.StartList(L"MZRanges");
  for (const TslBL::MZRange& range : ranges) range.Serialize(read);
  read.EndList();
  RequireTaken(file, section, read);
  RequireEnds(file, section);
  return ranges;
}

std::string PlaceOf(std::uint32_t id) { return fmt::format("Curve with Id {}", id); }

Definitions ReadDefinitions(const std::string& file, const std::string& section) {
  TslCommon::XMLParser parser;
  TslCommon::XMLBuilder read;
  read.StartList(L"CurveDefs");
  Definitions all;
  for (int count = Open(file, section, kCurves, kMostCurves, parser); count > 0; --count) {
    Definitions one;
    TslBL::LoadCurveDefs(parser, one);
    for (const auto& [id, definition] : one) {
      if (!all.emplace(id, definition).second)
        throw InputError(file, PlaceOf(id), "there are two of this Id");
      read.StartNode(L"Curve");
      read.WAttribute(L"Id", TslCommon::ToText(id));
      read.WNode(L"CurveDef", definition);
      read.EndNode();
    }
  }
  read.EndList();
  RequireTaken(file, section, read);
  return all;
}

// What the user would have been told of an option.
std::string ReasonOf(const UsageError& error) {
  const std::string text = error.what();
  const std::size_t option = text.find(": ");
  return option == std::string::npos ? text : text.substr(option + 2);
}

std::string TextOf(const TslBL::MZRange& range) { return fmt::format("{}-{}", range.Start, range.End); }

}  // namespace

CurveDefinitions LoadCurvesFile(const std::string& file) {
  const Sections sections = FindSections(file);
  CurveDefinitions read;
  read.areMeans = sections.areMeans;
  for (const TslBL::MZRange& range : ReadRanges(file, *sections.ranges)) {
    read.ranges.push_back(TextOf(range));
    try {
      CurveChoice(read.ranges, {});
    } catch (const UsageError& error) {
      throw InputError(file, fmt::format("{}/MZRange[{}]", kRanges, read.ranges.size()), ReasonOf(error));
    }
  }
  for (const auto& [id, definition] : ReadDefinitions(file, *sections.curves)) {
    if (definition.empty())
      throw InputError(file, PlaceOf(id), "it has no definition in an element \"CurveDef\"");
    read.definitions.push_back(TslCommon::ToUtf8(definition));
    try {
      CurveChoice(read.ranges, read.definitions);
    } catch (const UsageError& error) {
      throw InputError(file, PlaceOf(id), ReasonOf(error));
    }
  }
  if (read.definitions.empty()) throw InputError(file, kCurves, "it has no \"Curve\"");
  return read;
}

}  // namespace TslTool
