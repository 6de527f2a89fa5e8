#include <tslbl/tune/rules/Rules.h>

#include <tslbl/closed/common/StringTable.h>
#include <tslbl/records/Common.h>
#include <utility>

namespace TslBL {

void Rules::QLastError(std::wstring& error) const { error = QLastError(); }
std::wstring Rules::QLastError() const { return std::exchange(LastError, {}); }

Rules::ErrTypes Rules::Fail(TslCommon::MessageId message) const {
  LastError = TslLoadString(ModuleHandle(), message);
  return Error;
}

void Rules::Forget() {
  Modified = false;
  LastError.clear();
}

}  // namespace TslBL
