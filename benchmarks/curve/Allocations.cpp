#include <curve/Allocations.h>

#include <cstdlib>
#include <new>

namespace {

thread_local Spectra::Allocated allocated;

}  // namespace

// These replace the ones of the whole program.
void* operator new(std::size_t size) {
  ++allocated.blocks;
  allocated.bytes += size;
  if (void* block = std::malloc(size > 0 ? size : 1)) return block;
  throw std::bad_alloc();
}
void operator delete(void* block) noexcept { std::free(block); }
void operator delete(void* block, std::size_t) noexcept { std::free(block); }

Spectra::Allocated Spectra::AllocatedSoFar() { return allocated; }
