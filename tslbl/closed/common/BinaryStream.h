#pragma once
// Records as bytes. Little-endian: bool 1 byte; 32- and 64-bit integers; IEEE double;
// string = uint32 byte count and UTF-8; vector<double> = uint32 count and values.
//
// Both wrap a stream that the caller owns and that must outlive them; neither throws on
// a stream that fails. A reader past the end sets the stream's bad state and yields
// zeros and empty values from there on. The bytes are not trusted: a length is read in
// bounded pieces, so that four bytes of garbage cannot claim gigabytes.

#include <tslbl/Export.h>
#include <tslbl/closed/common/ITslSerial.h>
#include <cstdint>
#include <iosfwd>
#include <string>
#include <type_traits>
#include <vector>

namespace TslCommon {

class DiverterValve;

class TSLBL_API BinaryWriter {
 public:
  explicit BinaryWriter(std::ostream& stream) : stream_(stream) {}

  BinaryWriter& Put(bool value);
  BinaryWriter& Put(std::int32_t value);
  BinaryWriter& Put(std::uint32_t value);
  BinaryWriter& Put(std::int64_t value);
  BinaryWriter& Put(double value);
  BinaryWriter& Put(const std::wstring& value);
  BinaryWriter& Put(const std::vector<double>& value);
  BinaryWriter& Put(const ITslSerial& record);
  BinaryWriter& Put(const DiverterValve& valve);
  // Nothing else is written, least of all a pointer taken for a bool.
  template <class T>
  requires(!std::is_base_of_v<ITslSerial, T>) BinaryWriter& Put(const T&) = delete;

 private:
  std::ostream& stream_;
};

class TSLBL_API BinaryReader {
 public:
  explicit BinaryReader(std::istream& stream) : stream_(stream) {}

  BinaryReader& Get(bool& value);
  BinaryReader& Get(std::int32_t& value);
  BinaryReader& Get(std::uint32_t& value);
  BinaryReader& Get(std::int64_t& value);
  BinaryReader& Get(double& value);
  BinaryReader& Get(std::wstring& value);
  BinaryReader& Get(std::vector<double>& value);
  // Throws std::runtime_error "Unexpected end of stream." if the record was cut short.
  BinaryReader& Get(ITslSerial& record);
  BinaryReader& Get(DiverterValve& valve);

  // Whether all that was asked for so far was there.
  bool Good() const;

 private:
  std::istream& stream_;
};

template <class T>
BinaryWriter& operator<<(BinaryWriter& writer, const T& value) {
  return writer.Put(value);
}
template <class T>
BinaryReader& operator>>(BinaryReader& reader, T& value) {
  return reader.Get(value);
}

}  // namespace TslCommon
