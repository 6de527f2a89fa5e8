#include <tool/commands/results/RunSections.h>

#include <tool/frame/InputError.h>
#include <tool/io/OpenScans.h>
#include <tool/io/RunFile.h>
#include <tool/simulate/Simulator.h>
#include <tslbl/Version.h>
#include <tslbl/closed/common/Text.h>
#include <tslbl/closed/common/XMLBuilder.h>
#include <tslbl/records/MZRange.h>
#include <tslbl/results/ResultCurve.h>
#include <filesystem>
#include <map>

namespace TslTool {
namespace {

using TslCommon::XMLBuilder;

// Of each kind of scans, before those that were chosen.
constexpr std::size_t kUsualCurves = 2;

std::string TextOf(const XMLBuilder& builder) { return TslCommon::ToUtf8(builder.QXML()); }

std::string SectionOf(const std::string& file, const std::string& title,
                      const std::map<std::uint32_t, TslBL::Tune>& tunes) {
  XMLBuilder builder;
  builder.StartNode(L"Run");
  builder.WAttribute(L"File", TslCommon::FromUtf8(file));
  builder.WAttribute(L"Title", TslCommon::FromUtf8(title));
  builder.WAttribute(L"Writer", TslCommon::FromUtf8("tslbl " TSLBL_VERSION));
  builder.EndNode();
  builder.StartList(L"Tunes");
  for (const auto& pair : tunes) TslBL::AddTune(builder, pair);
  builder.EndList();
  return TextOf(builder);
}

// In one kind of scans a chosen curve has the id of its definition.
std::size_t IdOf(const CurveChoice& choice, std::size_t index) {
  const std::size_t size = kUsualCurves + choice.Count();
  const std::size_t first = index / size * size + 1;
  const std::size_t place = index % size;
  return first + (place < kUsualCurves ? choice.Count() + place : place - kUsualCurves);
}

}  // namespace

std::string RunSection(const std::string& input) {
  if (input.empty()) return SectionOf("", "Demonstration", {{Simulator::kTuneId, Simulator().Tune()}});
  if (CanBeReadAgain(input) && !IsDatabase(input))
    throw InputError(input, "", "is no run of raw counts, of which results are");
  const RunReader run(input);
  return SectionOf(std::filesystem::path(input).filename().string(), run.Title(), run.Tunes());
}

std::string DefinitionSections(const CurveChoice& choice) {
  XMLBuilder builder;
  builder.StartList(L"MZRanges");
  for (const ExtractedRange& range : choice.Ranges()) {
    const TslBL::MZRange record(TslBL::MZRange::Partial, range.from, range.to);
    record.Serialize(builder);
  }
  builder.EndList();
  builder.StartList(L"CurveDefs");
  for (std::uint32_t i = 0; i < choice.Count(); ++i) {
    builder.StartNode(L"Curve");
    builder.WAttribute(L"Id", TslCommon::ToText(i + 1));
    builder.WNode(L"CurveDef", choice.Definition(i));
    builder.EndNode();
  }
  builder.EndList();
  return TextOf(builder);
}

std::string ChromatogramSection(const CurveChoice& choice, const std::vector<Chromatogram>& curves,
                                bool isMean) {
  std::string text = isMean ? "<Chromatograms Values=\"mean\">\n" : "<Chromatograms Values=\"sum\">\n";
  for (std::size_t i = 0; i < curves.size(); ++i) {
    const std::size_t place = i % (kUsualCurves + choice.Count());
    XMLBuilder builder;
    builder.StartNode(L"Chromatogram");
    builder.WAttribute(L"Name", TslCommon::FromUtf8(curves[i].name));
    builder.WAttribute(L"Title", TslCommon::FromUtf8(curves[i].title));
    if (place >= kUsualCurves)
      builder.WAttribute(L"DefId", TslCommon::ToText(static_cast<std::uint32_t>(place - kUsualCurves + 1)));
    TslBL::AddCurve(builder, static_cast<std::uint32_t>(IdOf(choice, i)), curves[i].seconds,
                    curves[i].values);
    builder.EndNode();
    text += TextOf(builder);
  }
  return text + "</Chromatograms>\n";
}

}  // namespace TslTool
