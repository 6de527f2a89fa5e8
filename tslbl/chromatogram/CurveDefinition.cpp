#include <tslbl/chromatogram/CurveDefinition.h>

#include <tslbl/closed/common/Message.h>

namespace TslBL {
namespace {

// Definitions are called 1, 2, 3 ... by one character.
wchar_t CallName(std::size_t index) { return static_cast<wchar_t>(L'1' + index); }

}  // namespace

std::optional<CurveOperand> OperandOf(wchar_t character) {
  const auto from = [character](wchar_t first) { return static_cast<std::size_t>(character - first); };
  if (L'A' <= character && character <= L'J') return CurveOperand{true, from(L'A')};
  if (L'a' <= character && character <= L'j') return CurveOperand{true, from(L'a')};
  if (L'1' <= character && character <= L'8') return CurveOperand{false, from(L'1')};
  return std::nullopt;
}

std::optional<MessageId> FaultOf(wchar_t character, const CurveOperandCounts& counts) {
  const auto operand = OperandOf(character);
  if (!operand) return kBadCharacter;
  if (operand->isRange) return operand->index < counts.ranges ? std::nullopt : std::optional(kBadRangeLetter);
  return operand->index < counts.curves ? std::nullopt : std::optional(kBadCurveNumber);
}

std::wstring DefinitionError(std::size_t index, MessageId fault) {
  return FillMessage(kBadCurveDefinition, CallName(index), TslLoadString(ModuleHandle(), fault));
}

std::wstring EmptyDefinitionError(std::size_t index) {
  return FillMessage(kCurveDefinitionEmpty, CallName(index));
}

}  // namespace TslBL
