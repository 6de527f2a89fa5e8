#include <tool/chain/ChainFile.h>

#include <fmt/format.h>
#include <pugixml.hpp>

#include <tool/frame/InputError.h>
#include <tool/frame/Printable.h>
#include <tool/io/DocumentCheck.h>
#include <tslbl/closed/common/Text.h>
#include <tslbl/closed/common/XMLBuilder.h>
#include <tslbl/closed/common/XMLParser.h>
#include <cstdlib>
#include <limits>
#include <sstream>
#include <string_view>

namespace TslTool {
namespace {

constexpr const wchar_t* kList = L"CurveEvals";

// What the records take as it comes, but no user can mean: passes that would seem to hang,
// orders that smooth nothing, segments without points.
struct Bounds {
  std::string_view place;
  double least;
  double most;
};
constexpr double kMost = std::numeric_limits<double>::max();
constexpr Bounds kBounds[] = {
    {"/Passes", 1, 1000},          {"/Order", 0, 100},     {"/Step@Size", 1, 4294967295.0},
    {"/SegSize", 1, 4294967295.0}, {"/MaxValley", 0, 100}, {"/Retention", 0, 100},
    {"/ManVal", -kMost, kMost},
};

// "Step[2]@Size" as "Step@Size".
std::string WithoutNumbers(std::string place) {
  for (auto begin = place.find('['); begin != std::string::npos; begin = place.find('['))
    place.erase(begin, place.find(']', begin) - begin + 1);
  return place;
}

// The range of charge states is written by another word than it is read by.
void SpellRanges(pugi::xml_document& document) {
  constexpr const char* kRanges = "/CurveEvals/CurveEval/ChargeState/Range[normalize-space(.)='true']";
  for (const pugi::xpath_node& range : document.select_nodes(kRanges)) range.node().text().set("Full");
}

void Parse(const pugi::xml_document& document, TslCommon::XMLParser& parser) {
  std::ostringstream text;
  document.save(text, "", pugi::format_raw);
  parser.LoadText(TslCommon::FromUtf8(text.str()));
}

// Older names of a value are taken as their present ones.
bool IsOtherWord(const DocumentValue& value) {
  if (value.place.ends_with("/ChargeState/Range")) return value.written == "Full" && value.taken == "true";
  return value.written == "APB Morph" && value.taken == "Adaptive";
}

std::string Refuse(const DocumentValue& value) {
  if (std::string reason = RefuseOther(value); !reason.empty() && !IsOtherWord(value)) return reason;
  for (const Bounds& bounds : kBounds) {
    if (!WithoutNumbers(value.place).ends_with(bounds.place)) continue;
    const double number = std::strtod(value.taken.c_str(), nullptr);
    if (!(bounds.least <= number && number <= bounds.most))
      return fmt::format("\"{}\" is not from {} to {}", Printable(value.written), bounds.least, bounds.most);
  }
  return "";
}

std::vector<TslBL::CurveEval> ReadList(TslCommon::XMLParser& parser, const std::string& file) {
  std::vector<TslBL::CurveEval> chain;
  int count = 0;
  if (!parser.StartList(kList, count))
    throw InputError(file, "", "the document has no element \"CurveEvals\"");
  for (int i = 1; i <= count; ++i) {
    try {
      TslBL::LoadCurveEval(parser, chain);
    } catch (const std::exception& e) {
      throw InputError(file, "command " + std::to_string(i), e.what());
    }
  }
  return chain;
}

}  // namespace

std::string ChainToXml(const std::vector<TslBL::CurveEval>& chain) {
  TslCommon::XMLBuilder builder;
  builder.StartList(kList);
  for (const TslBL::CurveEval& eval : chain) TslBL::AddCurveEval(builder, eval);
  builder.EndList();
  return TslCommon::ToUtf8(builder.QXML());
}

std::vector<TslBL::CurveEval> LoadChain(const std::string& file) {
  TslCommon::XMLParser parser;
  if (!parser.LoadFile(TslCommon::FromUtf8(file)))
    throw InputError(file, "", TslCommon::ToUtf8(parser.QLoadError()));
  pugi::xml_document written;
  pugi::xml_document taken;
  written.load_file(file.c_str());
  SpellRanges(written);
  Parse(written, parser);
  std::vector<TslBL::CurveEval> chain = ReadList(parser, file);
  taken.load_string(ChainToXml(chain).c_str());
  CheckDocument(file, written.document_element(), taken.document_element(), Refuse);
  return chain;
}

TslBL::ChargeStateParams ChargeStatesOf(const TslBL::CurveEval& command) {
  pugi::xml_document document;
  document.load_string(ChainToXml({command}).c_str());
  SpellRanges(document);
  TslCommon::XMLParser parser;
  Parse(document, parser);
  int count = 0;
  TslBL::ChargeStateParams params;
  if (parser.StartList(kList, count) && parser.StartNode(L"CurveEval")) params.Serialize(parser);
  return params;
}

}  // namespace TslTool
