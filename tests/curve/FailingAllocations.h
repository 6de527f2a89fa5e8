#pragma once
// Memory that runs out where a test wants it to.

#include <cstddef>

namespace tests {

// While one lives, this thread's operator new throws std::bad_alloc for blocks of at least
// `bytes`.
class FailingAllocations {
 public:
  explicit FailingAllocations(std::size_t bytes);
  ~FailingAllocations();
  FailingAllocations(const FailingAllocations&) = delete;
  FailingAllocations& operator=(const FailingAllocations&) = delete;
};

}  // namespace tests
