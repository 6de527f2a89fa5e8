#pragma once
// The samples of a curve as the numerics take them.
#include <cstdint>
#include <vector>

namespace tests {

using Samples = std::vector<double>;

inline std::uint32_t Size(const Samples& y) { return static_cast<std::uint32_t>(y.size()); }

}  // namespace tests
