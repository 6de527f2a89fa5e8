#pragma once
// The kernels compiled for one kind of register each, whatever machine the tests run on: TslMath::AllResults
// of a curve by them.
#include <vector>

namespace tests {

std::vector<double> ResultsOfPlainKernels(const std::vector<double>& y);
std::vector<double> ResultsOfAvx2Kernels(const std::vector<double>& y);  // where the machine has AVX2

}  // namespace tests
