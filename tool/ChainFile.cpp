#include <tool/ChainFile.h>

#include <fmt/format.h>
#include <pugixml.hpp>

#include <tool/io/InputError.h>
#include <tool/io/Printable.h>
#include <tslbl/closed/common/Text.h>
#include <tslbl/closed/common/XMLBuilder.h>
#include <tslbl/closed/common/XMLParser.h>
#include <charconv>
#include <cmath>
#include <cstdlib>
#include <limits>
#include <string_view>

namespace TslTool {
namespace {

constexpr const wchar_t* kList = L"CurveEvals";
constexpr std::size_t kLongestPlace = 200;

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

// Two texts of one value: equal but for case, or equal numbers to the six digits that a
// document keeps.
bool SameValue(const std::string& written, const std::string& taken) {
  if (TslCommon::EqualsIgnoreCase(TslCommon::FromUtf8(written), TslCommon::FromUtf8(taken))) return true;
  double a = 0.0;
  double b = 0.0;
  const auto number = [](const std::string& text, double& value) {
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
    return error == std::errc() && end == text.data() + text.size();
  };
  return number(written, a) && number(taken, b) && std::abs(a - b) <= 1e-5 * std::abs(a);
}

std::string Trimmed(const std::string& text) {
  const auto first = text.find_first_not_of(" \t\r\n");
  if (first == std::string::npos) return "";
  return text.substr(first, text.find_last_not_of(" \t\r\n") - first + 1);
}

// Holds what the user wrote against what was taken from it. Older names of a value are
// taken as their present ones, so an algorithm's name is judged by whether it is known.
class ChainCheck {
 public:
  explicit ChainCheck(std::string file) : file_(std::move(file)) {}

  void Compare(const pugi::xml_node& written, const pugi::xml_node& taken, const std::string& place) const {
    for (const pugi::xml_attribute attribute : written.attributes()) {
      const pugi::xml_attribute twin = taken.attribute(attribute.name());
      if (!twin) Refuse(place, "unknown attribute \"" + Printable(attribute.name()) + "\"");
      RequireSame(place + "@" + attribute.name(), attribute.value(), twin.value());
    }
    RequireSame(place, Trimmed(written.child_value()), Trimmed(taken.child_value()));
    for (const pugi::xml_node child : written.children()) {
      if (child.type() != pugi::node_element) continue;
      const std::string name = child.name();
      const pugi::xml_node same = NextNamed(written, taken, child);
      if (!same) Refuse(place, "unknown element \"" + Printable(name) + "\"");
      Compare(child, same, std::string(place).append("/").append(name));
    }
  }

 private:
  // The element of `taken` with the name and, among those of that name, the place of `child`.
  static pugi::xml_node NextNamed(const pugi::xml_node& written, const pugi::xml_node& taken,
                                  const pugi::xml_node& child) {
    pugi::xml_node twin = taken.child(child.name());
    for (pugi::xml_node before = written.child(child.name()); before != child && twin;
         before = before.next_sibling(child.name()))
      twin = twin.next_sibling(child.name());
    return twin;
  }

  void RequireSame(const std::string& place, const std::string& written, const std::string& taken) const {
    const bool same = SameValue(written, taken) || (written == "APB Morph" && taken == "Adaptive");
    if (!same) Refuse(place, "\"" + Printable(written) + "\" is not a value for it");
    for (const Bounds& bounds : kBounds) {
      if (!place.ends_with(bounds.place)) continue;
      const double value = std::strtod(taken.c_str(), nullptr);
      if (!(bounds.least <= value && value <= bounds.most))
        Refuse(place,
               fmt::format("\"{}\" is not from {} to {}", Printable(written), bounds.least, bounds.most));
    }
  }

  [[noreturn]] void Refuse(const std::string& place, const std::string& reason) const {
    throw InputError(file_, Printable(place, kLongestPlace), reason);
  }

  std::string file_;
};

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
  std::vector<TslBL::CurveEval> chain = ReadList(parser, file);

  pugi::xml_document written;
  pugi::xml_document taken;
  written.load_file(file.c_str());
  taken.load_string(ChainToXml(chain).c_str());
  ChainCheck(file).Compare(written.document_element(), taken.document_element(), "CurveEvals");
  return chain;
}

}  // namespace TslTool
