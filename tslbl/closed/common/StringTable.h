#pragma once
// Every text that the library shows to a user, by number. The numbers are known to the
// applications above and never change; the words stand here and nowhere else.

#include <tslbl/Export.h>
#include <tslbl/closed/common/ModulePath.h>
#include <cstdint>
#include <string>

namespace TslCommon {

// The text of `id`, empty if the table holds none. `module` is this library's handle;
// it keeps the call sites right for a build whose texts lie in a module of their own.
TSLBL_API std::wstring TslLoadString(HINSTANCE module, unsigned id);
TSLBL_API std::string TslLoadNarrowStr(HINSTANCE module, unsigned id);

// The texts of document errors, used with XMLResultException only.
TSLBL_API std::wstring LoadTslCommonResourceStr(unsigned id);

// The display name of tune field `field` has the number kFieldNameBase + field.
inline constexpr unsigned kFieldNameBase = 300;

}  // namespace TslCommon
