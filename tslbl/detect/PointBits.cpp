#include <tslbl/detect/PointBits.h>

#include <algorithm>
#ifdef __x86_64__
#include <immintrin.h>
#endif

namespace TslBL {
namespace {

// The comparisons of 64 points with the two behind each.
struct Comparisons {
  std::uint64_t less = 0;     // y[i] < y[i+1]
  std::uint64_t notLess = 0;  // y[i+1] <= y[i]
  std::uint64_t falls = 0;    // y[i+1] < y[i]
  std::uint64_t less2 = 0;    // y[i] < y[i+2]
  std::uint64_t falls2 = 0;   // y[i+2] < y[i]
};

std::uint64_t Bit(bool value, std::ptrdiff_t place) { return std::uint64_t{value} << place; }

std::uint64_t AboveOfSome(const CurveView& curve, std::ptrdiff_t first, std::ptrdiff_t count) {
  std::uint64_t above = 0;
  for (std::ptrdiff_t k = 0; k < count; ++k) above |= Bit(curve.AboveBaseline(first + k), k);
  return above;
}

// Of up to 64 points; points behind the end of the curve compare false.
Comparisons CompareSome(const CurveView& curve, std::ptrdiff_t first, std::ptrdiff_t count) {
  Comparisons c;
  for (std::ptrdiff_t k = 0; k < count; ++k) {
    const double* y = curve.y + first + k;
    if (first + k + 1 >= curve.n) break;
    c.less |= Bit(y[0] < y[1], k);
    c.notLess |= Bit(y[1] <= y[0], k);
    c.falls |= Bit(y[1] < y[0], k);
    if (first + k + 2 >= curve.n) break;
    c.less2 |= Bit(y[0] < y[2], k);
    c.falls2 |= Bit(y[2] < y[0], k);
  }
  return c;
}

std::uint64_t AboveOf64(const CurveView& curve, std::ptrdiff_t first) {
  return AboveOfSome(curve, first, 64);
}
Comparisons Compare64(const CurveView& curve, std::ptrdiff_t first) { return CompareSome(curve, first, 64); }

#ifdef __x86_64__
#define TSLBL_AVX2 __attribute__((target("avx2")))

TSLBL_AVX2 inline std::uint64_t Mask(__m256d compared, int place) {
  return static_cast<std::uint64_t>(static_cast<unsigned>(_mm256_movemask_pd(compared))) << place;
}

TSLBL_AVX2 std::uint64_t WideAboveOf64(const CurveView& curve, std::ptrdiff_t first) {
  std::uint64_t above = 0;
  for (int k = 0; k < 64; k += 4) {
    const __m256d y = _mm256_loadu_pd(curve.y + first + k);
    const __m256d baseline = _mm256_loadu_pd(curve.baseline + first + k);
    above |= Mask(_mm256_cmp_pd(y, baseline, _CMP_GT_OQ), k);
  }
  return above;
}

TSLBL_AVX2 Comparisons WideCompare64(const CurveView& curve, std::ptrdiff_t first) {
  Comparisons c;
  const double* y = curve.y + first;
  for (int k = 0; k < 64; k += 4) {
    const __m256d y0 = _mm256_loadu_pd(y + k);
    const __m256d y1 = _mm256_loadu_pd(y + k + 1);
    const __m256d y2 = _mm256_loadu_pd(y + k + 2);
    c.less |= Mask(_mm256_cmp_pd(y0, y1, _CMP_LT_OQ), k);
    c.notLess |= Mask(_mm256_cmp_pd(y1, y0, _CMP_LE_OQ), k);
    c.falls |= Mask(_mm256_cmp_pd(y1, y0, _CMP_LT_OQ), k);
    c.less2 |= Mask(_mm256_cmp_pd(y0, y2, _CMP_LT_OQ), k);
    c.falls2 |= Mask(_mm256_cmp_pd(y2, y0, _CMP_LT_OQ), k);
  }
  return c;
}
#else
std::uint64_t WideAboveOf64(const CurveView& curve, std::ptrdiff_t first) { return AboveOf64(curve, first); }
Comparisons WideCompare64(const CurveView& curve, std::ptrdiff_t first) { return Compare64(curve, first); }
#endif

}  // namespace

bool HasWideRegisters() {
#ifdef __x86_64__
  return __builtin_cpu_supports("avx2");
#else
  return false;
#endif
}

BitsOfStretch::BitsOfStretch(const CurveView& curve, std::ptrdiff_t begin, std::ptrdiff_t end, bool wide)
    : curve_(curve), begin_(begin), wide_(wide), words_(static_cast<std::size_t>(end - begin + 63) / 64) {
  const auto aboveOf64 = wide ? WideAboveOf64 : AboveOf64;
  for (std::size_t word = 0; word < words_.size(); ++word) {
    const std::ptrdiff_t first = PlaceOf(word, 0);
    words_[word].above =
        first + 64 <= curve.n ? aboveOf64(curve, first) : AboveOfSome(curve, first, curve.n - first);
  }
}

void BitsOfStretch::Compare(std::ptrdiff_t first, std::ptrdiff_t last) {
  compared_ = std::max(compared_, WordOf(first));
  for (const std::size_t end = WordOf(last) + 1; compared_ < end; ++compared_) CompareWord(compared_);
}

void BitsOfStretch::CompareWord(std::size_t word) {
  const auto compare64 = wide_ ? WideCompare64 : Compare64;
  const std::ptrdiff_t first = PlaceOf(word, 0);
  const Comparisons c = first + 66 <= curve_.n
                            ? compare64(curve_, first)
                            : CompareSome(curve_, first, std::min<std::ptrdiff_t>(curve_.n - first, 64));
  Comparisons before;
  if (first >= begin_ + 2) before = CompareSome(curve_, first - 2, 2);
  const std::uint64_t less = c.less << 1 | (first == 0 ? 1 : before.less >> 1);
  const std::uint64_t falls = c.falls << 1 | before.falls >> 1;
  const std::uint64_t falls2 = c.falls2 << 2 | before.falls2;
  PointBits& bits = words_[word];
  bits.apex = less & c.notLess;
  bits.rise = c.less & c.less2;
  bits.foot = c.less & ~less;
  bits.bottom = bits.above & falls & falls2;
}

}  // namespace TslBL
