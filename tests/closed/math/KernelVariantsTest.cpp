// The library takes the widest registers that the machine has. Whichever it takes, the results have the same
// bits.
#include "KernelVariants.h"

#include <gtest/gtest.h>

#include <bit>
#include <cmath>
#include <cstdint>
#include <limits>

#include "AllResults.h"
#include "SampleArray.h"
#include "SimulatedSpectrum.h"

namespace {

using tests::Samples;

constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
constexpr double kInfinity = std::numeric_limits<double>::infinity();

struct NamedCurve {
  const char* name;
  Samples (*make)();
};

void PrintTo(const NamedCurve& curve, std::ostream* out) { *out << curve.name; }

Samples Counts() { return tests::Simulate({tests::Background::Hump, 0, 0.2}, 1, 9973).y; }

Samples SmoothedCounts() {
  const Samples y = Counts();
  const auto n = static_cast<std::uint32_t>(y.size());
  Samples smooth(y.size());
  TslMath::SmoothSavitzkyGolay(y.data(), n, 0, n, 15, 2, smooth.data());
  return smooth;
}

Samples FewCounts() { return tests::Simulate({tests::Background::Flat, 0.2, 0.1}, 2, 5002).y; }

Samples ShortCurve() { return tests::Simulate({tests::Background::Flat, 5, 0.5}, 3, 41).y; }

Samples NotFiniteHereAndThere() {
  Samples y = SmoothedCounts();
  y[3] = y[900] = y[901] = kNaN;
  y[2000] = kInfinity;
  y[3000] = -kInfinity;
  return y;
}

Samples ZerosOfBothSigns() {
  Samples y(1001, 0.0);
  for (std::size_t i = 0; i < y.size(); i += 3) y[i] = -0.0;
  for (std::size_t i = 0; i < y.size(); i += 7) y[i] = 1;
  return y;
}

// Index of the first value whose bits differ, or the size. Which bits a NaN has is nobody's concern.
std::size_t FirstDifference(const Samples& a, const Samples& b) {
  std::size_t i = 0;
  const auto same = [&] {
    return std::bit_cast<std::uint64_t>(a[i]) == std::bit_cast<std::uint64_t>(b[i]) ||
           (std::isnan(a[i]) && std::isnan(b[i]));
  };
  while (i < a.size() && i < b.size() && same()) ++i;
  return i;
}

class KernelVariants : public testing::TestWithParam<NamedCurve> {};

INSTANTIATE_TEST_SUITE_P(Curves, KernelVariants,
                         testing::Values(NamedCurve{"Counts", Counts},
                                         NamedCurve{"SmoothedCounts", SmoothedCounts},
                                         NamedCurve{"FewCounts", FewCounts},
                                         NamedCurve{"ShortCurve", ShortCurve},
                                         NamedCurve{"NotFinite", NotFiniteHereAndThere},
                                         NamedCurve{"ZerosOfBothSigns", ZerosOfBothSigns}),
                         [](const auto& curve) { return std::string(curve.param.name); });

TEST_P(KernelVariants, PlainOnesGiveTheBitsOfTheLibrary) {
  const Samples y = GetParam().make();
  const Samples library = TslMath::AllResults(y).Values();
  const Samples plain = tests::ResultsOfPlainKernels(y);
  ASSERT_EQ(plain.size(), library.size());
  EXPECT_EQ(FirstDifference(plain, library), library.size());
}

#ifdef __x86_64__
TEST_P(KernelVariants, Avx2OnesGiveTheBitsOfPlainOnes) {
  if (!__builtin_cpu_supports("avx2")) return;
  const Samples y = GetParam().make();
  const Samples plain = tests::ResultsOfPlainKernels(y);
  const Samples avx2 = tests::ResultsOfAvx2Kernels(y);
  ASSERT_EQ(avx2.size(), plain.size());
  EXPECT_EQ(FirstDifference(avx2, plain), plain.size());
}
#endif

}  // namespace
