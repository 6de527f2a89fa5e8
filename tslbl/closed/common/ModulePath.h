#pragma once
// Where the library lies. A site puts its own files, such as limit overrides, beside it.

#include <tslbl/Export.h>
#include <string>

namespace TslCommon {

// An address inside a loaded module stands for that module.
using HINSTANCE = const void*;

// This library's own handle, set when it is loaded.
TSLBL_API HINSTANCE ModuleHandle();

// Full path of the module's file; empty if the system does not tell.
TSLBL_API std::wstring ModuleFileName(HINSTANCE module);
// That path up to and with its last separator; empty if it has none.
TSLBL_API std::wstring ModuleFolder(HINSTANCE module);

}  // namespace TslCommon
