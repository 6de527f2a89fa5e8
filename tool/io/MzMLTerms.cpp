#include <tool/io/MzMLTerms.h>

#include <utility>

namespace TslTool {
namespace {

struct StringWriter final : pugi::xml_writer {
  void write(const void* data, std::size_t size) override {
    text.append(static_cast<const char*>(data), size);
  }
  std::string text;
};

void Set(pugi::xml_node& element, const char* name, std::string_view value) {
  element.append_attribute(name) = std::string(value).c_str();
}

std::string_view VocabularyOf(const CvTerm& term) {
  return term.accession.substr(0, term.accession.find(':'));
}

}  // namespace

void AddTerm(pugi::xml_node& parent, const CvTerm& term, const std::string& value) {
  pugi::xml_node param = parent.append_child("cvParam");
  Set(param, "cvRef", VocabularyOf(term));
  Set(param, "accession", term.accession);
  Set(param, "name", term.name);
  Set(param, "value", value);
}

void AddTerm(pugi::xml_node& parent, const CvTerm& term, const std::string& value, const CvTerm& unit) {
  AddTerm(parent, term, value);
  pugi::xml_node param = parent.last_child();
  Set(param, "unitCvRef", VocabularyOf(unit));
  Set(param, "unitAccession", unit.accession);
  Set(param, "unitName", unit.name);
}

void AddUserParam(pugi::xml_node& parent, const std::string& name, const std::string& value) {
  pugi::xml_node param = parent.append_child("userParam");
  Set(param, "name", name);
  Set(param, "value", value);
}

pugi::xml_node AddList(pugi::xml_node& parent, const char* name, std::size_t count) {
  pugi::xml_node list = parent.append_child(name);
  list.append_attribute("count") = std::to_string(count).c_str();
  return list;
}

std::string ElementText(const pugi::xml_node& element, unsigned depth) {
  StringWriter writer;
  element.print(writer, "  ", pugi::format_indent, pugi::encoding_utf8, depth);
  return std::move(writer.text);
}

}  // namespace TslTool
