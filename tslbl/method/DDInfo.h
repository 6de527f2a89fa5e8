#pragma once
// What the instrument does by itself when a spectrum of a tune run meets a condition, and until
// when: collect a fraction, stay on a peak, go over to another tune.
//
// The library stores and checks it; conditions are evaluated by the control of the instrument.
// A document of a run that does nothing holds its type alone, so that the rest of it comes back
// with its defaults; bytes hold all.

#include <tslbl/Export.h>
#include <tslbl/curve/CurveEval.h>
#include <tslbl/records/Record.h>
#include <cstdint>
#include <string>
#include <vector>

namespace TslBL {

struct TSLBL_API DDInfo : Record<DDInfo> {
  enum Types : std::uint32_t { None = 0, FractionCollect = 1, PeakPark = 2, TuneChange = 3 };
  enum Triggers : std::uint32_t {
    StartTriggerNotDetected = 0,
    TriggerTimeout = 1,
    AbsAmplAboveThres = 2,
    SNAboveThres = 3,
    TICAboveThres = 4,
  };

  Types Type = None;
  Triggers StartTrigger = AbsAmplAboveThres;
  double StartTriggerValue = 0.0;     // a threshold
  std::vector<CurveEval> CurveEvals;  // run over a spectrum before it is held against the trigger
  Triggers EndTrigger = StartTriggerNotDetected;
  double EndTriggerValue = 0.0;  // a threshold or a time
  std::uint32_t ExclDuration = 0;

  // The text of a number that is no type is that of None. Reading ignores case; another text is None.
  static std::wstring CvtType(Types type);
  static Types CvtType(const std::wstring& text);
  // As above, but what is no trigger counts as the last, TICAboveThres, in both directions.
  static std::wstring CvtTrigger(Triggers trigger);
  static Triggers CvtTrigger(const std::wstring& text);
};
TSLBL_API void Describe(Archive& ar, DDInfo& info);

}  // namespace TslBL
