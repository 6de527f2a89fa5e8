#include <tool/commands/method/MethodFile.h>

#include <fmt/format.h>

#include <tool/commands/tune/TuneFile.h>
#include <tool/frame/Printable.h>
#include <algorithm>
#include <charconv>
#include <cstdint>
#include <set>
#include <string_view>

namespace TslTool {
namespace {

using TslBL::Method;

// A tune takes some ten kilobytes of a document, and the longest methods hold hundreds of them.
constexpr RecordKind kKind = {.name = "method", .largest = 1 << 26};
constexpr const char* kEntries = "Method/ValveMethod";

std::string Quoted(const char* text) { return "\"" + Printable(text) + "\""; }

bool IsWholeNumber(std::string_view text) {
  std::int32_t number = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
  return error == std::errc() && end == text.data() + text.size();
}

// What the library's reader says of a wrong entry names neither its number nor its place.
void CheckValve(const std::string& file, const pugi::xml_node& valve) {
  std::set<std::string> starts;
  int number = 0;
  for (const pugi::xml_node entry : valve.children()) {
    if (entry.type() != pugi::node_element) continue;
    const std::string place = fmt::format("{}/{}[{}]", kEntries, Printable(entry.name()), ++number);
    if (std::string_view(entry.name()) != "Entry") throw InputError(file, place, "is no Entry");
    for (const char* name : {"Start", "State"})
      if (!entry.child(name)) throw InputError(file, place, fmt::format("has no {}", name));
    const char* start = entry.child_value("Start");
    if (!IsWholeNumber(start))
      throw InputError(file, place + "/Start", Quoted(start) + " is no whole number of milliseconds");
    if (!starts.insert(start).second)
      throw InputError(file, place + "/Start", Quoted(start) + " is the start of an earlier entry as well");
    const char* state = entry.child_value("State");
    if (std::string_view(state) != "Source" && std::string_view(state) != "Waste")
      throw InputError(file, place + "/State", Quoted(state) + " is neither Source nor Waste");
  }
}

// Of two records under one id the last would stay.
void CheckIds(const std::string& file, const pugi::xml_node& list, const char* pair) {
  std::set<std::string> ids;
  for (const pugi::xml_node entry : list.children(pair))
    if (const std::string id = entry.attribute("Id").value(); !ids.insert(id).second)
      throw InputError(file, fmt::format("Method/{}", list.name()),
                       fmt::format("two have the Id {}", Printable(id)));
}

// One that does nothing keeps its type alone.
void CheckDDInfos(const std::string& file, const pugi::xml_node& runs) {
  for (const pugi::xml_node pair : runs.children("TuneRunPair")) {
    const pugi::xml_node info = pair.child("TuneRun").child("DDInfo");
    const std::string_view type = info.attribute("Type").value();
    if (info.first_child() && (type.empty() || type == "None"))
      throw InputError(file, fmt::format("tune run {}", Printable(pair.attribute("Id").value())),
                       "a DDInfo of the type None keeps nothing, and this one holds triggers");
  }
}

// Ids are read as far as there are ids, whatever stands between them.
std::string IdsOnly(std::string text) {
  std::ranges::replace_if(
      text, [](char c) { return c == '\t' || c == '\r' || c == '\n'; }, ' ');
  const auto end = std::unique(text.begin(), text.end(), [](char a, char b) { return a == ' ' && b == ' '; });
  text.erase(end, text.end());
  return text;
}

std::string Refuse(const DocumentValue& value) {
  const bool isIds = value.place.find("/TuneRunIds") != std::string::npos;
  return isIds ? RefuseOther({value.place, IdsOnly(value.written), value.taken}) : RefuseInTune(value);
}

// In the order in which they are read back.
void SortEntries(pugi::xml_node valve) {
  std::vector<pugi::xml_node> entries(valve.children("Entry").begin(), valve.children("Entry").end());
  std::ranges::stable_sort(entries, {},
                           [](const pugi::xml_node& entry) { return entry.child("Start").text().as_int(); });
  for (const pugi::xml_node& entry : entries) valve.append_move(entry);
}

pugi::xml_node TuneOf(const pugi::xml_node& method, const char* id) {
  return method.child("Tunes").find_child_by_attribute("TunePair", "Id", id).child("Tune");
}

// The tunes of the document, each with its twin: what they lack, and what else may stand in them.
std::vector<std::string> CompareTunes(const pugi::xml_node& written, const pugi::xml_node& taken,
                                      const Method& method) {
  std::vector<std::string> missing;
  for (const auto& [id, tune] : method.Tunes) {
    const std::string text = std::to_string(id);
    const pugi::xml_node twin = TuneOf(taken, text.c_str());
    for (const std::string& place : MissingInTune(TuneOf(written, text.c_str()), twin))
      missing.push_back(fmt::format("tune {}: {}", id, place));
    AddOtherProbe(twin, tune);
  }
  return missing;
}

MethodFile FromDocument(const std::string& file, const std::string& bytes) {
  const WrittenDocument written(file, bytes);
  CheckValve(file, written.Root().child("ValveMethod"));
  CheckIds(file, written.Root().child("Tunes"), "TunePair");
  CheckIds(file, written.Root().child("TuneRuns"), "TuneRunPair");
  CheckDDInfos(file, written.Root().child("TuneRuns"));
  const auto method = RecordOfDocument<Method>(file, written);
  pugi::xml_document taken;
  taken.load_string(DocumentOf(method).c_str());
  std::vector<std::string> missing = CompareTunes(written.Root(), taken.document_element(), method);
  SortEntries(written.Root().child("ValveMethod"));
  CheckDocument(file, written.Root(), taken.document_element(), Refuse);
  return {method, RecordForm::Xml, std::move(missing)};
}

}  // namespace

MethodFile LoadMethod(const std::string& file) {
  const std::string bytes = ReadRecordFile(file, kKind);
  if (IsDocument(bytes)) return FromDocument(file, bytes);
  return {RecordOfBytes<Method>(file, bytes, kKind), RecordForm::Binary, {}};
}

}  // namespace TslTool
