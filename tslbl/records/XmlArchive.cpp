// Records to documents and back.

#include <tslbl/closed/common/Text.h>
#include <tslbl/closed/common/XMLBuilder.h>
#include <tslbl/closed/common/XMLParser.h>
#include <tslbl/records/Archive.h>
#include <algorithm>
#include <stdexcept>

namespace TslBL {
namespace {

constexpr std::wstring_view kBlanks = L" \t\r\n";

ITslXML& WithDocumentForm(ITslXML* record) {
  if (record == nullptr) throw std::logic_error("This record has no document form.");
  return *record;
}

class XmlOut final : public Archive {
 public:
  explicit XmlOut(XMLBuilder& builder) : builder_(builder) {}
  bool Xml() const override { return true; }

 private:
  void StoreVersion(std::uint32_t&) override {}
  void Value(const Slot& slot, bool& value) override { Put(slot, ToWStr(value)); }
  void Value(const Slot& slot, std::int32_t& value) override { Put(slot, ToText(value)); }
  void Value(const Slot& slot, std::uint32_t& value) override { Put(slot, ToText(value)); }
  void Value(const Slot& slot, std::int64_t& value) override { Put(slot, ToWStr(value)); }
  void Value(const Slot& slot, double& value) override { Put(slot, ToText(value)); }
  void Value(const Slot& slot, std::wstring& value) override { Put(slot, value); }
  void Value(const Slot& slot, std::vector<double>& value) override {
    std::wstring text;
    for (const double v : value) text += (text.empty() ? L"" : L" ") + ToText(v);
    Put(slot, text);
  }
  void FlagValue(const Slot& slot, bool& value, const wchar_t* whenTrue, const wchar_t* whenFalse) override {
    Put(slot, value ? whenTrue : whenFalse);
  }
  void EnumValue(const Slot& slot, std::uint32_t& value, const Codes& codes) override {
    Put(slot, codes.ToText(value));
  }
  bool OpenElement(const wchar_t* name) override { return builder_.StartNode(name), true; }
  void CloseElement() override { builder_.EndNode(); }
  bool OpenList(const wchar_t* name, std::uint32_t&) override { return builder_.StartList(name), true; }
  void CloseList() override { builder_.EndList(); }
  void SelfDescribed(ITslSerial&, ITslXML* record) override { WithDocumentForm(record).Serialize(builder_); }

  void Put(const Slot& slot, const std::wstring& text) {
    switch (slot.place) {
      case Place::Child:
        return builder_.WNode(slot.name, text);
      case Place::Attribute:
        return builder_.WAttribute(slot.name, text);
      case Place::Text:
        return builder_.WText(text);
    }
  }

  XMLBuilder& builder_;
};

// A value that the document lacks, or that is no number, leaves its field as it is.
class XmlIn final : public Archive {
 public:
  explicit XmlIn(XMLParser& parser) : parser_(parser) {}
  bool Reading() const override { return true; }
  bool Xml() const override { return true; }

 private:
  void StoreVersion(std::uint32_t&) override {}
  void Value(const Slot& slot, bool& value) override {
    if (Get(slot)) FromWStr(text_, value);
  }
  void Value(const Slot& slot, std::int32_t& value) override { GetNumber(slot, value); }
  void Value(const Slot& slot, std::uint32_t& value) override { GetNumber(slot, value); }
  void Value(const Slot& slot, std::int64_t& value) override { GetNumber(slot, value); }
  void Value(const Slot& slot, double& value) override { GetNumber(slot, value); }
  void Value(const Slot& slot, std::wstring& value) override {
    if (Get(slot)) value = text_;
  }
  void Value(const Slot& slot, std::vector<double>& value) override {
    if (!Get(slot)) return;
    value.clear();
    std::wstring_view rest = text_;
    for (double v = 0.0; FromText(rest, v);) {
      value.push_back(v);
      rest.remove_prefix(rest.find_first_not_of(kBlanks));
      rest.remove_prefix(std::min(rest.find_first_of(kBlanks), rest.size()));
    }
  }
  void FlagValue(const Slot& slot, bool& value, const wchar_t* whenTrue, const wchar_t*) override {
    if (Get(slot)) value = EqualsIgnoreCase(text_, whenTrue);
  }
  void EnumValue(const Slot& slot, std::uint32_t& value, const Codes& codes) override {
    if (Get(slot)) codes.FromText(text_, value);
  }
  bool OpenElement(const wchar_t* name) override {
    const bool found = parser_.StartNode(name);
    found_ += found ? 1 : 0;
    return found;
  }
  bool OpenRequiredElement(const wchar_t* name) override {
    parser_.StartRequiredNode(name);
    ++found_;
    return true;
  }
  std::uint64_t ElementsFound() const override { return found_; }
  void CloseElement() override { parser_.EndNode(); }
  bool OpenList(const wchar_t* name, std::uint32_t& count) override {
    int items = 0;
    if (!parser_.StartList(name, items)) return false;
    count = static_cast<std::uint32_t>(items);
    return true;
  }
  void CloseList() override { parser_.EndList(); }
  // A record that reads itself is an item of its list whatever it finds.
  void SelfDescribed(ITslSerial&, ITslXML* record) override {
    WithDocumentForm(record).Serialize(parser_);
    ++found_;
  }

  bool Get(const Slot& slot) {
    switch (slot.place) {
      case Place::Child:
        return parser_.QNode(slot.name, text_);
      case Place::Attribute:
        return parser_.QAttribute(slot.name, text_);
      case Place::Text:
        text_ = parser_.QText();
        return true;
    }
    return false;
  }
  template <class T>
  void GetNumber(const Slot& slot, T& value) {
    if (Get(slot)) FromText(text_, value);
  }

  XMLParser& parser_;
  std::wstring text_;
  std::uint64_t found_ = 0;
};

}  // namespace

void frame::WriteXml(DescribeFn describe, const void* record, XMLBuilder& builder) {
  XmlOut ar(builder);
  describe(ar, const_cast<void*>(record));
}

void frame::ReadXml(DescribeFn describe, void* record, XMLParser& parser) {
  XmlIn ar(parser);
  describe(ar, record);
}

}  // namespace TslBL
