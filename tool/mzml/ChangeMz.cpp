#include <tool/mzml/ChangeMz.h>

#include <fmt/format.h>

#include <tool/io/EncodeArray.h>
#include <tool/io/MzMLArray.h>
#include <tool/io/MzMLHead.h>
#include <tool/io/MzMLTerms.h>
#include <algorithm>
#include <stdexcept>
#include <string>
#include <vector>

namespace TslTool {
namespace {

constexpr CvTerm kObserved[] = {Cv::kBasePeakMz, Cv::kLowestMz, Cv::kHighestMz};

void ChangeTerms(const pugi::xml_node& parent, const MzMap& map) {
  for (pugi::xml_node& param : ChildrenOf(parent, "cvParam")) {
    const std::string_view accession = param.attribute("accession").value();
    const auto mz = ToNumber<double>(param.attribute("value").value());
    if (mz && std::ranges::find(kObserved, accession, &CvTerm::accession) != std::end(kObserved))
      param.attribute("value") = fmt::format("{}", map(*mz)).c_str();
  }
}

std::uint64_t PointsOf(const pugi::xml_node& spectrum, const pugi::xml_node& array) {
  const pugi::xml_attribute own = array.attribute("arrayLength");
  const auto points = ToNumber<std::uint64_t>((own ? own : spectrum.attribute("defaultArrayLength")).value());
  if (!points) throw std::runtime_error("the m/z array has no length that is a number");
  return *points;
}

// Terms that stand in groups are written out, as those of its form hold no more.
void ReplaceArray(pugi::xml_node& array, const std::vector<double>& values) {
  pugi::xml_document made;
  AddArray(made, {Cv::kMzArray, "", Cv::kMzUnit}, values);
  pugi::xml_node fresh = made.first_child();
  for (const pugi::xml_node& param : ChildrenOf(array, "cvParam")) {
    const std::string_view accession = param.attribute("accession").value();
    if (!IsArrayForm(accession) && accession != Cv::kMzArray.accession)
      fresh.insert_copy_before(param, fresh.child("binary"));
  }
  for (const pugi::xml_node& param : ChildrenOf(array, "userParam"))
    fresh.insert_copy_before(param, fresh.child("binary"));
  for (const char* kept : {"arrayLength", "dataProcessingRef"})
    if (const pugi::xml_attribute attribute = array.attribute(kept)) fresh.append_copy(attribute);
  TakePrefix(fresh, array);
  pugi::xml_node parent = array.parent();
  parent.insert_copy_after(fresh, array);
  parent.remove_child(array);
}

}  // namespace

void TakePrefix(pugi::xml_node element, const pugi::xml_node& like) {
  const std::string name = like.name();
  const std::size_t sign = name.find(':');
  if (sign == std::string::npos || element.type() != pugi::node_element) return;
  if (LocalName(element.name()) == element.name())
    element.set_name((name.substr(0, sign + 1) + element.name()).c_str());
  for (const pugi::xml_node& child : element.children()) TakePrefix(child, like);
}

void ChangeMz(pugi::xml_node& spectrum, const MzMLGroups& groups, const MzMap& map) {
  ChangeTerms(spectrum, map);
  ChangeTerms(ChildOf(spectrum, "spectrumDescription"), map);  // of mzML 1.0
  for (pugi::xml_node& array : ChildrenOf(ChildOf(spectrum, "binaryDataArrayList"), "binaryDataArray")) {
    const MzMLTerms terms = groups.TermsOf(array);
    if (!terms.Find(Cv::kMzArray.accession)) continue;
    const std::uint64_t points = PointsOf(spectrum, array);
    if (points == 0) continue;
    std::vector<double> mz = DecodeArray(array, terms, "m/z", points).values;
    std::ranges::transform(mz, mz.begin(), map);
    ReplaceArray(array, mz);
  }
}

}  // namespace TslTool
