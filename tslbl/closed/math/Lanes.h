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

// TSLBL_WIDE: the function is compiled twice, and the loader takes the version that the machine can run. The
// thread sanitizer cannot run while the loader still chooses.
//
// TSLBL_WIDEST: the function is compiled for 512-bit registers alone. Call it if HasWidestRegisters(), and
// otherwise one that does the same. It pays for functions that do much with each point by itself.
//
// A test that compiles a kernel for one kind of register alone defines the first two beforehand.
//
// TSLBL_INLINE: the function becomes part of each version of those above that call it.
#if defined(__has_feature)
#if __has_feature(thread_sanitizer)
#define TSLBL_NO_CLONES
#endif
#endif
#if defined(TSLBL_WIDE)
#elif defined(__x86_64__) && !defined(__SANITIZE_THREAD__) && !defined(TSLBL_NO_CLONES)
#define TSLBL_WIDE __attribute__((target_clones("avx2", "default")))
#define TSLBL_WIDEST __attribute__((target("avx512f")))
#else
#define TSLBL_WIDE
#endif
#define TSLBL_INLINE inline __attribute__((always_inline))

namespace TslMath {

constexpr std::size_t kLaneCount = 4;
using Lanes = double __attribute__((vector_size(kLaneCount * sizeof(double))));
using LaneMask = std::int64_t __attribute__((vector_size(kLaneCount * sizeof(std::int64_t))));

// Array length with room for a last group that is not full.
constexpr std::size_t WholeGroups(std::size_t n) { return (n + kLaneCount - 1) / kLaneCount * kLaneCount; }

// Eight, for functions that are TSLBL_WIDEST.
using WideLanes = double __attribute__((vector_size(2 * sizeof(Lanes))));

inline bool HasWidestRegisters() {
#ifdef TSLBL_WIDEST
  return __builtin_cpu_supports("avx512f");
#else
  return false;
#endif
}

TSLBL_INLINE void Load(const double* from, Lanes& lanes) { std::memcpy(&lanes, from, sizeof lanes); }
TSLBL_INLINE void Store(const Lanes& lanes, double* to) { std::memcpy(to, &lanes, sizeof lanes); }
TSLBL_INLINE void Load(const double* from, WideLanes& lanes) { std::memcpy(&lanes, from, sizeof lanes); }
TSLBL_INLINE void Store(const WideLanes& lanes, double* to) { std::memcpy(to, &lanes, sizeof lanes); }

// The magnitude, without a comparison of doubles.
inline void Magnitude(const Lanes& lanes, Lanes& result) {
  result = (Lanes)((LaneMask)lanes & std::numeric_limits<std::int64_t>::max());
}

}  // namespace TslMath
