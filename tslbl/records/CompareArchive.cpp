// Equality of two records: the first one's fields are noted, the second one's are held
// against them, up to the first difference.

#include <tslbl/records/Archive.h>
#include <cmath>
#include <variant>

namespace TslBL {
namespace {

// A note of a field. Scalars and strings are copies, since a Describe may pass a value that
// it made on the way; arrays and nested records are members, and outlive the comparison.
using Note = std::variant<bool, std::int32_t, std::uint32_t, std::int64_t, double, std::wstring,
                          const std::vector<double>*, const void*>;

class Noting final : public Archive {
 public:
  explicit Noting(std::vector<Note>& notes) : notes_(notes) {}

 private:
  void StoreVersion(std::uint32_t&) override {}
  void Value(const Slot&, bool& value) override { Take(value); }
  void Value(const Slot&, std::int32_t& value) override { Take(value); }
  void Value(const Slot&, std::uint32_t& value) override { Take(value); }
  void Value(const Slot&, std::int64_t& value) override { Take(value); }
  void Value(const Slot&, double& value) override { Take(value); }
  void Value(const Slot&, std::wstring& value) override { Take(value); }
  void Value(const Slot&, std::vector<double>& value) override { notes_.emplace_back(&value); }
  bool OpenList(const wchar_t*, std::uint32_t& count) override { return Take(count), true; }
  void NestedRecord(void* record, const RecordOps&) override {
    notes_.emplace_back(static_cast<const void*>(record));
  }
  void Foreign(ITslSerial&, ITslXML*) override {}

  template <class T>
  void Take(const T& value) {
    notes_.emplace_back(value);
  }
  std::vector<Note>& notes_;
};

class Holding final : public Archive {
 public:
  explicit Holding(const std::vector<Note>& notes) : notes_(notes) {}
  bool Equal() const { return equal_ && next_ == notes_.size(); }
  void Near(const Slot&, double& value, double tolerance) override {
    Hold<double>([&](double noted) { return noted == value || std::abs(noted - value) <= tolerance; });
  }

 private:
  void StoreVersion(std::uint32_t&) override {}
  void Value(const Slot&, bool& value) override { HoldValue(value); }
  void Value(const Slot&, std::int32_t& value) override { HoldValue(value); }
  void Value(const Slot&, std::uint32_t& value) override { HoldValue(value); }
  void Value(const Slot&, std::int64_t& value) override { HoldValue(value); }
  void Value(const Slot&, double& value) override { HoldValue(value); }
  void Value(const Slot&, std::wstring& value) override { HoldValue(value); }
  void Value(const Slot&, std::vector<double>& value) override {
    Hold<const std::vector<double>*>([&](const std::vector<double>* noted) { return *noted == value; });
  }
  bool OpenList(const wchar_t*, std::uint32_t& count) override { return HoldValue(count), equal_; }
  bool GoOn() const override { return equal_; }
  void NestedRecord(void* record, const RecordOps& ops) override {
    Hold<const void*>([&](const void* noted) { return ops.equal(noted, record); });
  }
  void Foreign(ITslSerial&, ITslXML*) override {}

  // A record that notes other fields than its twin, as a kind decides which it has, differs.
  template <class T, class Same>
  void Hold(Same same) {
    if (!equal_) return;
    const T* noted = next_ < notes_.size() ? std::get_if<T>(&notes_[next_]) : nullptr;
    ++next_;
    equal_ = noted != nullptr && same(*noted);
  }
  template <class T>
  void HoldValue(const T& value) {
    Hold<T>([&](const T& noted) { return noted == value; });
  }

  const std::vector<Note>& notes_;
  std::size_t next_ = 0;
  bool equal_ = true;
};

}  // namespace

bool frame::Equal(DescribeFn describe, const void* a, const void* b) {
  std::vector<Note> notes;
  Noting first(notes);
  describe(first, const_cast<void*>(a));
  Holding second(notes);
  describe(second, const_cast<void*>(b));
  return second.Equal();
}

}  // namespace TslBL
