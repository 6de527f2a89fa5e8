#include <tool/io/MzMLHead.h>

#include <tool/frame/Printable.h>

#include <stdexcept>
#include <utility>

namespace TslTool {

namespace {

// N of "... KEY=N ..." in an id.
std::optional<std::uint32_t> NumberOf(std::string_view key, std::string_view id) {
  for (std::size_t at = id.find(key); at != std::string_view::npos; at = id.find(key, at + 1)) {
    if (at > 0 && id[at - 1] != ' ') continue;
    const std::string_view rest = id.substr(at + key.size());
    return ToNumber<std::uint32_t>(rest.substr(0, rest.find(' ')));
  }
  return std::nullopt;
}

}  // namespace

std::optional<std::uint32_t> NumberInId(std::string_view id) { return NumberOf("scan=", id); }

std::uint32_t FunctionInId(std::string_view id) {
  const auto function = NumberOf("function=", id);
  return function ? *function : NumberOf("experiment=", id).value_or(0);
}

Scan::Representation RepresentationOf(const MzMLTerms& terms) {
  if (terms.Find("MS:1000128")) return Scan::Profile;
  if (terms.Find("MS:1000127")) return Scan::Centroid;
  return Scan::Unknown;
}

int LevelOf(const MzMLTerms& terms) {
  const MzMLTerm* term = terms.Find("MS:1000511");
  if (!term) return 0;
  const auto level = ToNumber<int>(term->value);
  if (!level || *level < 1) throw std::runtime_error("the MS level is \"" + Printable(term->value) + "\"");
  return *level;
}

int PolarityOf(const MzMLTerms& terms) {
  if (terms.Find("MS:1000130")) return 1;
  return terms.Find("MS:1000129") ? -1 : 0;
}

std::optional<double> SecondsIn(std::string_view unit) {
  constexpr std::pair<std::string_view, double> kUnits[] = {{"UO:0000010", 1.0},  {"UO:0000028", 1e-3},
                                                            {"UO:0000031", 60.0}, {"UO:0000032", 3600.0},
                                                            {"MS:1000038", 60.0}, {"MS:1000039", 1.0}};
  for (const auto& [accession, seconds] : kUnits)
    if (accession == unit) return seconds;
  return std::nullopt;
}

}  // namespace TslTool
