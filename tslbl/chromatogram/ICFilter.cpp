#include <tslbl/chromatogram/ICFilter.h>

#include <tslbl/records/Archive.h>
#include <tslbl/records/IdText.h>

namespace TslBL {
namespace {

void DescribeIds(Archive& ar, std::vector<std::uint32_t>& ids) {
  if (!ar.Xml() && !ar.Dumping()) return ar.List(L"TuneIds", ids, DescribeId);
  std::wstring text = IdsToText(ids);
  ar(L"TuneIds", text);
  if (ar.Reading()) ids = IdsFromText(text);
}

}  // namespace

void Describe(Archive& ar, ICFilter& filter) {
  ar.Version(1, "Unknown ICFilter version.");
  if (const auto element = ar.Element(L"ICFilter")) {
    ar.Nested(filter.Range);
    DescribeIds(ar, filter.TuneIds);
  }
}

}  // namespace TslBL
