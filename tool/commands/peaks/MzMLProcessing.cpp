#include <tool/commands/peaks/MzMLProcessing.h>

#include <fmt/format.h>

#include <tool/chain/ChainFile.h>
#include <tool/io/MzMLTerms.h>
#include <string>
#include <string_view>
#include <utility>

namespace TslTool {
namespace {

struct Step {
  std::string_view command;  // as a chain file names it
  CvTerm term;
};
constexpr Step kSteps[] = {{"Aerosol Filter", Cv::kDataFiltering},
                           {"Smooth", Cv::kSmoothing},
                           {"Baseline Subtract", Cv::kBaselineReduction},
                           {"Threshold Subtract", Cv::kLowIntensityRemoval},
                           {"Peak Detect", Cv::kPeakPicking}};

using Params = std::vector<std::pair<std::string, std::string>>;

const Step* FindStep(std::string_view command) {
  for (const Step& step : kSteps)
    if (step.command == command) return &step;
  return nullptr;
}

void Collect(const pugi::xml_node& element, const std::string& place, Params& params) {
  if (std::string_view(element.attribute("InUse").value()) == "false") return;
  for (const pugi::xml_attribute& attribute : element.attributes())
    if (std::string_view(attribute.name()) != "InUse")
      params.emplace_back(place + '@' + attribute.name(), attribute.value());
  if (element.text()) params.emplace_back(place, element.text().get());
  for (const pugi::xml_node& child : element.children())
    if (child.type() == pugi::node_element) Collect(child, place + '/' + child.name(), params);
}

void AddMethod(pugi::xml_node& processing, const char* software, const CvTerm& term, Params& params) {
  const auto order = std::distance(processing.begin(), processing.end());
  pugi::xml_node method = processing.append_child("processingMethod");
  method.append_attribute("order") = std::to_string(order).c_str();
  method.append_attribute("softwareRef") = software;
  AddTerm(method, term);
  if (term.accession == Cv::kPeakPicking.accession) AddTerm(method, Cv::kHeightPeakPicking);
  for (const auto& [name, value] : params) AddUserParam(method, name, value);
  params.clear();
}

}  // namespace

void AddProcessing(pugi::xml_node& processing, const char* software, const PeakOrigin& origin) {
  pugi::xml_document document;
  document.load_string(ChainToXml(origin.chain).c_str());
  Params params;
  if (origin.scale) {
    params.emplace_back("factor", fmt::format("{}", *origin.scale));
    AddMethod(processing, software, Cv::kNormalization, params);
  }
  for (const pugi::xml_node& command : document.document_element().children("CurveEval")) {
    for (const pugi::xml_node& told : command.children()) Collect(told, told.name(), params);
    if (const Step* step = FindStep(command.attribute("Type").value()))
      AddMethod(processing, software, step->term, params);
  }
  AddMethod(processing, software, Cv::kConversion, params);
}

}  // namespace TslTool
