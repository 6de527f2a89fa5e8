#pragma once
// What all rules are made of that guard a record: whether it was changed, and the text of
// the last failure.
//
// A value, one thread at a time: even a check keeps its text.

#include <tslbl/Export.h>
#include <cstdint>
#include <string>

namespace TslCommon {
enum MessageId : unsigned;  // the names are the library's own, in closed/common/MessageId.h
}

namespace TslBL {

class TSLBL_API Rules {
 public:
  // What a change or a check came to. QLastError tells about the last two.
  enum ErrTypes : std::uint32_t {
    NoError = 0,  // accepted
    Warning = 1,  // accepted and written, with a text to be read
    Error = 2,    // refused; the record is unchanged, unless the writer says otherwise
  };

  bool IsModified() const { return Modified; }
  void ClearModified() { Modified = false; }
  // Hands over the text of the last failure or warning and forgets it. A success in
  // between does not.
  void QLastError(std::wstring& error) const;
  std::wstring QLastError() const;

 protected:
  // With this message.
  ErrTypes Fail(TslCommon::MessageId message) const;
  // For another record in place of this one.
  void Forget();
  // An equal value is no change.
  template <class T>
  void Store(T& stored, const T& value) {
    if (stored == value) return;
    stored = value;
    Modified = true;
  }

  bool Modified = false;
  mutable std::wstring LastError;
};

}  // namespace TslBL
