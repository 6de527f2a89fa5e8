// Equality of two records: the fields of the first are recorded, those of the second compared
// with them, up to the first difference.

#include <tslbl/records/Archive.h>
#include <cmath>
#include <variant>

namespace TslBL {
namespace {

// A recorded field. Scalars and strings are copies, since a Describe may pass a value that
// it made on the way; arrays and nested records are members, and outlive the comparison.
using Field = std::variant<bool, std::int32_t, std::uint32_t, std::int64_t, double, std::wstring,
                           const std::vector<double>*, const void*>;

class FieldRecorder final : public Archive {
 public:
  explicit FieldRecorder(std::vector<Field>& fields) : fields_(fields) {}

 private:
  void StoreVersion(std::uint32_t&) override {}
  void Value(const Slot&, bool& value) override { Add(value); }
  void Value(const Slot&, std::int32_t& value) override { Add(value); }
  void Value(const Slot&, std::uint32_t& value) override { Add(value); }
  void Value(const Slot&, std::int64_t& value) override { Add(value); }
  void Value(const Slot&, double& value) override { Add(value); }
  void Value(const Slot&, std::wstring& value) override { Add(value); }
  void Value(const Slot&, std::vector<double>& value) override { fields_.emplace_back(&value); }
  bool OpenList(const wchar_t*, std::uint32_t& count) override { return Add(count), true; }
  void NestedRecord(void* record, const RecordOps&) override {
    fields_.emplace_back(static_cast<const void*>(record));
  }
  void SelfDescribed(ITslSerial&, ITslXML*) override {}

  template <class T>
  void Add(const T& value) {
    fields_.emplace_back(value);
  }
  std::vector<Field>& fields_;
};

class FieldComparer final : public Archive {
 public:
  explicit FieldComparer(const std::vector<Field>& fields) : fields_(fields) {}
  bool Equal() const { return equal_ && next_ == fields_.size(); }
  void Near(const Slot&, double& value, double tolerance) override {
    Compare<double>(
        [&](double recorded) { return recorded == value || std::abs(recorded - value) <= tolerance; });
  }

 private:
  void StoreVersion(std::uint32_t&) override {}
  void Value(const Slot&, bool& value) override { CompareValue(value); }
  void Value(const Slot&, std::int32_t& value) override { CompareValue(value); }
  void Value(const Slot&, std::uint32_t& value) override { CompareValue(value); }
  void Value(const Slot&, std::int64_t& value) override { CompareValue(value); }
  void Value(const Slot&, double& value) override { CompareValue(value); }
  void Value(const Slot&, std::wstring& value) override { CompareValue(value); }
  void Value(const Slot&, std::vector<double>& value) override {
    Compare<const std::vector<double>*>(
        [&](const std::vector<double>* recorded) { return *recorded == value; });
  }
  bool OpenList(const wchar_t*, std::uint32_t& count) override { return CompareValue(count), equal_; }
  bool MayContinue() const override { return equal_; }
  void NestedRecord(void* record, const RecordOps& ops) override {
    Compare<const void*>([&](const void* recorded) { return ops.equal(recorded, record); });
  }
  void SelfDescribed(ITslSerial&, ITslXML*) override {}

  // A record that names other fields than its twin, as a kind decides which it has, differs.
  template <class T, class Same>
  void Compare(Same same) {
    if (!equal_) return;
    const T* recorded = next_ < fields_.size() ? std::get_if<T>(&fields_[next_]) : nullptr;
    ++next_;
    equal_ = recorded != nullptr && same(*recorded);
  }
  template <class T>
  void CompareValue(const T& value) {
    Compare<T>([&](const T& recorded) { return recorded == value; });
  }

  const std::vector<Field>& fields_;
  std::size_t next_ = 0;
  bool equal_ = true;
};

}  // namespace

bool frame::Equal(DescribeFn describe, const void* a, const void* b) {
  std::vector<Field> fields;
  FieldRecorder first(fields);
  describe(first, const_cast<void*>(a));
  FieldComparer second(fields);
  describe(second, const_cast<void*>(b));
  return second.Equal();
}

}  // namespace TslBL
