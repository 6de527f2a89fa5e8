#include <tslbl/closed/common/XMLParser.h>

#include <tslbl/closed/common/MessageId.h>
#include <tslbl/closed/common/StringTable.h>
#include <tslbl/closed/common/Text.h>
#include <tslbl/closed/common/XMLResultException.h>
#include <tslbl/closed/common/XMLSpelling.h>
#include <tslbl/closed/common/XMLTree.h>
#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <pugixml.hpp>
#include <vector>

namespace TslCommon {
namespace {

std::wstring TextOf(pugi::xml_node node) {
  std::string text;
  for (pugi::xml_node child : node)
    if (IsXmlText(child)) text += child.value();
  return DecodeXmlText(text);
}

// A folder or a pipe is no document, and opening a pipe would wait for somebody to write.
bool ReadWholeFile(const std::filesystem::path& file, std::string& bytes) {
  std::error_code ignored;
  if (!std::filesystem::is_regular_file(file, ignored)) return false;
  std::ifstream in(file, std::ios::binary);
  char piece[65536];
  while (in.read(piece, sizeof piece) || in.gcount() > 0)
    bytes.append(piece, static_cast<std::size_t>(in.gcount()));
  return in.eof() && !in.bad();
}

}  // namespace

struct XMLParser::Impl {
  // An open element, and for each name the child of that name opened last.
  struct Level {
    pugi::xml_node node;
    std::vector<std::pair<std::string, pugi::xml_node>> opened;
  };

  pugi::xml_document document;
  std::vector<Level> levels;
  std::wstring loadError;

  void Rewind() {
    levels.clear();
    levels.push_back({document, {}});
  }

  pugi::xml_node NextChild(const std::string& name) {
    Level& level = levels.back();
    const auto last = std::ranges::find(level.opened, name, &std::pair<std::string, pugi::xml_node>::first);
    if (last == level.opened.end()) {
      const pugi::xml_node child = level.node.child(name.c_str());
      if (child) level.opened.emplace_back(name, child);
      return child;
    }
    const pugi::xml_node next = last->second.next_sibling(name.c_str());
    if (next) last->second = next;
    return next;
  }
};

XMLParser::XMLParser() : impl_(std::make_unique<Impl>()) { impl_->Rewind(); }
XMLParser::~XMLParser() = default;

bool XMLParser::LoadFile(const std::wstring& path) {
  std::string bytes;
  if (ReadWholeFile(ToUtf8(path), bytes)) return Accept(bytes, Coding::OfTheDocument);
  impl_->document.reset();
  impl_->Rewind();
  impl_->loadError = L"the file cannot be read";
  return false;
}

bool XMLParser::LoadText(const std::wstring& xml) { return Accept(ToUtf8(xml), Coding::Utf8); }

bool XMLParser::Accept(std::string_view bytes, Coding coding) {
  const auto encoding = coding == Coding::Utf8 ? pugi::encoding_utf8 : pugi::encoding_auto;
  impl_->loadError = LoadXmlTree(bytes, encoding, impl_->document);
  impl_->Rewind();
  return impl_->loadError.empty();
}

const std::wstring& XMLParser::QLoadError() const { return impl_->loadError; }

bool XMLParser::StartNode(const wchar_t* name) {
  const pugi::xml_node child = impl_->NextChild(EncodeXmlName(name));
  if (!child) return false;
  impl_->levels.push_back({child, {}});
  return true;
}

void XMLParser::StartRequiredNode(const wchar_t* name) {
  if (StartNode(name)) return;
  std::wstring message = LoadTslCommonResourceStr(kElementMissing);
  message.replace(message.find(L"%s"), 2, name);
  throw CreateXmlResult(L"XMLParser", L"StartRequiredNode", __LINE__, kElementMissing, message);
}

void XMLParser::EndNode() {
  if (impl_->levels.size() > 1) impl_->levels.pop_back();
}

bool XMLParser::QNode(const wchar_t* name, std::wstring& text) const {
  const pugi::xml_node child = impl_->levels.back().node.child(EncodeXmlName(name).c_str());
  if (!child) return false;
  text = TextOf(child);
  return true;
}

bool XMLParser::QAttribute(const wchar_t* name, std::wstring& text) const {
  const pugi::xml_attribute attribute = impl_->levels.back().node.attribute(EncodeXmlName(name).c_str());
  if (!attribute) return false;
  text = DecodeXmlText(attribute.value());
  return true;
}

std::wstring XMLParser::QText() const { return TextOf(impl_->levels.back().node); }

bool XMLParser::StartList(const wchar_t* name, int& count) {
  if (!StartNode(name)) return false;
  count = 0;
  for (pugi::xml_node child : impl_->levels.back().node)
    if (child.type() == pugi::node_element) ++count;
  return true;
}

void XMLParser::EndList() { EndNode(); }

}  // namespace TslCommon
