#pragma once
// Lets a call of the system fail that never does on a machine in order.

#include <string>

namespace tests {

// As long as this lives, "fsync", "fclose" or "rename" fails in this process, called by the tool's
// own code, with this errno. A file that fclose fails to close is closed all the same.
class FailingCall {
 public:
  FailingCall(const std::string& name, int error);
  ~FailingCall();
  FailingCall(const FailingCall&) = delete;
  FailingCall& operator=(const FailingCall&) = delete;
};

}  // namespace tests
