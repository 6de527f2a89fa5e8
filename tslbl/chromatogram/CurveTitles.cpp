#include <tslbl/chromatogram/CurveTitles.h>

#include <tslbl/chromatogram/CurveDefinition.h>
#include <tslbl/closed/common/Message.h>
#include <tslbl/closed/common/Text.h>

namespace TslBL {
namespace {

std::wstring TitleOf(const MZRange& range) {
  if (range.Type == MZRange::Full) return L"Full m/z range";
  return ToText(range.Start) + L" to " + ToText(range.End);
}

}  // namespace

std::wstring GenerateEICCurveTitle(const std::wstring& curveDef, const std::vector<MZRange>& ranges) {
  std::wstring title;
  for (const wchar_t character : curveDef) {
    const auto operand = OperandOf(character);
    title += operand && operand->isRange ? TitleOf(ranges.at(operand->index)) : std::wstring(1, character);
  }
  return title;
}

std::wstring GenerateBICCurveTitle(const MZRange& range, const MZPeakField& field) {
  const std::wstring label = field.FieldToString();
  if (range.Type == MZRange::Full) return FillMessage(kFullRangeTitle, label);
  return FillMessage(kRangeTitle, range.Start, range.End, label);
}

}  // namespace TslBL
