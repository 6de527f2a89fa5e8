#include <tslbl/closed/common/XMLTree.h>

#include <tslbl/closed/common/Text.h>
#include <algorithm>
#include <iterator>

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
    if (IsXmlText(node)) return at(L"Text outside the document element");
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

std::wstring Load(std::string_view bytes, pugi::xml_encoding encoding, pugi::xml_document& document) {
  // What follows a zero byte would be left out silently.
  if (const auto zero = bytes.find('\0'); zero != std::string_view::npos && !IsWide(bytes))
    return Place(bytes, static_cast<std::ptrdiff_t>(zero)) + L": A zero byte";
  const auto result = document.load_buffer(bytes.data(), bytes.size(), kParseOptions, encoding);
  if (!result) return Place(bytes, result.offset) + L": " + FromUtf8(result.description());
  return Refusal(document, bytes);
}

}  // namespace

bool IsXmlText(pugi::xml_node node) {
  return node.type() == pugi::node_pcdata || node.type() == pugi::node_cdata;
}

std::wstring LoadXmlTree(std::string_view bytes, pugi::xml_encoding encoding, pugi::xml_document& document) {
  std::wstring failure = Load(bytes, encoding, document);
  if (!failure.empty()) document.reset();
  return failure;
}

}  // namespace TslCommon
