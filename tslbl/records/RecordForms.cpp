#include <tslbl/records/RecordForms.h>

#include <tslbl/closed/common/Text.h>
#include <sstream>
#include <stdexcept>
#include <streambuf>
#include <utility>

namespace TslBL {
namespace {

// Bytes that are read where they lie.
class ViewBuffer final : public std::streambuf {
 public:
  explicit ViewBuffer(std::string_view bytes) {
    char* const begin = const_cast<char*>(bytes.data());
    setg(begin, begin, begin + bytes.size());
  }
  std::size_t Taken() const { return static_cast<std::size_t>(gptr() - eback()); }
};

}  // namespace

std::string frame::WriteBytes(WriteFn write, const void* record) {
  std::ostringstream out(std::ios::binary);
  // Without this a stream takes memory that is short for its end, and cuts the record.
  out.exceptions(std::ios::badbit);
  BinaryWriter writer(out);
  write(writer, record);
  return std::move(out).str();
}

std::size_t frame::ReadBytes(ReadFn read, std::string_view bytes, void* record) {
  ViewBuffer buffer(bytes);
  std::istream in(&buffer);
  BinaryReader reader(in);
  read(reader, record);
  if (!reader.Good()) throw std::runtime_error("Unexpected end of stream.");
  return buffer.Taken();
}

void frame::ThrowLeftOver(std::size_t bytes) {
  throw std::runtime_error("Bytes behind the record: " + std::to_string(bytes) + ".");
}

void frame::LoadDocument(XMLParser& parser, const std::wstring& document) {
  if (!parser.LoadText(document)) throw std::runtime_error(ToUtf8(parser.QLoadError()));
}

}  // namespace TslBL
