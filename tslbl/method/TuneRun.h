#pragma once
// A tune at work in a method: which one, for how many spectra, and what may happen meanwhile.
//
// Bytes do not keep the number of records: their place holds a 1, as all readers of methods know
// one record a run only, and a run read from them collects one. A document keeps it.

#include <tslbl/Export.h>
#include <tslbl/method/DDInfo.h>
#include <tslbl/records/Record.h>
#include <cstdint>

namespace TslBL {

struct TSLBL_API TuneRun : Record<TuneRun> {
  TuneRun() = default;  // of no tune
  TuneRun(std::uint32_t tuneId, std::uint32_t records) : TuneRun(tuneId, records, DDInfo()) {}
  TuneRun(std::uint32_t tuneId, std::uint32_t records, const DDInfo& info)
      : TuneId(tuneId), Records(records), Info(info) {}

  std::uint32_t TuneId = 0;       // a key of Method::Tunes
  std::uint32_t Records = 0;      // spectra to collect
  std::uint32_t SettleDelay = 0;  // microseconds before the run, while the polarity changes
  DDInfo Info;
};
TSLBL_API void Describe(Archive& ar, TuneRun& run);

}  // namespace TslBL
