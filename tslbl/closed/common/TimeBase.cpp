#include <tslbl/closed/common/TimeBase.h>

#include <tslbl/closed/common/Text.h>
#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <ctime>
#include <limits>

namespace TslCommon {
namespace {

std::wstring ThreeDigits(std::int64_t value) {
  const std::wstring digits = ToText(value);
  return std::wstring(3 - digits.size(), L'0') + digits;
}

}  // namespace

std::wstring MSToString(std::int32_t ms, const wchar_t* format) {
  constexpr std::int64_t kMsPerThousandth = 60;
  const std::int64_t thousandths = (std::abs(std::int64_t{ms}) + kMsPerThousandth / 2) / kMsPerThousandth;
  const std::wstring sign = ms < 0 && thousandths > 0 ? L"-" : L"";
  std::wstring text;
  for (const wchar_t* p = format; *p != L'\0'; ++p) {
    const wchar_t next = *p == L'%' ? p[1] : L'\0';
    switch (next) {
      case L'M':
        text += sign + ToText(thousandths / 1000);
        break;
      case L'f':
        text += ThreeDigits(thousandths % 1000);
        break;
      case L'%':
        text += L'%';
        break;
      default:
        text += *p;
        continue;
    }
    ++p;
  }
  return text;
}

std::int32_t MinutesToMS(double minutes) {
  if (std::isnan(minutes)) return 0;
  constexpr double kLow = std::numeric_limits<std::int32_t>::min();
  constexpr double kHigh = std::numeric_limits<std::int32_t>::max();
  return static_cast<std::int32_t>(std::clamp(std::round(minutes * 60000.0), kLow, kHigh));
}

std::int64_t UnixSecondsNow() { return std::time(nullptr); }

}  // namespace TslCommon
