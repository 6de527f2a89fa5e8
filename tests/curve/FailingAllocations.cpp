#include <curve/FailingAllocations.h>

#include <cstdint>
#include <cstdlib>
#include <new>

namespace {
thread_local std::size_t smallestThatFails = SIZE_MAX;
}  // namespace

// Replaces that of the whole test program; every other form of new and delete for ordinary
// alignment ends here.
void* operator new(std::size_t size) {
  void* block = size < smallestThatFails ? std::malloc(size > 0 ? size : 1) : nullptr;
  if (block == nullptr) throw std::bad_alloc();
  return block;
}
void operator delete(void* block) noexcept { std::free(block); }
void operator delete(void* block, std::size_t) noexcept { std::free(block); }

namespace tests {

FailingAllocations::FailingAllocations(std::size_t bytes) { smallestThatFails = bytes; }
FailingAllocations::~FailingAllocations() { smallestThatFails = SIZE_MAX; }

}  // namespace tests
