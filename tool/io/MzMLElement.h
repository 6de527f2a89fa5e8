#pragma once
// One element of an mzML file as a tree: its children by their names without a namespace prefix, and the
// terms of the vocabulary that say what it is.

#include <map>
#include <pugixml.hpp>
#include <string>
#include <string_view>
#include <vector>

namespace TslTool {

// Fills `document` with the text of one element, UTF-8. Throws std::runtime_error if it is not well formed.
// Comments and processing instructions are left out.
void ParseElement(std::string_view text, pugi::xml_document& document);

// "spectrum" for "spectrum" and for "ms:spectrum".
std::string_view LocalName(std::string_view name);

// The first child of that local name; an empty node if there is none.
pugi::xml_node ChildOf(const pugi::xml_node& parent, std::string_view name);
std::vector<pugi::xml_node> ChildrenOf(const pugi::xml_node& parent, std::string_view name);

// All the text of an element, CDATA sections included.
std::string TextOf(const pugi::xml_node& element);

// A <cvParam>.
struct MzMLTerm {
  std::string accession, value, unit;  // the unit's accession
};

struct MzMLTerms : std::vector<MzMLTerm> {
  // Null if it is not there.
  const MzMLTerm* Find(std::string_view accession) const;
  void Append(const MzMLTerms& others) { insert(end(), others.begin(), others.end()); }
};

// The referenceable groups of terms of a file.
class MzMLGroups {
 public:
  void Add(const pugi::xml_node& group);
  // The terms of an element: first its own, then those of the groups that it refers to. Throws
  // std::runtime_error for a group that the file has not.
  MzMLTerms TermsOf(const pugi::xml_node& element) const;

 private:
  std::map<std::string, MzMLTerms> groups_;
};

}  // namespace TslTool
