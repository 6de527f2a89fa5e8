#include <tslbl/closed/common/XMLBuilder.h>

#include <tslbl/closed/common/Text.h>
#include <tslbl/closed/common/XMLSpelling.h>
#include <charconv>
#include <pugixml.hpp>
#include <string>

namespace TslCommon {
namespace {

std::string FullPrecision(const std::vector<double>& values) {
  std::string text;
  char buffer[32];
  for (const double value : values) {
    if (!text.empty()) text += ' ';
    text.append(buffer, std::to_chars(buffer, buffer + sizeof buffer, value).ptr);
  }
  return text;
}

// A stream would take memory that is short for an end of the document.
class TextWriter final : public pugi::xml_writer {
 public:
  void write(const void* data, std::size_t size) override {
    text.append(static_cast<const char*>(data), size);
  }
  std::string text;
};

}  // namespace

struct XMLBuilder::Impl {
  pugi::xml_document document;
  pugi::xml_node open = document;
};

XMLBuilder::XMLBuilder() : impl_(std::make_unique<Impl>()) {}
XMLBuilder::~XMLBuilder() = default;

std::wstring XMLBuilder::QXML() const {
  TextWriter out;
  // Values stand in the tree with their markup escaped already.
  constexpr unsigned kFormat = pugi::format_indent | pugi::format_no_declaration | pugi::format_no_escapes;
  impl_->document.save(out, "  ", kFormat, pugi::encoding_utf8);
  return FromUtf8(out.text);
}

void XMLBuilder::StartNode(const wchar_t* name) const {
  impl_->open = impl_->open.append_child(EncodeXmlName(name).c_str());
}

void XMLBuilder::EndNode() const {
  if (impl_->open != impl_->document) impl_->open = impl_->open.parent();
}

void XMLBuilder::WNode(const wchar_t* name, const std::wstring& text) const {
  StartNode(name);
  WText(text);
  EndNode();
}

void XMLBuilder::WAttribute(const wchar_t* name, const std::wstring& text) const {
  const std::string encoded = EncodeXmlName(name);
  pugi::xml_attribute attribute = impl_->open.attribute(encoded.c_str());
  if (!attribute) attribute = impl_->open.append_attribute(encoded.c_str());
  attribute.set_value(EncodeXmlAttribute(text).c_str());
}

void XMLBuilder::WText(const std::wstring& text) const {
  if (!text.empty()) impl_->open.append_child(pugi::node_pcdata).set_value(EncodeXmlText(text).c_str());
}

void XMLBuilder::StartList(const wchar_t* name) const { StartNode(name); }
void XMLBuilder::EndList() const { EndNode(); }

void XMLBuilder::WProfileNode(const std::vector<double>& x, const std::vector<double>& y) const {
  pugi::xml_node profile = impl_->open.append_child("Profile");
  profile.append_attribute("Count").set_value(static_cast<unsigned long long>(x.size()));
  profile.append_child("X").text().set(FullPrecision(x).c_str());
  profile.append_child("Y").text().set(FullPrecision(y).c_str());
}

}  // namespace TslCommon
