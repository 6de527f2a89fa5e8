#include <tool/mzml/MzMLHeader.h>

#include <fmt/format.h>

#include <tool/frame/StandardInput.h>
#include <tool/frame/Visible.h>
#include <tool/io/InputPath.h>
#include <tool/io/OpenScans.h>
#include <tool/io/Sha1.h>
#include <tslbl/Version.h>
#include <algorithm>
#include <filesystem>
#include <iterator>

namespace TslTool {
namespace {

namespace fs = std::filesystem;

constexpr const char* kNamespace = "http://psi.hupo.org/ms/mzml";
constexpr const char* kSchemas = "http://www.w3.org/2001/XMLSchema-instance";
constexpr const char* kSoftware = "tslbl";
constexpr const char* kInstrument = "IC1";
constexpr const char* kSource = "SF1";
constexpr const char* kProcessing = "evaluation";

// Of standard input nobody knows later what it was.
bool IsNamedFile(const std::string& input) {
  std::error_code unknown;
  return input != kStandardInputPath && fs::is_regular_file(input, unknown);
}

bool IsOwnInstrument(const std::string& input) { return input.empty() || IsDatabase(input); }

// RFC 3986, with the signs between folders.
std::string FileUri(const std::string& path) {
  constexpr std::string_view kPlain = "-._~/";
  std::string uri = "file://";
  for (const char c : path) {
    const bool isLetter = (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9');
    uri += isLetter || kPlain.find(c) != std::string_view::npos
               ? std::string(1, c)
               : fmt::format("%{:02X}", static_cast<unsigned char>(c));
  }
  return uri;
}

pugi::xml_node AddRoot(pugi::xml_node& parent, const char* name, const char* schema) {
  pugi::xml_node root = parent.append_child(name);
  root.append_attribute("xmlns") = kNamespace;
  root.append_attribute("xmlns:xsi") = kSchemas;
  root.append_attribute("xsi:schemaLocation") = fmt::format("{} {}", kNamespace, schema).c_str();
  return root;
}

void AddVocabularies(pugi::xml_node& mzml) {
  struct Vocabulary {
    const char* id;
    const char* name;
    const char* uri;
  };
  constexpr Vocabulary kVocabularies[] = {
      {"MS", "Proteomics Standards Initiative Mass Spectrometry Ontology",
       "https://raw.githubusercontent.com/HUPO-PSI/psi-ms-CV/master/psi-ms.obo"},
      {"UO", "Unit Ontology",
       "https://raw.githubusercontent.com/bio-ontology-research-group/unit-ontology/master/unit.obo"}};
  pugi::xml_node list = AddList(mzml, "cvList", std::size(kVocabularies));
  for (const Vocabulary& vocabulary : kVocabularies) {
    pugi::xml_node cv = list.append_child("cv");
    cv.append_attribute("id") = vocabulary.id;
    cv.append_attribute("fullName") = vocabulary.name;
    cv.append_attribute("URI") = vocabulary.uri;
  }
}

// The vocabulary has no term for the format of runs, and a source file must have one.
bool IsSourceFile(const std::string& input) { return IsNamedFile(input) && !IsDatabase(input); }

void AddRunFile(pugi::xml_node& content, const std::string& input) {
  AddUserParam(content, "run of raw counts", Visible(fs::path(input).filename().string()));
  AddUserParam(content, "SHA-1 of the run", Sha1OfFile(input));
}

void AddSource(pugi::xml_node& description, const MzMLOrigin& origin, const MzMLContent& content) {
  const fs::path path = fs::absolute(origin.input);
  pugi::xml_node list = AddList(description, "sourceFileList", 1);
  pugi::xml_node source = list.append_child("sourceFile");
  source.append_attribute("id") = kSource;
  source.append_attribute("name") = Visible(path.filename().string()).c_str();
  source.append_attribute("location") = FileUri(path.parent_path().string()).c_str();
  if (!origin.ids.accession.empty()) {
    AddTerm(source, {origin.ids.accession, origin.ids.name});
  } else if (content.ids) {
    AddTerm(source, *content.ids);
  }
  AddTerm(source, KindOfFile(origin.input) == FileKind::Xml ? Cv::kMzMLFormat : Cv::kTextFormat);
  AddTerm(source, Cv::kSha1, Sha1OfFile(origin.input));
}

void AddDescription(pugi::xml_node& mzml, const MzMLOrigin& origin, const MzMLContent& content) {
  pugi::xml_node description = mzml.append_child("fileDescription");
  pugi::xml_node what = description.append_child("fileContent");
  for (const CvTerm& type : content.types) AddTerm(what, type);
  if (IsSourceFile(origin.input)) {
    AddSource(description, origin, content);
  } else if (IsNamedFile(origin.input)) {
    AddRunFile(what, origin.input);
  }
}

void AddSoftware(pugi::xml_node& mzml, const std::string& program) {
  pugi::xml_node list = AddList(mzml, "softwareList", 1);
  pugi::xml_node software = list.append_child("software");
  software.append_attribute("id") = kSoftware;
  software.append_attribute("version") = TSLBL_VERSION;
  AddTerm(software, Cv::kCustomSoftware, program);
}

// Of the instrument of a foreign file nothing is known here.
void AddInstrument(pugi::xml_node& mzml, const std::string& input) {
  pugi::xml_node list = AddList(mzml, "instrumentConfigurationList", 1);
  pugi::xml_node instrument = list.append_child("instrumentConfiguration");
  instrument.append_attribute("id") = kInstrument;
  AddTerm(instrument, Cv::kInstrumentModel);
  if (!IsOwnInstrument(input)) return;
  pugi::xml_node components = AddList(instrument, "componentList", 3);
  int order = 0;
  for (const auto& [name, term] : {std::pair("source", Cv::kIonizationType),
                                   {"analyzer", Cv::kQuadrupole},
                                   {"detector", Cv::kDetectorType}}) {
    pugi::xml_node component = components.append_child(name);
    component.append_attribute("order") = ++order;
    AddTerm(component, term);
  }
}

void AddProcessingList(pugi::xml_node& mzml, const MzMLOrigin& origin) {
  pugi::xml_node list = AddList(mzml, "dataProcessingList", 1);
  pugi::xml_node processing = list.append_child("dataProcessing");
  processing.append_attribute("id") = kProcessing;
  for (const ProcessingMethod& method : origin.methods) AddMethod(processing, method, kSoftware);
}

std::string NameOf(const std::string& input) {
  return input.empty() ? "demonstration" : Visible(StemOf(input));
}

// The id of a run is the name of the file that converters make of it. What may not stand in an id is written
// as they read it: _x0020_ for a blank.
std::string AsId(const std::string& name) {
  std::string id;
  for (const char c : name) {
    const bool isLetter = (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || c == '_';
    const bool isInner = (c >= '0' && c <= '9') || c == '-' || c == '.';
    if (isLetter || (isInner && !id.empty())) {
      id += c;
    } else {
      id += fmt::format("_x{:04X}_", static_cast<unsigned char>(c));
    }
  }
  return id;
}

void AddRun(pugi::xml_node& mzml, const std::string& input, const MzMLContent& content) {
  pugi::xml_node run = mzml.append_child("run");
  run.append_attribute("id") = AsId(NameOf(input)).c_str();
  run.append_attribute("defaultInstrumentConfigurationRef") = kInstrument;
  if (IsSourceFile(input)) run.append_attribute("defaultSourceFileRef") = kSource;
  pugi::xml_node spectra = AddList(run, "spectrumList", content.spectra);
  spectra.append_attribute("defaultDataProcessingRef") = kProcessing;
}

}  // namespace

void AddMethod(pugi::xml_node& processing, const ProcessingMethod& told, const char* software) {
  const auto order = std::distance(processing.begin(), processing.end());
  pugi::xml_node method = processing.append_child("processingMethod");
  method.append_attribute("order") = std::to_string(order).c_str();
  method.append_attribute("softwareRef") = software;
  for (const CvTerm& term : told.terms) AddTerm(method, term);
  for (const auto& [name, value] : told.params) AddUserParam(method, name, value);
}

std::string MzMLHeader(const MzMLOrigin& origin, const MzMLContent& content) {
  pugi::xml_document document;
  pugi::xml_node root =
      AddRoot(document, "indexedmzML", "http://psidev.info/files/ms/mzML/xsd/mzML1.1.2_idx.xsd");
  pugi::xml_node mzml = AddRoot(root, "mzML", "http://psidev.info/files/ms/mzML/xsd/mzML1.1.0.xsd");
  mzml.append_attribute("id") = NameOf(origin.input).c_str();
  mzml.append_attribute("version") = "1.1.0";
  AddVocabularies(mzml);
  AddDescription(mzml, origin, content);
  AddSoftware(mzml, origin.program);
  AddInstrument(mzml, origin.input);
  AddProcessingList(mzml, origin);
  AddRun(mzml, origin.input, content);
  const std::string text = ElementText(root, 0);
  return "<?xml version=\"1.0\" encoding=\"utf-8\"?>\n" + text.substr(0, text.rfind(" />")) + ">\n";
}

}  // namespace TslTool
