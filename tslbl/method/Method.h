#pragma once
// The acquisition program of the instrument: which tunes are used, in what order they run, for how
// long, what may trigger a data-dependent action, and how the diverter valve moves.
//
// Time periods run one after the other. Each repeats its sequence; what stands there are ids of
// tune runs, and these name tunes by id, so that tunes and runs are held once. Ids begin at 1.
//
// A plain record: it holds data and never validates. MethodRules is the way to edit one. A document
// must hold the element "Method"; reading one that does not throws XMLResultException. Bytes of
// version 3 know no valve: one read from them has a valve that goes to the source when the
// last time period ends.

#include <tslbl/Export.h>
#include <tslbl/method/DDFilter.h>
#include <tslbl/method/TimePeriod.h>
#include <tslbl/method/TuneRun.h>
#include <tslbl/method/ValveMethod.h>
#include <tslbl/records/Record.h>
#include <tslbl/tune/Tune.h>
#include <cstdint>
#include <map>
#include <string>
#include <utility>
#include <vector>

namespace TslBL {

struct TSLBL_API Method : Record<Method> {
  static constexpr std::uint32_t INVALID_ID = 0;  // of no tune and no tune run

  std::wstring Desc;
  std::map<std::uint32_t, Tune> Tunes;
  std::map<std::uint32_t, TuneRun> TuneRuns;
  std::vector<TimePeriod> TimePeriods;
  std::vector<DDFilter> Exclusions;  // never trigger anything
  std::vector<DDFilter> Inclusions;
  DiverterValveMethod ValveMethod;

  DiverterValveMethod QValveMethod() const { return ValveMethod; }
  void WValveMethod(const DiverterValveMethod& program) { ValveMethod = program; }
};
TSLBL_API void Describe(Archive& ar, Method& method);

// One element "TunePair", its id as the attribute "Id", with the tune in it. Reading puts the tune
// under its id in the map, 0 without one, and changes nothing where no such element follows; it throws
// XMLResultException, the map as it was, for one without a tune.
TSLBL_API void AddTune(XMLBuilder& builder, const std::pair<const std::uint32_t, Tune>& tune);
TSLBL_API void LoadTune(XMLParser& parser, std::map<std::uint32_t, Tune>& tunes);

}  // namespace TslBL
