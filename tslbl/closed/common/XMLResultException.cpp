#include <tslbl/closed/common/XMLResultException.h>

#include <tslbl/closed/common/Text.h>
#include <utility>

namespace TslCommon {

XMLResultException::XMLResultException(std::wstring file, std::wstring function, unsigned line,
                                       unsigned resourceId, std::wstring message)
    : std::runtime_error(ToUtf8(message)),
      file_(std::move(file)),
      function_(std::move(function)),
      line_(line),
      resourceId_(resourceId),
      message_(std::move(message)) {}

XMLResultException CreateXmlResult(const wchar_t* file, const wchar_t* function, unsigned line,
                                   unsigned resourceId, const std::wstring& message) {
  return {file, function, line, resourceId, message};
}

}  // namespace TslCommon
