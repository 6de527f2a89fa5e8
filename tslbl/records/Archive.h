#pragma once
// What a Describe function runs on: one of six archives (binary out, binary in, XML out,
// XML in, text dump, comparison), each of which does its own thing with every field.
//
//   void Describe(Archive& ar, BaselineParams& p) {
//     ar.Version(1, "Unknown BaselineParams version.");
//     if (const auto element = ar.Element(L"Baseline")) {
//       ar.Flag(L"Mode", p.Auto, L"Auto", L"Manual");
//       ar(L"SegSize", p.SegSize);
//     }
//   }
//
// Names are the XML names and the labels of the dump; binary goes by order alone. Where a
// form differs the record says so in plain code, with Xml(), Reading(), Since() and the
// like. The archives that write take their record by non-const reference, as one Describe
// serves both directions; they do not change it.
//
// For the sources of records; not part of the library's interface.

#include <tslbl/records/Record.h>
#include <cstdint>
#include <map>
#include <span>
#include <string>
#include <type_traits>
#include <vector>

namespace TslBL {

// The text forms of an enumeration, by a table or by two functions. Writing takes the first
// row of a value, or "Unknown"; further rows of a value are older names, read but never
// written.
struct CodeText {
  std::uint32_t value;
  const wchar_t* text;
};
struct Codes {
  std::span<const CodeText> rows = {};
  bool exact = false;        // compare with case
  std::uint32_t onMiss = 0;  // what another text reads as
  bool keepOnMiss = false;   // another text leaves the field alone
  // In place of the rows, where the record or the platform keeps the forms; each has an answer
  // for whatever it is given.
  std::wstring (*toText)(std::uint32_t value) = nullptr;
  std::uint32_t (*fromText)(const std::wstring& text) = nullptr;

  std::wstring ToText(std::uint32_t value) const;
  void FromText(const std::wstring& text, std::uint32_t& value) const;
};

template <class R>
concept Described = requires(Archive& ar, R& r) {
  Describe(ar, r);
};

// The interfaces of a record, for a class that has their operations but not them.
template <class T>
class WithInterfaces final : public frame::SerialAndXml {
 public:
  explicit WithInterfaces(T& value) : value_(value) {}
  using frame::SerialAndXml::Serialize;
  void Serialize(BinaryReader& reader) override { value_.Serialize(reader); }
  void Serialize(BinaryWriter& writer) const override { value_.Serialize(writer); }
  void Serialize(XMLParser& parser) override { value_.Serialize(parser); }
  void Serialize(XMLBuilder& builder) const override { value_.Serialize(builder); }

 private:
  T& value_;
};

class Archive {
 public:
  // Where XML keeps a value: as a child element, an attribute of the open element, or its
  // own text.
  enum class Place { Child, Attribute, Text };
  struct Slot {
    Place place;
    const wchar_t* name;
  };

  // An open element; false if the document lacks it.
  class Scope {
   public:
    Scope(Archive& ar, bool open) : ar_(ar), open_(open) {}
    Scope(const Scope&) = delete;
    Scope& operator=(const Scope&) = delete;
    ~Scope() {
      if (open_) ar_.CloseElement();
    }
    explicit operator bool() const { return open_; }

   private:
    Archive& ar_;
    bool open_;
  };

  virtual bool Reading() const { return false; }
  virtual bool Xml() const { return false; }
  virtual bool Dumping() const { return false; }
  // Whether the form is a stream of bytes, in either direction; comparison is no form.
  virtual bool Binary() const { return false; }
  bool ReadingBinary() const { return Reading() && Binary(); }

  // Declares the record's current version. Binary archives store it, or read it and throw
  // std::runtime_error with the text given unless it is one of oldest..current.
  void Version(std::uint32_t current, const char* unknown, std::uint32_t oldest = 1);
  // Whether the stored form at hand has what came with `version`.
  bool Since(std::uint32_t version) const { return version_ >= version; }
  std::uint32_t StoredVersion() const { return version_; }
  // Throws std::runtime_error if what was read so far was cut short.
  virtual void RequireGood(const char*) {}

  Scope Element(const wchar_t* name) { return {*this, OpenElement(name)}; }
  // One that the document must have: reading throws XMLResultException without it.
  Scope RequiredElement(const wchar_t* name) { return {*this, OpenRequiredElement(name)}; }

  template <class T>
  void operator()(const wchar_t* name, T& value) {
    Value({Place::Child, name}, value);
  }
  template <class T>
  void Attribute(const wchar_t* name, T& value) {
    Value({Place::Attribute, name}, value);
  }
  template <class T>
  void Text(const wchar_t* label, T& value) {
    Value({Place::Text, label}, value);
  }
  // A bool with text forms of its own; another text reads as false.
  void Flag(const wchar_t* name, bool& value, const wchar_t* whenTrue, const wchar_t* whenFalse) {
    FlagValue({Place::Child, name}, value, whenTrue, whenFalse);
  }
  void FlagAttribute(const wchar_t* name, bool& value, const wchar_t* whenTrue, const wchar_t* whenFalse) {
    FlagValue({Place::Attribute, name}, value, whenTrue, whenFalse);
  }
  template <class E>
  void Enum(const wchar_t* name, E& value, const Codes& codes) {
    EnumAt({Place::Child, name}, value, codes);
  }
  template <class E>
  void EnumAttribute(const wchar_t* name, E& value, const Codes& codes) {
    EnumAt({Place::Attribute, name}, value, codes);
  }
  // A double that compares equal within `tolerance`, inclusive.
  virtual void Near(const Slot& slot, double& value, double tolerance);

  // A record inside this one, with its own version and element. What an older binary form
  // lacks has its default afterwards, whatever the record held.
  template <class R>
  void Nested(R& record) {
    if (ReadingBinary()) record = R();
    NestedRecord(&record, {&DescribeAny<R>, &EqualAny<R>});
  }
  // A list: a count and the items in binary, an element with the items in it in XML.
  // `describeItem(ar, item)` describes one item; reading makes each from its defaults. Items are a vector or
  // a deque.
  template <class Items, class DescribeItem>
  void List(const wchar_t* name, Items& items, DescribeItem describeItem);
  template <class Items>
  void List(const wchar_t* name, Items& records) {
    List(name, records, [](Archive& ar, auto& record) { ar.Nested(record); });
  }
  // A list of records by their ids, in the order of the ids: in XML an element `item` with the
  // attribute "Id" for each. Of records read under one id the last stays.
  template <class R>
  void Map(const wchar_t* name, const wchar_t* item, std::map<std::uint32_t, R>& records);
  // A line of the dump; nothing elsewhere.
  virtual void Line(const wchar_t*, const std::wstring&) {}

 protected:
  struct RecordOps {
    void (*run)(Archive& ar, void* record);
    bool (*equal)(const void* a, const void* b);
  };

  Archive() = default;
  ~Archive() = default;

  virtual void StoreVersion(std::uint32_t& version) = 0;
  virtual void Value(const Slot& slot, bool& value) = 0;
  virtual void Value(const Slot& slot, std::int32_t& value) = 0;
  virtual void Value(const Slot& slot, std::uint32_t& value) = 0;
  virtual void Value(const Slot& slot, std::int64_t& value) = 0;
  virtual void Value(const Slot& slot, double& value) = 0;
  virtual void Value(const Slot& slot, std::wstring& value) = 0;
  virtual void Value(const Slot& slot, std::vector<double>& value) = 0;
  virtual void FlagValue(const Slot& slot, bool& value, const wchar_t* whenTrue, const wchar_t* whenFalse);
  virtual void EnumValue(const Slot& slot, std::uint32_t& value, const Codes& codes);
  virtual bool OpenElement(const wchar_t*) { return true; }
  virtual bool OpenRequiredElement(const wchar_t* name) { return OpenElement(name); }
  virtual void CloseElement() {}
  // How many elements were found so far, to tell an item of a list that was none.
  virtual std::uint64_t ElementsFound() const { return 0; }
  // False if the document lacks the list. `count` is given by an archive that reads and
  // taken by one that writes.
  virtual bool OpenList(const wchar_t* name, std::uint32_t& count) = 0;
  virtual void CloseList() {}
  // Whether there may be more to describe, for the items of a list whose count cannot be trusted.
  virtual bool MayContinue() const { return true; }
  virtual void NestedRecord(void* record, const RecordOps& ops);

  // The archive's own way with a record that writes and reads itself; `xml` is null for
  // one without a document form.
  virtual void SelfDescribed(ITslSerial& serial, ITslXML* xml) = 0;

 private:
  template <class E>
  void EnumAt(const Slot& slot, E& value, const Codes& codes) {
    static_assert(std::is_enum_v<E>);
    auto number = static_cast<std::uint32_t>(value);
    EnumValue(slot, number, codes);
    if (Reading()) value = static_cast<E>(number);
  }
  template <class R>
  static void DescribeAny(Archive& ar, void* record) {
    if constexpr (Described<R>) {
      Describe(ar, *static_cast<R*>(record));
    } else if constexpr (std::is_base_of_v<ITslXML, R>) {
      ar.SelfDescribed(*static_cast<R*>(record), static_cast<R*>(record));
    } else if constexpr (std::is_base_of_v<ITslSerial, R>) {
      ar.SelfDescribed(*static_cast<R*>(record), nullptr);
    } else {
      WithInterfaces<R> forms(*static_cast<R*>(record));
      ar.SelfDescribed(forms, &forms);
    }
  }
  template <class R>
  static bool EqualAny(const void* a, const void* b) {
    return *static_cast<const R*>(a) == *static_cast<const R*>(b);
  }

  std::uint32_t version_ = 0;
};

// For lists of the ids of other records.
inline void DescribeId(Archive& ar, std::uint32_t& id) { ar(L"id", id); }

template <class Items, class DescribeItem>
void Archive::List(const wchar_t* name, Items& items, DescribeItem describeItem) {
  auto count = static_cast<std::uint32_t>(items.size());
  if (!OpenList(name, count)) return;
  if (Reading()) {
    items.clear();
    for (; count > 0 && MayContinue(); --count) {
      const std::uint64_t before = ElementsFound();
      describeItem(*this, items.emplace_back());
      // A foreign element between the items of a document is counted, but is no item.
      if (Xml() && ElementsFound() == before) items.pop_back();
    }
  } else {
    for (auto& item : items) {
      if (!MayContinue()) break;
      describeItem(*this, item);
    }
  }
  CloseList();
}

template <class R>
void Archive::Map(const wchar_t* name, const wchar_t* item, std::map<std::uint32_t, R>& records) {
  auto count = static_cast<std::uint32_t>(records.size());
  if (!OpenList(name, count)) return;
  const auto describe = [&](std::uint32_t& id, R& record) {
    const auto element = Element(item);
    if (!element) return false;
    Attribute(L"Id", id);
    Nested(record);
    return true;
  };
  if (Reading()) {
    records.clear();
    for (; count > 0 && MayContinue(); --count) {
      std::uint32_t id = 0;
      R record;
      if (describe(id, record)) records.insert_or_assign(id, std::move(record));
    }
  } else {
    for (auto& [key, record] : records) {
      if (!MayContinue()) break;
      std::uint32_t id = key;
      describe(id, record);
    }
  }
  CloseList();
}

}  // namespace TslBL
