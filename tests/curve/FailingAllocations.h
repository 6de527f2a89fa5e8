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

// While one lives, this thread's operator new throws std::bad_alloc once: at its call number
// `nth`, counted from 0.
class FailingAllocation {
 public:
  explicit FailingAllocation(std::size_t nth);
  ~FailingAllocation();
  FailingAllocation(const FailingAllocation&) = delete;
  FailingAllocation& operator=(const FailingAllocation&) = delete;
  // Whether it has come to that.
  bool Failed() const;
};

// How many more blocks this thread has taken than given back so far.
std::ptrdiff_t BlocksTaken();

}  // namespace tests
