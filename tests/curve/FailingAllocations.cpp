#include <curve/FailingAllocations.h>

#include <cstdint>
#include <cstdlib>
#include <new>

namespace {

thread_local std::size_t smallestThatFails = SIZE_MAX;

void* Allocate(std::size_t size) noexcept {
  return size < smallestThatFails ? std::malloc(size > 0 ? size : 1) : nullptr;
}

}  // namespace

// These replace the ones of the whole test program. Arrays keep their own pair.
void* operator new(std::size_t size) {
  void* block = Allocate(size);
  if (block == nullptr) throw std::bad_alloc();
  return block;
}
void* operator new(std::size_t size, const std::nothrow_t&) noexcept { return Allocate(size); }
void operator delete(void* block) noexcept { std::free(block); }
void operator delete(void* block, std::size_t) noexcept { std::free(block); }
void operator delete(void* block, const std::nothrow_t&) noexcept { std::free(block); }

namespace tests {

FailingAllocations::FailingAllocations(std::size_t bytes) { smallestThatFails = bytes; }
FailingAllocations::~FailingAllocations() { smallestThatFails = SIZE_MAX; }

}  // namespace tests
