#include <tslbl/closed/common/BinaryStream.h>

#include <tslbl/closed/common/DiverterValve.h>
#include <tslbl/closed/common/Text.h>
#include <algorithm>
#include <bit>
#include <istream>
#include <limits>
#include <ostream>
#include <stdexcept>

static_assert(std::endian::native == std::endian::little, "The streams are little-endian.");
static_assert(std::numeric_limits<double>::is_iec559);

namespace TslCommon {
namespace {

constexpr std::size_t kPiece = 64 * std::size_t{1024};  // bytes taken on trust at a time

template <class T>
void WriteRaw(std::ostream& stream, const T& value) {
  stream.write(reinterpret_cast<const char*>(&value), sizeof value);
}

template <class T>
void ReadRaw(std::istream& stream, T& value) {
  value = T{};
  T read{};
  if (stream.read(reinterpret_cast<char*>(&read), sizeof read)) value = read;
}

std::uint32_t CheckedCount(std::size_t count) {
  if (count > std::numeric_limits<std::uint32_t>::max())
    throw std::length_error("Too many values for a binary record.");
  return static_cast<std::uint32_t>(count);
}

// Reads `count` elements into `values`, a piece at a time; empty if the stream ends.
template <class Container>
void ReadPieces(std::istream& stream, std::size_t count, Container& values) {
  using T = typename Container::value_type;
  values.clear();
  while (count > 0 && stream) {
    const std::size_t piece = std::min(count, kPiece / sizeof(T));
    const std::size_t old = values.size();
    values.resize(old + piece);
    stream.read(reinterpret_cast<char*>(values.data() + old),
                static_cast<std::streamsize>(piece * sizeof(T)));
    count -= piece;
  }
  if (!stream) values.clear();
}

}  // namespace

BinaryWriter& BinaryWriter::Put(bool value) { return WriteRaw(stream_, std::uint8_t{value}), *this; }
BinaryWriter& BinaryWriter::Put(std::int32_t value) { return WriteRaw(stream_, value), *this; }
BinaryWriter& BinaryWriter::Put(std::uint32_t value) { return WriteRaw(stream_, value), *this; }
BinaryWriter& BinaryWriter::Put(std::int64_t value) { return WriteRaw(stream_, value), *this; }
BinaryWriter& BinaryWriter::Put(double value) { return WriteRaw(stream_, value), *this; }

BinaryWriter& BinaryWriter::Put(const std::wstring& value) {
  const std::string bytes = ToUtf8(value);
  Put(CheckedCount(bytes.size()));
  stream_.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
  return *this;
}

BinaryWriter& BinaryWriter::Put(const std::vector<double>& value) {
  Put(CheckedCount(value.size()));
  stream_.write(reinterpret_cast<const char*>(value.data()),
                static_cast<std::streamsize>(value.size() * sizeof(double)));
  return *this;
}

BinaryWriter& BinaryWriter::Put(const ITslSerial& record) { return record.Serialize(*this), *this; }
BinaryWriter& BinaryWriter::Put(const DiverterValve& valve) { return Put(valve.State()); }

BinaryReader& BinaryReader::Get(bool& value) {
  std::uint8_t byte = 0;
  ReadRaw(stream_, byte);
  value = byte != 0;
  return *this;
}
BinaryReader& BinaryReader::Get(std::int32_t& value) { return ReadRaw(stream_, value), *this; }
BinaryReader& BinaryReader::Get(std::uint32_t& value) { return ReadRaw(stream_, value), *this; }
BinaryReader& BinaryReader::Get(std::int64_t& value) { return ReadRaw(stream_, value), *this; }
BinaryReader& BinaryReader::Get(double& value) { return ReadRaw(stream_, value), *this; }

BinaryReader& BinaryReader::Get(std::wstring& value) {
  std::uint32_t size = 0;
  Get(size);
  std::string bytes;
  ReadPieces(stream_, size, bytes);
  value = FromUtf8(bytes);
  return *this;
}

BinaryReader& BinaryReader::Get(std::vector<double>& value) {
  std::uint32_t count = 0;
  Get(count);
  ReadPieces(stream_, count, value);
  return *this;
}

BinaryReader& BinaryReader::Get(ITslSerial& record) {
  record.Serialize(*this);
  if (!Good()) throw std::runtime_error("Unexpected end of stream.");
  return *this;
}

BinaryReader& BinaryReader::Get(DiverterValve& valve) {
  std::uint32_t state = 0;
  Get(state);
  valve = DiverterValve(state);
  return *this;
}

bool BinaryReader::Good() const { return static_cast<bool>(stream_); }

}  // namespace TslCommon
