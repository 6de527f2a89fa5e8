#pragma once
// The messages of the string table, filled in.
//
// For the sources of the library; not part of its interface.

#include <boost/format.hpp>

#include <tslbl/closed/common/MessageId.h>
#include <tslbl/closed/common/StringTable.h>
#include <locale>
#include <string>

namespace TslCommon {

// `text` with its placeholders filled in order, whatever the locale of the host.
template <class... Values>
std::wstring FillText(const std::wstring& text, const Values&... values) {
  return (boost::wformat(text, std::locale::classic()) % ... % values).str();
}

// The text of that message, likewise.
template <class... Values>
std::wstring FillMessage(MessageId id, const Values&... values) {
  return FillText(TslLoadString(ModuleHandle(), id), values...);
}

}  // namespace TslCommon
