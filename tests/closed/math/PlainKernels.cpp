// The kernels for the registers that every machine has.
#define TslMath TslMathPlain
#define TSLBL_WIDE
#include "KernelSources.h"

#include "AllResults.h"
#include "KernelVariants.h"

std::vector<double> tests::ResultsOfPlainKernels(const std::vector<double>& y) {
  return TslMathPlain::AllResults(y).Values();
}
