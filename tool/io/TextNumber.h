#pragma once
// Numbers as instruments and spreadsheets write them: digits with a decimal point or a decimal comma, a sign,
// an exponent. Never hexadecimal, and never with marks between thousands.

#include <string_view>

namespace TslTool {

// The finite number that the whole of `text` is; `decimal` is '.' or ','. Throws std::runtime_error with the
// reason, which quotes the text.
double ToNumber(std::string_view text, char decimal);

bool IsNumber(std::string_view text, char decimal);

// Whether a reader would take it for a number, if only for a damaged one: it begins like one, or says that
// there is none
// ("nan", "inf").
bool LooksLikeNumber(std::string_view text);

// Whether the comma may stand for a decimal mark as well as between thousands, as in "1,234".
bool HasUnclearComma(std::string_view text);

}  // namespace TslTool
