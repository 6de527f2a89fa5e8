#include <tool/tune/TuneFile.h>

#include <fmt/format.h>
#include <pugixml.hpp>

#include <tool/DocumentCheck.h>
#include <tool/io/ByteSource.h>
#include <tool/io/InputError.h>
#include <tslbl/closed/common/BinaryStream.h>
#include <tslbl/closed/common/Text.h>
#include <tslbl/closed/common/XMLBuilder.h>
#include <tslbl/closed/common/XMLParser.h>
#include <tslbl/closed/common/XMLResultException.h>
#include <sstream>

namespace TslTool {
namespace {

using TslBL::Tune;

// A tune takes a few kilobytes.
constexpr std::size_t kLargest = 64 << 20;

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

std::string ToXml(const Tune& tune) {
  TslCommon::XMLBuilder builder;
  tune.Serialize(builder);
  return TslCommon::ToUtf8(builder.QXML());
}

// With the elements of both kinds of probe: each is read under either.
void AddOtherProbe(pugi::xml_document& taken, Tune tune) {
  const bool isApci = tune.Source.Type == TslBL::Probes::APCI;
  tune.Source.Type = isApci ? TslBL::Probes::ESI : TslBL::Probes::APCI;
  pugi::xml_document other;
  other.load_string(ToXml(tune).c_str());
  pugi::xml_node source = taken.document_element().child("Source");
  for (const pugi::xml_node child : other.document_element().child("Source"))
    if (!source.child(child.name())) source.append_copy(child);
}

// A probe is written with its number, and may be read without.
std::string Refuse(const DocumentValue& value) {
  using TslBL::Probes;
  const std::string reason = RefuseOther(value);
  if (reason.empty() || !value.place.ends_with("/Source/Type")) return reason;
  const std::wstring written = TslCommon::FromUtf8(value.written);
  const bool isName = TslCommon::EqualsIgnoreCase(written, Probes::GetNameNoId(Probes::GetId(written)));
  return isName ? "" : reason;
}

Tune FromDocument(const std::string& file, const std::string& bytes) {
  TslCommon::XMLParser parser;
  pugi::xml_document written;
  const pugi::xml_parse_result parsed = written.load_buffer(bytes.data(), bytes.size());
  std::ostringstream utf8;
  written.save(utf8, "", pugi::format_raw | pugi::format_no_declaration, pugi::encoding_utf8);
  // The library's own reader says what is wrong, with line and column.
  const std::wstring text = TslCommon::FromUtf8(parsed ? utf8.str() : bytes);
  if (!parser.LoadText(text)) throw InputError(file, "", TslCommon::ToUtf8(parser.QLoadError()));

  Tune tune;
  try {
    tune.Serialize(parser);
  } catch (const TslCommon::XMLResultException& e) {
    throw InputError(file, "", e.what());
  }
  pugi::xml_document taken;
  taken.load_string(ToXml(tune).c_str());
  AddOtherProbe(taken, tune);
  CheckDocument(file, written.child("Tune"), taken.document_element(), Refuse);
  return tune;
}

Tune FromBinary(const std::string& file, const std::string& bytes) {
  std::istringstream in(bytes, std::ios::binary);
  TslCommon::BinaryReader reader(in);
  Tune tune;
  try {
    tune.Serialize(reader);
  } catch (const std::exception& e) {
    throw InputError(file, "", fmt::format("is no tune: {}", e.what()));
  }
  const auto end = in.tellg();
  if (end != static_cast<std::streamoff>(bytes.size()))
    throw InputError(file, fmt::format("byte {}", static_cast<std::streamoff>(end)),
                     fmt::format("{} bytes behind the tune", bytes.size() - static_cast<std::size_t>(end)));
  return tune;
}

std::string ToBinary(const Tune& tune) {
  std::ostringstream out(std::ios::binary);
  TslCommon::BinaryWriter writer(out);
  tune.Serialize(writer);
  return out.str();
}

}  // namespace

TuneFile LoadTune(const std::string& file) {
  const std::string bytes = ReadAll(file);
  if (bytes.empty()) throw InputError(file, "", "the file is empty");
  if (IsDocument(bytes)) return {FromDocument(file, bytes), TuneForm::Xml};
  return {FromBinary(file, bytes), TuneForm::Binary};
}

std::string TuneBytes(const Tune& tune, TuneForm form) {
  if (form == TuneForm::Binary) return ToBinary(tune);
  return "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n" + ToXml(tune);
}

Tune ThroughForm(const Tune& tune, TuneForm form) {
  Tune again;
  if (form == TuneForm::Binary) {
    std::istringstream in(ToBinary(tune), std::ios::binary);
    TslCommon::BinaryReader reader(in);
    again.Serialize(reader);
  } else {
    TslCommon::XMLParser parser;
    parser.LoadText(TslCommon::FromUtf8(ToXml(tune)));
    again.Serialize(parser);
  }
  return again;
}

TuneForm FormOfName(const std::string& file) {
  const std::wstring name = TslCommon::FromUtf8(file);
  const bool isXml = name.size() >= 4 && TslCommon::EqualsIgnoreCase(name.substr(name.size() - 4), L".xml");
  return isXml ? TuneForm::Xml : TuneForm::Binary;
}

}  // namespace TslTool
