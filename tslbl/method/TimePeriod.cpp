#include <tslbl/method/TimePeriod.h>

#include <tslbl/records/Archive.h>
#include <tslbl/records/IdText.h>

namespace TslBL {
namespace {

void DescribeItem(Archive& ar, std::vector<std::uint32_t>& ids) {
  if (!ar.Xml()) return ar.List(L"TuneRunIds", ids, DescribeId);
  if (const auto element = ar.Element(L"TuneRunIds")) {
    std::wstring text = IdsToText(ids);
    ar.Text(L"TuneRunIds", text);
    if (ar.Reading()) ids = IdsFromText(text);
  }
}

}  // namespace

void Describe(Archive& ar, TimePeriod& period) {
  ar.Version(2, "Unknown TimePeriod version.");
  if (ar.Dumping()) return;
  if (const auto element = ar.Element(L"TimePeriod")) {
    ar.Attribute(L"Save", period.Save);
    ar.Attribute(L"Loops", period.Loops);
    ar.Attribute(L"Timeout", period.Timeout);
    if (ar.Since(2)) ar.Attribute(L"SettleDelay", period.SettleDelay);
    if (ar.Reading()) period.Sequence.clear();
    ar.List(L"Sequence", period.Sequence, DescribeItem);
  }
}

}  // namespace TslBL
