#include <tslbl/closed/common/Polarity.h>
#include <tslbl/closed/common/Text.h>

namespace TslCommon {
namespace {
constexpr const wchar_t* kTexts[] = {L"Positive", L"Negative"};
}

std::wstring PolarityToWStr(PolarityTypes polarity, const wchar_t* fallback) {
  return polarity <= PolarityNegative ? kTexts[polarity] : fallback;
}

PolarityTypes PolarityFromWStr(const std::wstring& text, PolarityTypes fallback) {
  if (EqualsIgnoreCase(text, kTexts[PolarityPositive])) return PolarityPositive;
  if (EqualsIgnoreCase(text, kTexts[PolarityNegative])) return PolarityNegative;
  return fallback;
}

}  // namespace TslCommon
