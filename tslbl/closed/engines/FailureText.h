#pragma once
// What our own engines of charge state deconvolution do alike: a failure becomes a text to be asked for.
#include <tslbl/closed/common/ComponentRegistry.h>
#include <tslbl/closed/common/Text.h>

#include <exception>
#include <string>

namespace TslMath {

class FailureText {
 public:
  const std::wstring& Text() const { return text_; }

  // Gives what `work` gives. An exception in it leaves its text here and goes on as ComError.
  template <class Work>
  auto Keep(Work work) {
    try {
      text_.clear();
      return work();
    } catch (const std::exception& error) {
      text_ = TslCommon::FromUtf8(error.what());
      throw TslCommon::ComError{TslCommon::ComError::kFailed};
    }
  }

 private:
  std::wstring text_;
};

}  // namespace TslMath
