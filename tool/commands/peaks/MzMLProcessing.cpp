#include <tool/commands/peaks/MzMLProcessing.h>

#include <fmt/format.h>

#include <tool/chain/ChainFile.h>
#include <pugixml.hpp>
#include <string>
#include <string_view>
#include <utility>

namespace TslTool {
namespace {

struct Step {
  std::string_view command;  // as a chain file names it
  std::vector<CvTerm> terms;
};

using Params = std::vector<std::pair<std::string, std::string>>;

const Step* FindStep(std::string_view command) {
  static const Step kSteps[] = {{"Aerosol Filter", {Cv::kDataFiltering}},
                                {"Smooth", {Cv::kSmoothing}},
                                {"Baseline Subtract", {Cv::kBaselineReduction}},
                                {"Threshold Subtract", {Cv::kLowIntensityRemoval}},
                                {"Peak Detect", {Cv::kPeakPicking, Cv::kHeightPeakPicking}}};
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

}  // namespace

std::vector<ProcessingMethod> MethodsOf(const PeakOrigin& origin) {
  pugi::xml_document document;
  document.load_string(ChainToXml(origin.chain).c_str());
  std::vector<ProcessingMethod> methods;
  if (origin.scale) methods.push_back({{Cv::kNormalization}, {{"factor", fmt::format("{}", *origin.scale)}}});
  Params params;
  for (const pugi::xml_node& command : document.document_element().children("CurveEval")) {
    for (const pugi::xml_node& told : command.children()) Collect(told, told.name(), params);
    if (const Step* step = FindStep(command.attribute("Type").value()))
      methods.push_back({step->terms, std::exchange(params, {})});
  }
  methods.push_back({{Cv::kConversion}, std::move(params)});
  return methods;
}

}  // namespace TslTool
