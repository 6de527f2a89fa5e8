#pragma once
// The one exception of all readers of foreign files: what is wrong, in which file, at which place.

#include <stdexcept>
#include <string>

namespace TslTool {

// what() is "FILE: PLACE: REASON", or "FILE: REASON" where no place can be named. All texts are UTF-8.
class InputError : public std::runtime_error {
 public:
  InputError(const std::string& file, const std::string& place, const std::string& reason)
      : std::runtime_error(file + ": " + (place.empty() ? "" : place + ": ") + reason),
        file_(file),
        place_(place),
        reason_(reason) {}

  const std::string& File() const { return file_; }
  const std::string& Place() const { return place_; }
  const std::string& Reason() const { return reason_; }

 private:
  std::string file_, place_, reason_;
};

}  // namespace TslTool
