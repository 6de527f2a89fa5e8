#include <tslbl/records/IdText.h>

#include <tslbl/closed/common/Text.h>
#include <tslbl/records/Common.h>
#include <locale>
#include <sstream>

namespace TslBL {

std::wstring IdsToText(const std::vector<std::uint32_t>& ids) {
  std::wstring text;
  for (const std::uint32_t id : ids) text.append(text.empty() ? L"" : L" ").append(ToText(id));
  return text;
}

std::vector<std::uint32_t> IdsFromText(const std::wstring& text) {
  std::wistringstream stream(text);
  stream.imbue(std::locale::classic());
  std::vector<std::uint32_t> ids;
  for (std::uint32_t id = 0; stream >> id;) ids.push_back(id);
  return ids;
}

}  // namespace TslBL
