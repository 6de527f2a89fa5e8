#pragma once
// The exception that carries a wide text.

#include <tslbl/Export.h>
#include <stdexcept>
#include <string>

namespace TslBL {

class TSLBL_API VexException : public std::runtime_error {
 public:
  explicit VexException(std::wstring message);

  const std::wstring& Message() const { return message_; }

  // "Vex Exception with wide string. " and the message, narrowed character by character.
  // The pointer leads into one string of the process, which the next call of what() on
  // any VexException overwrites: not for two threads at once.
  const char* what() const noexcept override;

 private:
  std::wstring message_;
};

}  // namespace TslBL
