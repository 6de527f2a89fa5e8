#pragma once
// Work that a user started: what fails in it is a message.
//
// For the sources of the library; not part of its interface.

#include <tslbl/closed/common/MessageId.h>
#include <tslbl/closed/common/StringTable.h>
#include <tslbl/closed/common/Text.h>
#include <tslbl/records/Common.h>
#include <exception>
#include <stdexcept>
#include <string>

namespace TslBL {

// Runs `work`. False, with the text of the std::exception that it throws in `error`; anything else passes.
template <class Work>
bool RunForUser(Work work, std::wstring& error) {
  try {
    work();
    return true;
  } catch (const std::exception& e) {
    error = TslNarrowToWideStr(e.what());
    return false;
  }
}

// Throws std::runtime_error with a message of the string table.
[[noreturn]] inline void ThrowMessage(MessageId message) {
  throw std::runtime_error(TslLoadNarrowStr(ModuleHandle(), message));
}

}  // namespace TslBL
