#include <tool/commands/tune/TuneFile.h>

#include <fmt/format.h>
#include <pugixml.hpp>

#include <tool/frame/InputError.h>
#include <tool/io/ByteSource.h>
#include <tool/io/DocumentCheck.h>
#include <tslbl/closed/common/Text.h>
#include <tslbl/records/RecordForms.h>
#include <algorithm>
#include <iterator>
#include <sstream>
#include <string_view>

namespace TslTool {
namespace {

using TslBL::Tune;

// A tune takes a few kilobytes.
constexpr std::size_t kLargest = 1 << 20;

std::string ReadAll(const std::string& file) {
  ByteSource source(file);
  std::string bytes;
  char piece[65536];
  while (const std::size_t count = source.Read(piece, sizeof piece)) {
    bytes.append(piece, count);
    if (bytes.size() > kLargest) throw InputError(file, "", "the file is too large for a tune");
  }
  return bytes;
}

// UTF-8 with or without its mark, or UTF-16.
bool IsDocument(const std::string& bytes) {
  const auto first = bytes.find_first_not_of(" \t\r\n\xEF\xBB\xBF");
  if (first == std::string::npos) return false;
  return bytes[first] == '<' || bytes.starts_with("\xFF\xFE") || bytes.starts_with("\xFE\xFF");
}

std::string DocumentOf(const Tune& tune) { return TslCommon::ToUtf8(TslBL::ToXml(tune)); }

// With the elements of both kinds of probe: each is read under either.
void AddOtherProbe(pugi::xml_document& taken, Tune tune) {
  const bool isApci = tune.Source.Type == TslBL::Probes::APCI;
  tune.Source.Type = isApci ? TslBL::Probes::ESI : TslBL::Probes::APCI;
  pugi::xml_document other;
  other.load_string(DocumentOf(tune).c_str());
  pugi::xml_node source = taken.document_element().child("Source");
  for (const pugi::xml_node child : other.document_element().child("Source"))
    if (!source.child(child.name())) source.append_copy(child);
}

// A probe is written with its number, and may be read without.
std::string Refuse(const DocumentValue& value) {
  using TslBL::Probes;
  std::string reason = RefuseOther(value);
  if (reason.empty() || !value.place.ends_with("/Source/Type")) return reason;
  const std::wstring written = TslCommon::FromUtf8(value.written);
  const bool isName = TslCommon::EqualsIgnoreCase(written, Probes::GetNameNoId(Probes::GetId(written)));
  return isName ? "" : reason;
}

// What the tune would be written with, and the document is without. Lists may be short.
void AddMissing(const pugi::xml_node& written, const pugi::xml_node& taken, const std::string& place,
                std::vector<std::string>& missing) {
  for (const pugi::xml_node child : taken.children()) {
    if (child.type() != pugi::node_element) continue;
    const std::string at = place + "/" + child.name();
    const pugi::xml_node twin = written.child(child.name());
    if (!twin) {
      missing.push_back(at);
    } else if (at != "Tune/MZCalPts" && at != "Tune/Q1CalPts") {
      AddMissing(twin, child, at, missing);
    }
  }
}

TuneFile FromDocument(const std::string& file, const std::string& bytes) {
  pugi::xml_document written;
  const pugi::xml_parse_result parsed =
      written.load_buffer(bytes.data(), bytes.size(), pugi::parse_default | pugi::parse_doctype);
  std::ostringstream utf8;
  written.save(utf8, "", pugi::format_raw | pugi::format_no_declaration, pugi::encoding_utf8);
  // The library's own reader says what is wrong, with line and column.
  const std::wstring text = TslCommon::FromUtf8(parsed ? utf8.str() : bytes);
  Tune tune;
  try {
    tune = TslBL::FromXml<Tune>(text);
  } catch (const std::runtime_error& e) {
    throw InputError(file, "", e.what());
  }
  pugi::xml_document taken;
  taken.load_string(DocumentOf(tune).c_str());
  std::vector<std::string> missing;
  AddMissing(written.child("Tune"), taken.document_element(), "Tune", missing);
  AddOtherProbe(taken, tune);
  CheckDocument(file, written.child("Tune"), taken.document_element(), Refuse);
  return {tune, TuneForm::Xml, missing};
}

// A number that is none passes every limit.
void RequireFinite(const std::string& file, const pugi::xml_node& node, const std::string& place) {
  static constexpr std::string_view kNames[] = {"Name", "Comment", "Manufacturer"};
  const auto check = [&](const char* name, const std::string& text, const std::string& at) {
    const bool isFinite = text != "nan" && text != "-nan" && text != "inf" && text != "-inf";
    if (!isFinite && std::ranges::find(kNames, name) == std::end(kNames))
      throw InputError(file, at, "\"" + text + "\" is no number that an instrument takes");
  };
  for (const pugi::xml_attribute attribute : node.attributes())
    check(attribute.name(), attribute.value(), place + "@" + attribute.name());
  check(node.name(), node.child_value(), place);
  for (const pugi::xml_node child : node.children())
    if (child.type() == pugi::node_element) RequireFinite(file, child, place + "/" + child.name());
}

Tune FromBinary(const std::string& file, const std::string& bytes) {
  Tune tune;
  std::size_t end = 0;
  try {
    end = TslBL::ReadBytes(bytes, tune);
  } catch (const std::exception& e) {
    throw InputError(file, "", fmt::format("is no tune: {}", e.what()));
  }
  if (end != bytes.size())
    throw InputError(file, fmt::format("byte {}", end),
                     fmt::format("{} bytes behind the tune", bytes.size() - end));
  pugi::xml_document shown;
  shown.load_string(DocumentOf(tune).c_str());
  RequireFinite(file, shown.document_element(), "Tune");
  return tune;
}

}  // namespace

TuneFile LoadTune(const std::string& file) {
  const std::string bytes = ReadAll(file);
  if (bytes.empty()) throw InputError(file, "", "the file is empty");
  if (IsDocument(bytes)) return FromDocument(file, bytes);
  return {FromBinary(file, bytes), TuneForm::Binary, {}};
}

std::string TuneBytes(const Tune& tune, TuneForm form) {
  if (form == TuneForm::Binary) return TslBL::ToBytes(tune);
  return "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n" + DocumentOf(tune);
}

Tune ThroughForm(const Tune& tune, TuneForm form) {
  if (form == TuneForm::Binary) return TslBL::FromBytes<Tune>(TslBL::ToBytes(tune));
  return TslBL::FromXml<Tune>(TslBL::ToXml(tune));
}

TuneForm FormOfName(const std::string& file) {
  const std::wstring name = TslCommon::FromUtf8(file);
  const bool isXml = name.size() >= 4 && TslCommon::EqualsIgnoreCase(name.substr(name.size() - 4), L".xml");
  return isXml ? TuneForm::Xml : TuneForm::Binary;
}

}  // namespace TslTool
