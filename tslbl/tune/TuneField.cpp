#include <tslbl/tune/TuneField.h>

#include <tslbl/closed/common/StringTable.h>
#include <tslbl/closed/common/Text.h>
#include <tslbl/records/VexException.h>
#include <tslbl/tune/FieldTable.h>
#include <algorithm>

namespace TslBL {
namespace {

constexpr const wchar_t* kUnknown = L"Unknown";

// The coarse resolution once followed m/z, and old points carry it.
bool StandsInPoints(const FieldRow& row) {
  return row.IsSteppable() || row.id == TuneField::Q1CoarseResolution;
}

}  // namespace

bool TuneField::IsField(Id field) { return FindField(field) != nullptr; }

std::wstring TuneField::FieldToString(Id field) {
  if (!IsField(field)) {
    throw VexException(L"Field to string map for field id " + ToText(std::uint32_t{field}) +
                       L" does not exist.");
  }
  return TslLoadString(ModuleHandle(), kFieldNameBase + field);
}

std::wstring TuneField::FieldToXmlTag(Id field) {
  const FieldRow* row = FindField(field);
  return row != nullptr && row->tag != nullptr ? row->tag : kUnknown;
}

bool TuneField::IsFieldRampable(Id field) {
  const FieldRow* row = FindField(field);
  return row != nullptr && row->IsRampable();
}

bool TuneField::IsFieldSteppable(Id field) {
  const FieldRow* row = FindField(field);
  return row != nullptr && row->IsSteppable();
}

std::wstring TuneField::FieldToPointTag(Id field) {
  const FieldRow* row = FindField(field);
  return row != nullptr && StandsInPoints(*row) ? row->tag : kUnknown;
}

TuneField::Id TuneField::PointTagToField(const std::wstring& tag) {
  const auto found = std::ranges::find_if(
      kFieldTable, [&](const FieldRow& row) { return StandsInPoints(row) && tag == row.tag; });
  return found != kFieldTable.end() ? found->id : SourceType;
}

}  // namespace TslBL
