#include <tslbl/method/TuneRun.h>

#include <tslbl/records/Archive.h>

namespace TslBL {
namespace {

void DescribeRecords(Archive& ar, TuneRun& run) {
  if (!ar.Binary()) return ar.Attribute(L"Records", run.Records);
  std::uint32_t stored = 1;
  ar(L"Records", stored);
  if (ar.Reading()) run.Records = 1;
}

}  // namespace

void Describe(Archive& ar, TuneRun& run) {
  ar.Version(2, "Unknown TuneRun version.");
  if (ar.Dumping()) return;
  if (const auto element = ar.Element(L"TuneRun")) {
    ar.Attribute(L"TuneId", run.TuneId);
    DescribeRecords(ar, run);
    if (ar.Since(2)) ar.Attribute(L"SettleDelay", run.SettleDelay);
    ar.Nested(run.Info);
  }
}

}  // namespace TslBL
