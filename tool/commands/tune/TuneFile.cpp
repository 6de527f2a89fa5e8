#include <tool/commands/tune/TuneFile.h>

#include <tslbl/closed/common/Text.h>

namespace TslTool {
namespace {

using TslBL::Tune;

// A tune takes a few kilobytes.
constexpr RecordKind kKind = {.name = "tune", .largest = 1 << 20};

// A probe is written with its number, and may be read without.
bool IsProbeWithoutNumber(const DocumentValue& value) {
  using TslBL::Probes;
  if (!value.place.ends_with("/Source/Type")) return false;
  const std::wstring written = TslCommon::FromUtf8(value.written);
  return TslCommon::EqualsIgnoreCase(written, Probes::GetNameNoId(Probes::GetId(written)));
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
  const WrittenDocument written(file, bytes);
  const Tune tune = RecordOfDocument<Tune>(file, written);
  pugi::xml_document taken;
  taken.load_string(DocumentOf(tune).c_str());
  std::vector<std::string> missing = MissingInTune(written.Root(), taken.document_element());
  AddOtherProbe(taken.document_element(), tune);
  CheckDocument(file, written.Root(), taken.document_element(), RefuseInTune);
  return {tune, TuneForm::Xml, missing};
}

}  // namespace

void AddOtherProbe(pugi::xml_node taken, Tune tune) {
  const bool isApci = tune.Source.Type == TslBL::Probes::APCI;
  tune.Source.Type = isApci ? TslBL::Probes::ESI : TslBL::Probes::APCI;
  pugi::xml_document other;
  other.load_string(DocumentOf(tune).c_str());
  pugi::xml_node source = taken.child("Source");
  for (const pugi::xml_node child : other.document_element().child("Source"))
    if (!source.child(child.name())) source.append_copy(child);
}

std::string RefuseInTune(const DocumentValue& value) {
  std::string reason = RefuseOther(value);
  return IsProbeWithoutNumber(value) ? "" : reason;
}

std::vector<std::string> MissingInTune(const pugi::xml_node& written, const pugi::xml_node& taken) {
  std::vector<std::string> missing;
  AddMissing(written, taken, "Tune", missing);
  return missing;
}

TuneFile LoadTune(const std::string& file) {
  const std::string bytes = ReadRecordFile(file, kKind);
  if (IsDocument(bytes)) return FromDocument(file, bytes);
  return {RecordOfBytes<Tune>(file, bytes, kKind), TuneForm::Binary, {}};
}

}  // namespace TslTool
