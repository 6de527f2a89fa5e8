#include <tool/io/MzMLElement.h>

#include <tool/frame/Printable.h>

#include <algorithm>
#include <stdexcept>

namespace TslTool {

namespace {

MzMLTerms OwnTerms(const pugi::xml_node& element) {
  MzMLTerms terms;
  for (const pugi::xml_node& param : ChildrenOf(element, "cvParam"))
    terms.push_back({param.attribute("accession").value(), param.attribute("value").value(),
                     param.attribute("unitAccession").value()});
  return terms;
}

}  // namespace

void ParseElement(std::string_view text, pugi::xml_document& document) {
  const auto result =
      document.load_buffer(text.data(), text.size(), pugi::parse_default, pugi::encoding_utf8);
  if (!result)
    throw std::runtime_error("is not well formed at character " + std::to_string(result.offset + 1) +
                             " of the element");
}

std::string_view LocalName(std::string_view name) { return name.substr(name.find(':') + 1); }

pugi::xml_node ChildOf(const pugi::xml_node& parent, std::string_view name) {
  return parent.find_child([&](const pugi::xml_node& child) { return LocalName(child.name()) == name; });
}

std::vector<pugi::xml_node> ChildrenOf(const pugi::xml_node& parent, std::string_view name) {
  std::vector<pugi::xml_node> found;
  for (const pugi::xml_node& child : parent.children())
    if (LocalName(child.name()) == name) found.push_back(child);
  return found;
}

std::string TextOf(const pugi::xml_node& element) {
  std::string text;
  for (const pugi::xml_node& part : element.children())
    if (part.type() == pugi::node_pcdata || part.type() == pugi::node_cdata) text += part.value();
  return text;
}

const MzMLTerm* MzMLTerms::Find(std::string_view accession) const {
  const auto at = std::ranges::find(*this, accession, &MzMLTerm::accession);
  return at == end() ? nullptr : &*at;
}

void MzMLGroups::Add(const pugi::xml_node& group) {
  groups_[group.attribute("id").value()] = OwnTerms(group);
}

MzMLTerms MzMLGroups::TermsOf(const pugi::xml_node& element) const {
  MzMLTerms terms = OwnTerms(element);
  for (const pugi::xml_node& reference : ChildrenOf(element, "referenceableParamGroupRef")) {
    const std::string name = reference.attribute("ref").value();
    const auto group = groups_.find(name);
    if (group == groups_.end())
      throw std::runtime_error("refers to a group of parameters that the file has not: \"" + Printable(name) +
                               "\"");
    terms.Append(group->second);
  }
  return terms;
}

}  // namespace TslTool
