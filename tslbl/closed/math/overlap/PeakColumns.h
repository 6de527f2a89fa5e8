#pragma once
// The inner loops of fits of sums of peaks, over one block of at most kGroupBlock points.
//
// A column is how the sum changes at each point of the block with one of its numbers, times the root of the
// point's weight.
#include <tslbl/closed/math/overlap/FitEquations.h>

#include <cstddef>
#include <span>

namespace TslMath {

struct BlockPoints {
  std::size_t count;  // a multiple of kGroupStep
  const double* x;
  const double* rootWeights;
};

struct OnePeak {
  double height;
  double top;
  double width;
  double skew;
};

// Where the columns of a peak go; those that are not asked for are null, all if `height` is.
struct PeakColumns {
  double* height = nullptr;
  double* top = nullptr;
  double* width = nullptr;
  double* skew = nullptr;
};

// Takes the peak off the residuals and writes its columns of height and top. Those of width and skew, which
// peaks share, are added to what is there.
void AddPeak(const BlockPoints& block, const OnePeak& peak, const PeakColumns& columns, double* residuals);

struct BlockColumns {
  std::size_t count;
  const double* columns;               // kGroupBlock apart
  std::span<const std::size_t> terms;  // the free number of each, ascending
  const double* residuals;             // times the root of the weight
};

// Adds what the block contributes to the sums; of the matrix to the lower triangle.
void AddProducts(const BlockColumns& block, FitEquations& equations);

}  // namespace TslMath
