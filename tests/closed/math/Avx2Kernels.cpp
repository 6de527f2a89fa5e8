// The kernels for 256-bit registers and no wider ones.
#define TslMath TslMathAvx2
#ifdef __x86_64__
#define TSLBL_WIDE __attribute__((target("avx2")))
#else
#define TSLBL_WIDE
#endif
#include "KernelSources.h"

#include "AllResults.h"
#include "KernelVariants.h"

std::vector<double> tests::ResultsOfAvx2Kernels(const std::vector<double>& y) {
  return TslMathAvx2::AllResults(y).Values();
}
