// Records as text for logs and reports.

#include <tslbl/closed/common/Text.h>
#include <tslbl/records/Archive.h>

namespace TslBL {
namespace {

class DumpOut final : public Archive {
 public:
  explicit DumpOut(std::wstring& text) : text_(text) {}
  bool Dumping() const override { return true; }
  void Line(const wchar_t* label, const std::wstring& value) override {
    text_.append(L"  ").append(label).append(L":\t").append(value).append(L"\r\n");
  }

 private:
  void StoreVersion(std::uint32_t&) override {}
  void Value(const Slot& slot, bool& value) override { Line(slot.name, ToWStr(value)); }
  void Value(const Slot& slot, std::int32_t& value) override { Line(slot.name, ToText(value)); }
  void Value(const Slot& slot, std::uint32_t& value) override { Line(slot.name, ToText(value)); }
  void Value(const Slot& slot, std::int64_t& value) override { Line(slot.name, ToText(value)); }
  void Value(const Slot& slot, double& value) override { Line(slot.name, ToText(value)); }
  void Value(const Slot& slot, std::wstring& value) override { Line(slot.name, value); }
  void Value(const Slot& slot, std::vector<double>& value) override {
    Line(slot.name, ToText(static_cast<std::uint32_t>(value.size())) + L" values");
  }
  void FlagValue(const Slot& slot, bool& value, const wchar_t* whenTrue, const wchar_t* whenFalse) override {
    Line(slot.name, value ? whenTrue : whenFalse);
  }
  void EnumValue(const Slot& slot, std::uint32_t& value, const Codes& codes) override {
    Line(slot.name, codes.ToText(value));
  }
  bool OpenList(const wchar_t*, std::uint32_t&) override { return true; }
  void SelfDescribed(ITslSerial& record, ITslXML*) override {
    std::wstring dump;
    record.Serialize(dump);
    text_ += dump;
  }

  std::wstring& text_;
};

}  // namespace

void frame::Dump(DescribeFn describe, const void* record, std::wstring& text) {
  text.clear();
  DumpOut ar(text);
  describe(ar, const_cast<void*>(record));
}

}  // namespace TslBL
