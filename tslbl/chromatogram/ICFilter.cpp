#include <tslbl/chromatogram/ICFilter.h>

#include <tslbl/closed/common/Text.h>
#include <tslbl/records/Archive.h>
#include <locale>
#include <sstream>

namespace TslBL {
namespace {

std::wstring ToTexts(const std::vector<std::uint32_t>& ids) {
  std::wstring text;
  for (const std::uint32_t id : ids) text += (text.empty() ? L"" : L" ") + ToText(id);
  return text;
}

// As far as there are ids.
std::vector<std::uint32_t> FromTexts(const std::wstring& text) {
  std::wistringstream stream(text);
  stream.imbue(std::locale::classic());
  std::vector<std::uint32_t> ids;
  for (std::uint32_t id = 0; stream >> id;) ids.push_back(id);
  return ids;
}

void DescribeIds(Archive& ar, std::vector<std::uint32_t>& ids) {
  if (!ar.Xml() && !ar.Dumping()) return ar.List(L"TuneIds", ids, DescribeId);
  std::wstring text = ToTexts(ids);
  ar(L"TuneIds", text);
  if (ar.Reading()) ids = FromTexts(text);
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
