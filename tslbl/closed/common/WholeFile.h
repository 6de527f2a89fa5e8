#pragma once
// Files that appear whole or not at all.
//
// For the sources of the library; not part of its interface.

#include <string>
#include <string_view>

namespace TslCommon {

// Writes a file beside its final name, which it takes when all is written; a file of that name keeps its
// permissions, a symbolic link is followed, and what is no file, as a device, is written to directly. False,
// and what was there stays, if it cannot be written.
bool WriteWholeFile(const std::wstring& path, std::string_view bytes);

// The bytes of a file. False if it cannot be read.
bool ReadWholeFile(const std::wstring& path, std::string& bytes);

}  // namespace TslCommon
