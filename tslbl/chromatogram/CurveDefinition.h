#pragma once
// The formulas that define curves and spectra by ranges and by those defined before; ExtractedCurves.h tells
// their language.
//
// For the sources of the library; not part of its interface.

#include <tslbl/closed/common/MessageId.h>
#include <tslbl/records/Common.h>
#include <cstddef>
#include <optional>
#include <string>

namespace TslBL {

struct CurveOperand {
  bool isRange;       // else an earlier curve
  std::size_t index;  // from 0
};

// How many there are of each.
struct CurveOperandCounts {
  std::size_t ranges;
  std::size_t curves;
};

// What a letter or a digit names; nothing for any other character.
std::optional<CurveOperand> OperandOf(wchar_t character);

// The word for what is wrong with a character, if anything is.
std::optional<MessageId> FaultOf(wchar_t character, const CurveOperandCounts& counts);

// The message for definition `index`, counted from 0, with that word.
std::wstring DefinitionError(std::size_t index, MessageId fault);
// That for one that adds nothing up.
std::wstring EmptyDefinitionError(std::size_t index);

// Reads a definition from the left and calls onSign(isMinus) and onOperand(operand) for what it meets. Stops
// at the first character that is not valid and returns what is wrong with it.
template <class OnSign, class OnOperand>
std::optional<MessageId> WalkDefinition(const std::wstring& definition, const CurveOperandCounts& counts,
                                        OnSign onSign, OnOperand onOperand) {
  for (const wchar_t character : definition) {
    if (character == L'+' || character == L'-') {
      onSign(character == L'-');
    } else if (const auto fault = FaultOf(character, counts)) {
      return fault;
    } else {
      onOperand(*OperandOf(character));
    }
  }
  return std::nullopt;
}

}  // namespace TslBL
