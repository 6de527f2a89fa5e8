#include <tool/io/IonMobility.h>

#include <tool/io/MzMLArray.h>

#include <algorithm>
#include <functional>
#include <stdexcept>
#include <string>
#include <string_view>

namespace TslTool {

namespace {

// Mean, raw and deconvoluted arrays of ion mobility, of its reduced inverse and of drift time.
constexpr std::string_view kKinds[] = {"MS:1002477", "MS:1002816", "MS:1002893", "MS:1003006", "MS:1003007",
                                       "MS:1003008", "MS:1003153", "MS:1003154", "MS:1003155", "MS:1003156"};

bool IsKind(const MzMLTerm& term) { return std::ranges::find(kKinds, term.accession) != std::end(kKinds); }

bool NamesMobility(std::string text) {
  std::ranges::transform(text, text.begin(),
                         [](char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c | 0x20) : c; });
  return text.find("mobility") != std::string::npos || text.find("drift time") != std::string::npos;
}

bool NamesMobility(const pugi::xml_node& param) {
  return NamesMobility(std::string(param.attribute("name").value())) ||
         NamesMobility(std::string(param.attribute("value").value()));
}

}  // namespace

bool IsIonMobilityArray(const pugi::xml_node& array, const MzMLTerms& terms) {
  const auto isNamed = [](const pugi::xml_node& param) { return NamesMobility(param); };
  return std::ranges::any_of(terms, IsKind) || std::ranges::any_of(ChildrenOf(array, "cvParam"), isNamed) ||
         std::ranges::any_of(ChildrenOf(array, "userParam"), isNamed);
}

bool HasOneMobility(const pugi::xml_node& array, const MzMLTerms& terms, std::uint64_t points) {
  MzMLTerms form = terms;
  std::erase_if(form, IsKind);
  try {
    const std::vector<double> values = DecodeArray(array, form, "ion mobility", points).values;
    return std::ranges::adjacent_find(values, std::not_equal_to<>()) == values.end();
  } catch (const std::runtime_error&) {
    return false;
  }
}

}  // namespace TslTool
