#pragma once
// Four doubles worked on side by side, and the mark for functions that are worth compiling for wider
// registers.
//
// Sums over an array are kept in four lanes and joined at the end in a fixed order, so they have the same
// bits whatever the register width. Pass Lanes by reference: by value their calling convention depends on
// the register width.
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <limits>

// The function is compiled twice, and the loader takes the version that the machine can run. The thread
// sanitizer cannot run while the loader still chooses.
#if defined(__has_feature)
#if __has_feature(thread_sanitizer)
#define TSLBL_NO_CLONES
#endif
#endif
#if defined(__x86_64__) && !defined(__SANITIZE_THREAD__) && !defined(TSLBL_NO_CLONES)
#define TSLBL_WIDE __attribute__((target_clones("avx2", "default")))
#else
#define TSLBL_WIDE
#endif

namespace TslMath {

constexpr std::size_t LaneCount = 4;
using Lanes = double __attribute__((vector_size(LaneCount * sizeof(double))));
using LaneMask = std::int64_t __attribute__((vector_size(LaneCount * sizeof(std::int64_t))));

// Array length with room for a last group that is not full.
constexpr std::size_t WholeGroups(std::size_t n) { return (n + LaneCount - 1) / LaneCount * LaneCount; }

inline void Load(const double* from, Lanes& lanes) { std::memcpy(&lanes, from, sizeof lanes); }
inline void Store(const Lanes& lanes, double* to) { std::memcpy(to, &lanes, sizeof lanes); }

// The magnitude, and marks of all-ones where a lane is below zero; both without a comparison of doubles.
inline void Magnitude(const Lanes& lanes, Lanes& result) {
  result = (Lanes)((LaneMask)lanes & std::numeric_limits<std::int64_t>::max());
}
inline void MarkNegative(const Lanes& lanes, LaneMask& result) { result = (LaneMask)lanes < 0; }

}  // namespace TslMath
