// Records to bytes and back.

#include <tslbl/closed/common/BinaryStream.h>
#include <tslbl/records/Archive.h>
#include <stdexcept>

namespace TslBL {
namespace {

class BinaryOut final : public Archive {
 public:
  explicit BinaryOut(BinaryWriter& writer) : writer_(writer) {}
  bool Binary() const override { return true; }

 private:
  void StoreVersion(std::uint32_t& version) override { writer_ << version; }
  void Value(const Slot&, bool& value) override { writer_ << value; }
  void Value(const Slot&, std::int32_t& value) override { writer_ << value; }
  void Value(const Slot&, std::uint32_t& value) override { writer_ << value; }
  void Value(const Slot&, std::int64_t& value) override { writer_ << value; }
  void Value(const Slot&, double& value) override { writer_ << value; }
  void Value(const Slot&, std::wstring& value) override { writer_ << value; }
  void Value(const Slot&, std::vector<double>& value) override { writer_ << value; }
  bool OpenList(const wchar_t*, std::uint32_t& count) override { return writer_ << count, true; }
  void SelfDescribed(ITslSerial& record, ITslXML*) override { writer_ << record; }

  BinaryWriter& writer_;
};

class BinaryIn final : public Archive {
 public:
  explicit BinaryIn(BinaryReader& reader) : reader_(reader) {}
  bool Reading() const override { return true; }
  bool Binary() const override { return true; }
  void RequireGood(const char* failure) override {
    if (!reader_.Good()) throw std::runtime_error(failure);
  }

 private:
  void StoreVersion(std::uint32_t& version) override { reader_ >> version; }
  void Value(const Slot&, bool& value) override { reader_ >> value; }
  void Value(const Slot&, std::int32_t& value) override { reader_ >> value; }
  void Value(const Slot&, std::uint32_t& value) override { reader_ >> value; }
  void Value(const Slot&, std::int64_t& value) override { reader_ >> value; }
  void Value(const Slot&, double& value) override { reader_ >> value; }
  void Value(const Slot&, std::wstring& value) override { reader_ >> value; }
  void Value(const Slot&, std::vector<double>& value) override { reader_ >> value; }
  bool OpenList(const wchar_t*, std::uint32_t& count) override { return reader_ >> count, true; }
  bool MayContinue() const override { return reader_.Good(); }
  void SelfDescribed(ITslSerial& record, ITslXML*) override { reader_ >> record; }

  BinaryReader& reader_;
};

}  // namespace

void frame::WriteBinary(DescribeFn describe, const void* record, BinaryWriter& writer) {
  BinaryOut ar(writer);
  describe(ar, const_cast<void*>(record));
}

void frame::ReadBinary(DescribeFn describe, void* record, BinaryReader& reader) {
  BinaryIn ar(reader);
  describe(ar, record);
  ar.RequireGood("Unexpected end of stream.");
}

}  // namespace TslBL
