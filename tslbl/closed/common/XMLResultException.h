#pragma once
// Raised when a document lacks an element that it must have, or holds a value that is
// not valid.

#include <tslbl/Export.h>
#include <stdexcept>
#include <string>

namespace TslCommon {

class TSLBL_API XMLResultException : public std::runtime_error {
 public:
  XMLResultException(std::wstring file, std::wstring function, unsigned line, unsigned resourceId,
                     std::wstring message);

  // Where in the program the check stands.
  const std::wstring& File() const { return file_; }
  const std::wstring& Function() const { return function_; }
  unsigned Line() const { return line_; }
  // The kind of failure, a number for LoadTslCommonResourceStr.
  unsigned ResourceId() const { return resourceId_; }
  // What is wrong with the document; what() is the same in UTF-8.
  const std::wstring& Message() const { return message_; }

 private:
  std::wstring file_;
  std::wstring function_;
  unsigned line_;
  unsigned resourceId_;
  std::wstring message_;
};

TSLBL_API XMLResultException CreateXmlResult(const wchar_t* file, const wchar_t* function, unsigned line,
                                             unsigned resourceId, const std::wstring& message);

}  // namespace TslCommon
