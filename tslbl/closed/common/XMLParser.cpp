#include <tslbl/closed/common/XMLParser.h>

#include <tslbl/closed/common/MessageId.h>
#include <tslbl/closed/common/StringTable.h>
#include <tslbl/closed/common/Text.h>
#include <tslbl/closed/common/XMLResultException.h>
#include <tslbl/closed/common/XMLSpelling.h>
#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <pugixml.hpp>
#include <vector>

namespace TslCommon {
namespace {

constexpr int kMaxDepth = 256;
// Line ends stay as they are: a comment that a user wrote on two lines keeps them. What
// stands beside the document's one element, and a DOCTYPE, is kept to be refused.
constexpr unsigned kParseOptions =
    (pugi::parse_default | pugi::parse_ws_pcdata_single | pugi::parse_fragment | pugi::parse_doctype) &
    ~unsigned{pugi::parse_eol};

std::wstring Place(std::string_view bytes, std::ptrdiff_t offset) {
  const auto end = bytes.begin() + std::clamp<std::ptrdiff_t>(offset, 0, std::ssize(bytes));
  const auto line = 1 + std::count(bytes.begin(), end, '\n');
  const auto lineStart = std::find(std::make_reverse_iterator(end), bytes.rend(), '\n').base();
  return L"line " + ToText(std::int64_t{line}) + L", column " + ToText(std::int64_t{1 + (end - lineStart)});
}

// Walks without recursion, since a document may be of any depth.
bool TooDeep(pugi::xml_node root) {
  int depth = 0;
  pugi::xml_node node = root;
  for (;;) {
    if (pugi::xml_node child = node.first_child()) {
      node = child;
      if (++depth > kMaxDepth) return true;
      continue;
    }
    while (node != root && !node.next_sibling()) {
      node = node.parent();
      --depth;
    }
    if (node == root) return false;
    node = node.next_sibling();
  }
}

bool IsText(pugi::xml_node node) {
  return node.type() == pugi::node_pcdata || node.type() == pugi::node_cdata;
}

std::wstring TextOf(pugi::xml_node node) {
  std::string text;
  for (pugi::xml_node child : node)
    if (IsText(child)) text += child.value();
  return DecodeXmlText(text);
}

// Why a document that could be parsed is refused; empty if it is not.
std::wstring Refusal(const pugi::xml_document& document, std::string_view bytes) {
  int elements = 0;
  for (pugi::xml_node node : document) {
    const auto at = [&](const wchar_t* what) {
      const auto start = static_cast<std::size_t>(node.offset_debug());
      const auto seen = std::min(bytes.find_first_not_of(" \t\r\n", start), bytes.size());
      return Place(bytes, static_cast<std::ptrdiff_t>(seen)) + L": " + what;
    };
    // Its entities would not be expanded, so that text would be read wrongly.
    if (node.type() == pugi::node_doctype) return at(L"A document type declaration is not supported");
    if (IsText(node)) return at(L"Text outside the document element");
    if (node.type() == pugi::node_element && ++elements > 1) return at(L"More than one document element");
  }
  if (elements == 0) return Place(bytes, std::ssize(bytes)) + L": No document element found";
  return TooDeep(document) ? L"elements are nested too deeply" : L"";
}

// Whether the document is in characters of two or four bytes, by its mark or its first "<".
bool IsWide(std::string_view bytes) {
  return bytes.starts_with("\xFE\xFF") || bytes.starts_with("\xFF\xFE") ||
         bytes.substr(0, 4).find('\0') != std::string_view::npos;
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

  // Why the bytes are refused as a document; empty if they are not.
  std::wstring Load(std::string_view bytes, Coding coding) {
    // What follows a zero byte would be left out silently.
    if (const auto zero = bytes.find('\0'); zero != std::string_view::npos && !IsWide(bytes))
      return Place(bytes, static_cast<std::ptrdiff_t>(zero)) + L": A zero byte";
    const auto encoding = coding == Coding::Utf8 ? pugi::encoding_utf8 : pugi::encoding_auto;
    const auto result = document.load_buffer(bytes.data(), bytes.size(), kParseOptions, encoding);
    if (!result) return Place(bytes, result.offset) + L": " + FromUtf8(result.description());
    return Refusal(document, bytes);
  }

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
  impl_->loadError = impl_->Load(bytes, coding);
  if (!impl_->loadError.empty()) impl_->document.reset();
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
