#pragma once
// The parts of what a switch of the chain is given.

#include <tool/frame/Numbers.h>
#include <tool/frame/UsageError.h>
#include <cstdint>
#include <string>
#include <vector>

namespace TslTool {

// The value of one switch, such as "savgol:11:2": a word and numbers behind it.
class SwitchWords {
 public:
  SwitchWords(std::string option, const std::string& text)
      : option_(std::move(option)), text_(text), parts_(SplitColons(text)) {}

  const std::string& Word() const { return parts_.front(); }
  // Takes the next number, if there is one, for `value`.
  void Count(std::uint32_t& value, std::uint32_t least = 1) {
    if (!HasMore()) return;
    value = ParseCount(option_, Next());
    if (value < least) Refuse("each number must be at least " + std::to_string(least));
  }
  bool HasMore() const { return next_ < parts_.size(); }
  const std::string& Next() { return parts_[next_++]; }
  void RequireEnd() const {
    if (HasMore()) Refuse("there are more parts than " + Word() + " takes");
  }
  [[noreturn]] void Unknown(const std::string& known) const { Refuse("it is not one of " + known); }
  [[noreturn]] void Refuse(const std::string& reason) const {
    throw UsageError(option_ + ": \"" + text_ + "\": " + reason);
  }

 private:
  std::string option_;
  std::string text_;
  std::vector<std::string> parts_;
  std::size_t next_ = 1;
};

}  // namespace TslTool
