#include <tslbl/closed/math/overlap/PeakColumns.h>

#include <tslbl/closed/math/Lanes.h>
#include <tslbl/closed/math/overlap/FastExp.h>
#include <tslbl/closed/math/overlap/GroupSamples.h>

namespace TslMath {
namespace {

// In widths: a peak has nothing left here, and its exponential is still a number without trouble.
constexpr double kFarthest = 16.0;

template <class Vector>
TSLBL_INLINE void AddTo(double* column, const Vector& more) {
  Vector sum;
  Load(column, sum);
  sum += more;
  Store(sum, column);
}

template <class Vector>
TSLBL_INLINE void AddPeakBy(const BlockPoints& block, const OnePeak& peak, const PeakColumns& columns,
                            double* residuals) {
  const Vector zero{};
  const Vector perLeft = zero + 1.0 / (peak.width * (1.0 - peak.skew));
  const Vector perRight = zero + 1.0 / (peak.width * (1.0 + peak.skew));
  const Vector bySkewLeft = zero - 1.0 / (1.0 - peak.skew);
  const Vector bySkewRight = zero + 1.0 / (1.0 + peak.skew);
  const Vector farthest = zero + kFarthest;
  const double perWidth = 1.0 / peak.width;
  for (std::size_t i = 0; i < block.count; i += sizeof(Vector) / sizeof(double)) {
    Vector x, rootWeight, residual, shape;
    Load(block.x + i, x);
    Load(block.rootWeights + i, rootWeight);
    Load(residuals + i, residual);
    const Vector distance = x - peak.top;
    const Vector per = distance < zero ? perLeft : perRight;
    Vector u = distance * per;
    u = u < farthest ? u : farthest;
    u = u > -farthest ? u : -farthest;
    FastExp(u * u * -0.5, shape);
    residual -= peak.height * shape;
    Store(residual, residuals + i);
    if (columns.height == nullptr) continue;
    shape *= rootWeight;
    Store(shape, columns.height + i);
    if (columns.top == nullptr) continue;
    const Vector slope = peak.height * shape * u;
    Store(slope * per, columns.top + i);
    const Vector spread = slope * u;
    if (columns.width != nullptr) AddTo(columns.width + i, spread * perWidth);
    if (columns.skew != nullptr)
      AddTo(columns.skew + i, spread * (distance < zero ? bySkewLeft : bySkewRight));
  }
}

TSLBL_WIDE void AddPeakByLanes(const BlockPoints& block, const OnePeak& peak, const PeakColumns& columns,
                               double* residuals) {
  AddPeakBy<Lanes>(block, peak, columns, residuals);
}
#ifdef TSLBL_WIDEST
TSLBL_WIDEST void AddPeakByWideLanes(const BlockPoints& block, const OnePeak& peak,
                                     const PeakColumns& columns, double* residuals) {
  AddPeakBy<WideLanes>(block, peak, columns, residuals);
}
#endif

TSLBL_INLINE double Joined(const Lanes& sum) { return (sum[0] + sum[1]) + (sum[2] + sum[3]); }

TSLBL_INLINE double Product(std::size_t count, const double* a, const double* b) {
  Lanes sum{};
  for (std::size_t i = 0; i < count; i += kLaneCount) {
    Lanes one, other;
    Load(a + i, one);
    Load(b + i, other);
    sum += one * other;
  }
  return Joined(sum);
}

constexpr std::size_t kAtOnce = 4;

// One column times four that follow each other.
TSLBL_INLINE void Products(std::size_t count, const double* a, const double* b, double* products) {
  Lanes sums[kAtOnce] = {};
  for (std::size_t i = 0; i < count; i += kLaneCount) {
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

void AddPeak(const BlockPoints& block, const OnePeak& peak, const PeakColumns& columns, double* residuals) {
#ifdef TSLBL_WIDEST
  if (HasWidestRegisters()) return AddPeakByWideLanes(block, peak, columns, residuals);
#endif
  AddPeakByLanes(block, peak, columns, residuals);
}

TSLBL_WIDE void AddProducts(const BlockColumns& block, FitEquations& equations) {
  const std::size_t size = equations.slope.size();
  for (std::size_t a = 0; a < block.terms.size(); ++a) {
    const double* column = block.columns + a * kGroupBlock;
    double* row = equations.matrix.data() + block.terms[a] * size;
    equations.slope[block.terms[a]] += Product(block.count, column, block.residuals);
    std::size_t b = 0;
    for (; b + kAtOnce <= a + 1; b += kAtOnce) {
      double products[kAtOnce];
      Products(block.count, column, block.columns + b * kGroupBlock, products);
      for (std::size_t k = 0; k < kAtOnce; ++k) row[block.terms[b + k]] += products[k];
    }
    for (; b <= a; ++b) row[block.terms[b]] += Product(block.count, column, block.columns + b * kGroupBlock);
  }
  equations.squares += Product(block.count, block.residuals, block.residuals);
}

}  // namespace TslMath
