#pragma once
// Saves a document as CSDebugFiles.h tells.
//
// For the sources of the library; not part of its interface.

#include <string>

namespace TslBL {

// Does nothing unless csDebugFiles is 1. `name` is what stands behind "C:\CSD_" and before ".xml".
void SaveDebugFile(const std::wstring& name, const std::wstring& document);

}  // namespace TslBL
