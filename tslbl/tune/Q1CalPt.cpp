#include <tslbl/tune/Q1CalPt.h>

#include <tslbl/closed/common/Text.h>
#include <tslbl/records/Archive.h>

namespace TslBL {
namespace {

constexpr double kTolerance = 1e-6;

struct Entry {
  TuneField::Id field = TuneField::SourceType;
  double value = 0.0;
};

void DescribeElement(Archive& ar, Entry& entry) {
  const auto element = ar.Element(L"IOPtFld");
  if (!element) return;
  std::wstring tag = ar.Reading() ? L"" : TuneField::FieldToPointTag(entry.field);
  ar.Attribute(L"Name", tag);
  if (ar.Reading()) entry.field = TuneField::PointTagToField(tag);
  ar.Text(L"IOPtFld", entry.value);
}

void DescribeEntry(Archive& ar, Entry& entry) {
  if (ar.Xml()) return DescribeElement(ar, entry);
  if (ar.Dumping()) {
    return ar.Line(TuneField::FieldToPointTag(entry.field).c_str(), ToText(entry.value));
  }
  ar.Enum(L"Name", entry.field, Codes{});
  ar(L"IOPtFld", entry.value);
}

// A reader starts without entries, even where the document has no list.
void DescribeFields(Archive& ar, std::map<TuneField::Id, double>& fields) {
  std::vector<Entry> entries;
  if (!ar.Reading()) {
    for (const auto& [field, value] : fields) entries.push_back({field, value});
  }
  ar.List(L"IOPtFlds", entries, DescribeEntry);
  if (!ar.Reading()) return;
  fields.clear();
  for (const Entry& entry : entries) fields[entry.field] = entry.value;
}

}  // namespace

void Q1CalPt::KeepOnlyCapExit() {
  std::erase_if(Fields, [](const auto& entry) { return entry.first != TuneField::CapExit; });
}

void Q1CalPt::ReplaceAnyCapExit(double value) {
  const auto found = Fields.find(TuneField::CapExit);
  if (found != Fields.end()) found->second = value;
}

void Describe(Archive& ar, Q1CalPt& point) {
  ar.Version(1, "Unknown Q1CalPt version.");
  if (const auto element = ar.Element(L"Q1Cal")) {
    ar.Attribute(L"Name", point.Name);
    ar.Near({Archive::Place::Attribute, L"MZ"}, point.MZ, kTolerance);
    DescribeFields(ar, point.Fields);
  }
}

}  // namespace TslBL
