#include <tslbl/results/ResultCurve.h>

#include <tslbl/closed/common/Text.h>
#include <tslbl/closed/common/XMLBuilder.h>
#include <tslbl/closed/common/XMLParser.h>
#include <locale>
#include <sstream>

namespace TslBL {
namespace {

constexpr const wchar_t* kCurve = L"Curve";
constexpr const wchar_t* kId = L"Id";

std::uint32_t IdOf(const XMLParser& parser) {
  std::uint32_t id = 0;
  std::wstring text;
  if (parser.QAttribute(kId, text)) FromText(text, id);
  return id;
}

wchar_t FirstLetter(const std::wstring& text) {
  std::wistringstream stream(text);
  stream.imbue(std::locale::classic());
  wchar_t letter = 0;
  stream >> letter;
  return letter;
}

}  // namespace

void AddCurve(XMLBuilder& builder, std::uint32_t id, const std::vector<double>& x,
              const std::vector<double>& y) {
  builder.StartNode(kCurve);
  builder.WAttribute(kId, ToText(id));
  builder.WProfileNode(x, y);
  builder.EndNode();
}

void LoadCurveDefs(XMLParser& parser, std::map<std::uint32_t, std::wstring>& definitions) {
  if (!parser.StartNode(kCurve)) return;
  const std::uint32_t id = IdOf(parser);
  std::wstring definition;
  parser.QNode(L"CurveDef", definition);
  parser.EndNode();
  definitions[id] = std::move(definition);
}

void LoadBICCurve(XMLParser& parser, std::map<std::uint32_t, std::pair<wchar_t, MZPeakField>>& curves) {
  if (!parser.StartNode(kCurve)) return;
  const std::uint32_t id = IdOf(parser);
  std::wstring range;
  parser.QNode(L"MZRangeDef", range);
  MZPeakField field;
  field.Serialize(parser);
  parser.EndNode();
  curves[id] = {FirstLetter(range), field};
}

}  // namespace TslBL
