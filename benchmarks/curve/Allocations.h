#pragma once
// What this thread has allocated so far.

#include <cstddef>

namespace Spectra {

struct Allocated {
  std::size_t blocks = 0;
  std::size_t bytes = 0;
};

Allocated AllocatedSoFar();

}  // namespace Spectra
