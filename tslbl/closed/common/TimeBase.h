#pragma once
// Times: milliseconds inside, minutes in front of the user.

#include <tslbl/Export.h>
#include <compare>
#include <cstdint>
#include <string>

namespace TslCommon {

namespace timebase {

// A time or a time span in milliseconds.
struct MSEC {
  std::int32_t count = 0;

  constexpr MSEC() = default;
  constexpr explicit MSEC(std::int32_t ms) : count(ms) {}
  constexpr auto operator<=>(const MSEC&) const = default;
};

}  // namespace timebase

// `format` with %M replaced by whole minutes, %f by the fraction of a minute in three
// digits, rounded, and %% by a percent sign; so 90000 ms through "%M.%f" is "1.500".
// A negative time has its sign before the minutes.
TSLBL_API std::wstring MSToString(std::int32_t ms, const wchar_t* format);

// Rounded to the nearest millisecond; beyond 32 bits the nearest end, 0 for a NaN.
TSLBL_API std::int32_t MinutesToMS(double minutes);

// Seconds since the beginning of 1970, UTC, by the clock of std::time: a finer clock may be a
// tick ahead of it, and a time of saving would then lie in the future of whoever compares.
TSLBL_API std::int64_t UnixSecondsNow();

}  // namespace TslCommon
