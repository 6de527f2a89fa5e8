#include <curve/FailingAllocations.h>

#include <cstdint>
#include <cstdlib>
#include <new>

namespace {

thread_local std::size_t smallestThatFails = SIZE_MAX;
thread_local std::size_t callsToFailure = SIZE_MAX;
thread_local std::ptrdiff_t blocksTaken = 0;

void* Allocate(std::size_t size) noexcept {
  if (size >= smallestThatFails || callsToFailure-- == 0) return nullptr;
  void* block = std::malloc(size > 0 ? size : 1);
  blocksTaken += block != nullptr ? 1 : 0;
  return block;
}

void Free(void* block) noexcept {
  blocksTaken -= block != nullptr ? 1 : 0;
  std::free(block);
}

}  // namespace

// These replace the ones of the whole test program. Arrays keep their own pair.
void* operator new(std::size_t size) {
  void* block = Allocate(size);
  if (block == nullptr) throw std::bad_alloc();
  return block;
}
void* operator new(std::size_t size, const std::nothrow_t&) noexcept { return Allocate(size); }
void operator delete(void* block) noexcept { Free(block); }
void operator delete(void* block, std::size_t) noexcept { Free(block); }
void operator delete(void* block, const std::nothrow_t&) noexcept { Free(block); }

namespace tests {

FailingAllocations::FailingAllocations(std::size_t bytes) { smallestThatFails = bytes; }
FailingAllocations::~FailingAllocations() { smallestThatFails = SIZE_MAX; }

// Beyond the failure the counter has wrapped, and no thread lives to see it come round again.
FailingAllocation::FailingAllocation(std::size_t nth) { callsToFailure = nth; }
FailingAllocation::~FailingAllocation() { callsToFailure = SIZE_MAX; }
bool FailingAllocation::Failed() const { return callsToFailure > SIZE_MAX / 2; }

std::ptrdiff_t BlocksTaken() { return blocksTaken; }

}  // namespace tests
