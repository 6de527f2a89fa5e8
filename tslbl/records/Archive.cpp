#include <tslbl/records/Archive.h>

#include <tslbl/closed/common/Text.h>
#include <algorithm>
#include <stdexcept>

namespace TslBL {

std::wstring Codes::ToText(std::uint32_t value) const {
  if (toText != nullptr) return toText(value);
  const auto row = std::ranges::find(rows, value, &CodeText::value);
  return row != rows.end() ? row->text : L"Unknown";
}

void Codes::FromText(const std::wstring& text, std::uint32_t& value) const {
  if (fromText != nullptr) {
    value = fromText(text);
    return;
  }
  const auto row = std::ranges::find_if(rows, [&](const CodeText& code) {
    return exact ? text == code.text : EqualsIgnoreCase(text, code.text);
  });
  if (row != rows.end()) {
    value = row->value;
  } else if (!keepOnMiss) {
    value = onMiss;
  }
}

void Archive::Version(std::uint32_t current, const char* unknown, std::uint32_t oldest) {
  version_ = current;
  StoreVersion(version_);
  if (version_ < oldest || version_ > current) throw std::runtime_error(unknown);
}

void Archive::Near(const Slot& slot, double& value, double) { Value(slot, value); }
void Archive::FlagValue(const Slot& slot, bool& value, const wchar_t*, const wchar_t*) { Value(slot, value); }
void Archive::EnumValue(const Slot& slot, std::uint32_t& value, const Codes&) { Value(slot, value); }

void Archive::NestedRecord(void* record, const RecordOps& ops) {
  const std::uint32_t outer = version_;
  ops.run(*this, record);
  version_ = outer;
}

}  // namespace TslBL
