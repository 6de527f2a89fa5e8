#include <tool/io/EncodeArray.h>

#include <tool/io/Base64.h>
#include <zlib.h>

#include <bit>
#include <new>

static_assert(std::endian::native == std::endian::little, "Arrays are written little-endian.");

namespace TslTool {
namespace {

std::string Deflated(const std::vector<double>& values) {
  if (values.empty()) return "";
  const auto size = static_cast<uLong>(values.size() * sizeof(double));
  uLongf packed = compressBound(size);
  std::string bytes(packed, '\0');
  const int result = compress(reinterpret_cast<Bytef*>(bytes.data()), &packed,
                              reinterpret_cast<const Bytef*>(values.data()), size);
  if (result != Z_OK) throw std::bad_alloc();
  bytes.resize(packed);
  return bytes;
}

}  // namespace

void AddArray(pugi::xml_node& list, const ArrayKind& kind, const std::vector<double>& values) {
  const std::string text = ToBase64(Deflated(values));
  pugi::xml_node array = list.append_child("binaryDataArray");
  array.append_attribute("encodedLength") = std::to_string(text.size()).c_str();
  AddTerm(array, Cv::kFloat64);
  AddTerm(array, Cv::kZlib);
  if (kind.unit) {
    AddTerm(array, kind.term, kind.name, *kind.unit);
  } else {
    AddTerm(array, kind.term, kind.name);
  }
  array.append_child("binary").text() = text.c_str();
}

}  // namespace TslTool
