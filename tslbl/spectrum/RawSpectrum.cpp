#include <tslbl/spectrum/RawSpectrum.h>

#include <tslbl/records/Archive.h>

namespace TslBL {

void Describe(Archive& ar, RawSpectrumInfo& info) {
  ar.Version(2, "Unknown RawSpectrumInfo version.");
  if (ar.Since(2)) ar(L"Id", info.Id);
  ar(L"TimeStamp", info.TimeStamp);
  ar(L"TuneId", info.TuneId);
  ar(L"TIC", info.TIC);
}

void Describe(Archive& ar, RawSpectrum& raw) {
  ar.Version(1, "Unknown RawSpectrum version.");
  ar.Nested(raw.info);
  ar(L"counts", raw.counts);
}

}  // namespace TslBL
