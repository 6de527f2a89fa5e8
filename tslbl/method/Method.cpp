#include <tslbl/method/Method.h>

#include <tslbl/closed/common/Text.h>
#include <tslbl/closed/common/XMLBuilder.h>
#include <tslbl/closed/common/XMLParser.h>
#include <tslbl/records/Archive.h>

namespace TslBL {
namespace {

// A document without a list means a method that has nothing of the kind.
void ClearLists(Method& method) {
  method.Tunes.clear();
  method.TuneRuns.clear();
  method.TimePeriods.clear();
  method.Exclusions.clear();
  method.Inclusions.clear();
}

// Counted in 32 bits, as a time period without end has always been.
timebase::MSEC EndOf(const std::vector<TimePeriod>& periods) {
  std::uint32_t end = 0;
  for (const TimePeriod& period : periods) end += period.Timeout;
  return timebase::MSEC(static_cast<std::int32_t>(end));
}

}  // namespace

void Describe(Archive& ar, Method& method) {
  ar.Version(4, "Unknown Method version.", 3);
  if (ar.Dumping()) return;
  if (const auto element = ar.RequiredElement(L"Method")) {
    if (ar.Reading()) ClearLists(method);
    ar(L"Desc", method.Desc);
    ar.Map(L"Tunes", L"TunePair", method.Tunes);
    ar.Map(L"TuneRuns", L"TuneRunPair", method.TuneRuns);
    ar.List(L"TimePeriods", method.TimePeriods);
    ar.List(L"Exclusions", method.Exclusions);
    ar.List(L"Inclusions", method.Inclusions);
    if (ar.Since(4)) return ar.Nested(method.ValveMethod);
    method.ValveMethod.AddState(EndOf(method.TimePeriods), DiverterValve(DiverterValve::kToSource));
  }
}

void AddTune(XMLBuilder& builder, const std::pair<const std::uint32_t, Tune>& tune) {
  builder.StartNode(L"TunePair");
  builder.WAttribute(L"Id", ToText(tune.first));
  tune.second.Serialize(builder);
  builder.EndNode();
}

void LoadTune(XMLParser& parser, std::map<std::uint32_t, Tune>& tunes) {
  if (!parser.StartNode(L"TunePair")) return;
  std::uint32_t id = 0;
  std::wstring text;
  if (parser.QAttribute(L"Id", text)) FromText(text, id);
  Tune tune;
  tune.Serialize(parser);
  parser.EndNode();
  tunes.insert_or_assign(id, std::move(tune));
}

}  // namespace TslBL
