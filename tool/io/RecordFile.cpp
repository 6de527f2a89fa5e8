#include <tool/io/RecordFile.h>

#include <fmt/format.h>

#include <tool/frame/Utf8.h>
#include <tool/io/ByteSource.h>
#include <algorithm>
#include <iterator>
#include <sstream>

namespace TslTool {
namespace {

void RequireFiniteIn(const std::string& file, const pugi::xml_node& node, const std::string& place) {
  static constexpr std::string_view kTexts[] = {"Name", "Comment", "Manufacturer", "Desc"};
  const auto check = [&](const char* name, const std::string& text, const std::string& at) {
    const bool isFinite = text != "nan" && text != "-nan" && text != "inf" && text != "-inf";
    if (!isFinite && std::ranges::find(kTexts, name) == std::end(kTexts))
      throw InputError(file, at, "\"" + text + "\" is no number that an instrument takes");
  };
  for (const pugi::xml_attribute attribute : node.attributes())
    check(attribute.name(), attribute.value(), place + "@" + attribute.name());
  check(node.name(), node.child_value(), place);
  for (const pugi::xml_node child : node.children())
    if (child.type() == pugi::node_element) RequireFiniteIn(file, child, place + "/" + child.name());
}

std::string PlaceOfFirstWrong(std::string_view bytes) {
  std::size_t line = 1;
  while (!bytes.empty()) {
    const Utf8Character character = FirstCharacter(bytes);
    if (!character.isValid) break;
    if (character.code == U'\n') ++line;
    bytes.remove_prefix(character.bytes);
  }
  return fmt::format("line {}", line);
}

}  // namespace

std::string ReadRecordFile(const std::string& file, const RecordKind& kind) {
  ByteSource source(file);
  std::string bytes;
  char piece[65536];
  while (const std::size_t count = source.Read(piece, sizeof piece)) {
    bytes.append(piece, count);
    if (bytes.size() > kind.largest)
      throw InputError(file, "", std::string("the file is too large for a ") + kind.name);
  }
  if (bytes.empty()) throw InputError(file, "", "the file is empty");
  return bytes;
}

bool IsDocument(std::string_view bytes) {
  const auto first = bytes.find_first_not_of(" \t\r\n\xEF\xBB\xBF");
  if (first == std::string_view::npos) return false;
  return bytes[first] == '<' || bytes.starts_with("\xFF\xFE") || bytes.starts_with("\xFE\xFF");
}

WrittenDocument::WrittenDocument(const std::string& file, const std::string& bytes) {
  const pugi::xml_parse_result parsed =
      document_.load_buffer(bytes.data(), bytes.size(), pugi::parse_default | pugi::parse_doctype);
  std::ostringstream utf8;
  document_.save(utf8, "", pugi::format_raw | pugi::format_no_declaration, pugi::encoding_utf8);
  const std::string text = parsed ? utf8.str() : bytes;
  if (!IsUtf8(text)) throw InputError(file, PlaceOfFirstWrong(bytes), "holds a byte that is not UTF-8");
  text_ = TslCommon::FromUtf8(text);
}

void RequireFinite(const std::string& file, const std::wstring& document) {
  pugi::xml_document shown;
  shown.load_string(TslCommon::ToUtf8(document).c_str());
  RequireFiniteIn(file, shown.document_element(), shown.document_element().name());
}

RecordForm FormOfName(const std::string& file) {
  const std::wstring name = TslCommon::FromUtf8(file);
  const bool isXml = name.size() >= 4 && TslCommon::EqualsIgnoreCase(name.substr(name.size() - 4), L".xml");
  return isXml ? RecordForm::Xml : RecordForm::Binary;
}

}  // namespace TslTool
