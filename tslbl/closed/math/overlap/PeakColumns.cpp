#include <tslbl/closed/math/overlap/PeakColumns.h>

#include <tslbl/closed/math/Lanes.h>
#include <tslbl/closed/math/overlap/FastExp.h>
#include <tslbl/closed/math/overlap/GroupSamples.h>

namespace TslMath {
namespace {

// In widths: a peak has nothing left here, and its exponential is still a number without trouble.
constexpr double kFarthest = 16.0;

TSLBL_INLINE void AddTo(double* column, const Lanes& more) {
  Lanes sum;
  Load(column, sum);
  sum += more;
  Store(sum, column);
}

TSLBL_INLINE double Joined(const Lanes& sum) { return (sum[0] + sum[1]) + (sum[2] + sum[3]); }

TSLBL_INLINE double Product(const double* a, const double* b) {
  Lanes sum{};
  for (std::size_t i = 0; i < kGroupBlock; i += kLaneCount) {
    Lanes one, other;
    Load(a + i, one);
    Load(b + i, other);
    sum += one * other;
  }
  return Joined(sum);
}

constexpr std::size_t kAtOnce = 4;

// One column times four that follow each other.
TSLBL_INLINE void Products(const double* a, const double* b, double* products) {
  Lanes sums[kAtOnce] = {};
  for (std::size_t i = 0; i < kGroupBlock; i += kLaneCount) {
    Lanes one;
    Load(a + i, one);
    for (std::size_t k = 0; k < kAtOnce; ++k) {
      Lanes other;
      Load(b + k * kGroupBlock + i, other);
      sums[k] += one * other;
    }
  }
  for (std::size_t k = 0; k < kAtOnce; ++k) products[k] = Joined(sums[k]);
}

}  // namespace

TSLBL_WIDE void AddPeak(const BlockPoints& block, const OnePeak& peak, const PeakColumns& columns,
                        double* residuals) {
  const double perLeft = 1.0 / (peak.width * (1.0 - peak.skew));
  const double perRight = 1.0 / (peak.width * (1.0 + peak.skew));
  const Lanes zero{};
  const Lanes left = zero + perLeft;
  const Lanes right = zero + perRight;
  const Lanes bySkewLeft = zero - 1.0 / (1.0 - peak.skew);
  const Lanes bySkewRight = zero + 1.0 / (1.0 + peak.skew);
  const Lanes farthest = zero + kFarthest;
  const double perWidth = 1.0 / peak.width;
  for (std::size_t i = 0; i < kGroupBlock; i += kLaneCount) {
    Lanes x, rootWeight, residual, shape;
    Load(block.x + i, x);
    Load(block.rootWeights + i, rootWeight);
    Load(residuals + i, residual);
    const Lanes distance = x - peak.top;
    const Lanes per = distance < zero ? left : right;
    Lanes u = distance * per;
    u = u < farthest ? u : farthest;
    u = u > -farthest ? u : -farthest;
    FastExp(u * u * -0.5, shape);
    residual -= peak.height * shape;
    Store(residual, residuals + i);
    if (columns.height == nullptr) continue;
    shape *= rootWeight;
    Store(shape, columns.height + i);
    if (columns.top == nullptr) continue;
    const Lanes slope = peak.height * shape * u;
    Store(slope * per, columns.top + i);
    const Lanes spread = slope * u;
    if (columns.width != nullptr) AddTo(columns.width + i, spread * perWidth);
    if (columns.skew != nullptr)
      AddTo(columns.skew + i, spread * (distance < zero ? bySkewLeft : bySkewRight));
  }
}

TSLBL_WIDE void AddProducts(const BlockColumns& block, FitEquations& equations) {
  const std::size_t size = equations.slope.size();
  for (std::size_t a = 0; a < block.terms.size(); ++a) {
    const double* column = block.columns + a * kGroupBlock;
    double* row = equations.matrix.data() + block.terms[a] * size;
    equations.slope[block.terms[a]] += Product(column, block.residuals);
    std::size_t b = 0;
    for (; b + kAtOnce <= a + 1; b += kAtOnce) {
      double products[kAtOnce];
      Products(column, block.columns + b * kGroupBlock, products);
      for (std::size_t k = 0; k < kAtOnce; ++k) row[block.terms[b + k]] += products[k];
    }
    for (; b <= a; ++b) row[block.terms[b]] += Product(column, block.columns + b * kGroupBlock);
  }
  equations.squares += Product(block.residuals, block.residuals);
}

}  // namespace TslMath
