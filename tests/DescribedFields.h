#pragma once
// The fields that a record's Describe names, each with its value as text: what binary
// streams and comparisons know of the record.
//
// A field is called by its way from the outside, as "Smooth/Steps/Step/Size". A list is a
// field, and so is each field of its items, with the values of all items in a row. A record
// inside is one field with all that it holds; as an item of a list it belongs to the list.
//
// As an archive it is not part of the library's interface.

#include <tslbl/closed/common/Text.h>
#include <tslbl/records/Archive.h>
#include <tslbl/records/RecordForms.h>
#include <algorithm>
#include <map>
#include <set>
#include <sstream>
#include <string>
#include <vector>

namespace tests {

class DescribedFields final : public TslBL::Archive {
 public:
  template <TslBL::Described R>
  static std::map<std::string, std::string> Of(R record) {
    DescribedFields fields;
    Describe(fields, record);
    return fields.values_;
  }

 private:
  void StoreVersion(std::uint32_t&) override {}
  void Value(const Slot& slot, bool& value) override { Add(slot.name, value); }
  void Value(const Slot& slot, std::int32_t& value) override { Add(slot.name, value); }
  void Value(const Slot& slot, std::uint32_t& value) override { Add(slot.name, value); }
  void Value(const Slot& slot, std::int64_t& value) override { Add(slot.name, value); }
  void Value(const Slot& slot, double& value) override { Add(slot.name, value); }
  void Value(const Slot& slot, std::wstring& value) override { Add(slot.name, TslCommon::ToUtf8(value)); }
  void Value(const Slot& slot, std::vector<double>& value) override {
    std::string all;
    for (const double v : value) all += TextOf(v);
    Add(slot.name, all);
  }
  bool OpenElement(const wchar_t* name) override { return Open(name), true; }
  void CloseElement() override { open_.pop_back(); }
  bool OpenList(const wchar_t* name, std::uint32_t& count) override {
    Add(name, count);
    ++lists_;
    return Open(name), true;
  }
  void CloseList() override {
    open_.pop_back();
    --lists_;
  }
  void NestedRecord(void* record, const RecordOps& ops) override {
    DescribedFields inner;
    ops.run(inner, record);
    std::string all;
    for (const auto& [name, value] : inner.values_) all += name + "=" + value;
    AddRecord(all);
  }
  void SelfDescribed(TslCommon::ITslSerial& record, TslCommon::ITslXML*) override {
    AddRecord(TslBL::ToBytes(record));
  }

  template <class T>
  static std::string TextOf(const T& value) {
    std::ostringstream text;
    text << std::hexfloat << value << ';';
    return text.str();
  }
  void Open(const wchar_t* name) { open_.push_back(TslCommon::ToUtf8(name)); }
  std::string Path() const {
    std::string path;
    for (const std::string& element : open_) path += (path.empty() ? "" : "/") + element;
    return path;
  }
  void AddRecord(const std::string& text) {
    if (lists_ == 0) return Add(L"record", text);
    values_[Path()] += text;
  }
  template <class T>
  void Add(const wchar_t* name, const T& value) {
    Open(name);
    const std::string path = Path();
    open_.pop_back();
    // Two fields of one name are two; those of the items of a list are one.
    std::string own = path;
    for (int n = 2; lists_ == 0 && values_.contains(own); ++n) own = path + " " + std::to_string(n);
    values_[own] += TextOf(value);
  }

  std::map<std::string, std::string> values_;
  std::vector<std::string> open_;
  int lists_ = 0;  // open ones
};

using FieldTexts = std::map<std::string, std::string>;

// The fields of both records that differ. What only one of them has comes of that: of its
// kind, or of the length of a list, with which all fields of its items differ, too.
inline std::set<std::string> DifferingFields(const FieldTexts& a, const FieldTexts& b) {
  std::set<std::string> names;
  for (const auto& [name, text] : a)
    if (const auto twin = b.find(name); twin != b.end() && twin->second != text) names.insert(name);
  std::erase_if(names, [&](const std::string& name) {
    return std::ranges::any_of(names, [&](const std::string& list) { return name.starts_with(list + "/"); });
  });
  return names;
}

}  // namespace tests
