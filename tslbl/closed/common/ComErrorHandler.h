#pragma once
// What becomes of a failure that a component reports by its result code.

#include <tslbl/Export.h>
#include <cstdint>

namespace TslCommon {

// Is given the code. It throws what its application wants to see; should it return, the caller of the
// component throws a std::logic_error that says which call failed.
using ComErrorHandler = void (*)(std::uint32_t code);

// Replaces the handler of the process and returns the one before; null stands for the handler that
// throws ComError. Safe to call from any thread.
TSLBL_API ComErrorHandler SetComErrorHandler(ComErrorHandler handler);

// Calls the handler of the process.
TSLBL_API void RaiseComError(std::uint32_t code);

}  // namespace TslCommon
