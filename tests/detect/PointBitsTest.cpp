// The bits of a stretch against the comparisons that they stand for.
#include <gtest/gtest.h>

#include <detect/RandomCurves.h>
#include <tslbl/detect/PointBits.h>

using namespace TslBL;
using namespace tests;

namespace {

CurveView ViewOf(const RandomCurve& c) {
  return {c.y.data(), c.baseline.data(), static_cast<std::ptrdiff_t>(c.y.size())};
}

// The comparisons of one point, of which those with points outside first .. n - 1 are false.
struct Point {
  const CurveView& curve;
  std::ptrdiff_t first;
  std::ptrdiff_t i;

  bool Less(std::ptrdiff_t a, std::ptrdiff_t b) const {
    return a >= first && b >= first && a < curve.n && b < curve.n && curve.y[a] < curve.y[b];
  }
  bool Above() const { return curve.AboveBaseline(i); }
  bool Apex() const { return (i == 0 || Less(i - 1, i)) && i + 1 < curve.n && curve.y[i + 1] <= curve.y[i]; }
  bool Rise() const { return Less(i, i + 1) && Less(i, i + 2); }
  bool Foot() const { return Less(i, i + 1) && !Less(i - 1, i) && i > 0; }
  bool Bottom() const { return Above() && Less(i, i - 1) && Less(i, i - 2); }
};

void CheckCompared(const CurveView& curve, std::ptrdiff_t begin, bool wide) {
  BitsOfStretch bits(curve, begin, curve.n, wide);
  bits.Compare(begin, curve.n - 1);
  for (std::ptrdiff_t i = begin; i < curve.n; ++i) {
    const Point point{curve, begin, i};
    ASSERT_EQ(bits.Has(i, &PointBits::above), point.Above()) << i;
    ASSERT_EQ(bits.Has(i, &PointBits::apex), point.Apex()) << i;
    ASSERT_EQ(bits.Has(i, &PointBits::rise), point.Rise()) << i;
    ASSERT_EQ(bits.Has(i, &PointBits::foot), point.Foot()) << i;
    ASSERT_EQ(bits.Has(i, &PointBits::bottom), point.Bottom()) << i;
  }
}

void CheckCompared(const CurveView& curve, std::ptrdiff_t begin) {
  for (const bool wide : {false, HasWideRegisters()}) CheckCompared(curve, begin, wide);
}

constexpr auto kAbove = [](const PointBits& b) { return b.above; };

}  // namespace

TEST(PointBits, AreTheComparisonsOfEachPoint) {
  RandomCurves random(31);
  for (int round = 0; round < 400; ++round) {
    const RandomCurve c = random.Next(300);
    SCOPED_TRACE(c.Text());
    CheckCompared(ViewOf(c), random.Below(static_cast<int>(c.y.size())));
  }
}

TEST(PointBits, ANumberThatIsMissingComparesFalse) {
  RandomCurves random(32);
  for (int round = 0; round < 400; ++round) {
    const RandomCurve c = random.NextBroken(300);
    SCOPED_TRACE(c.Text());
    CheckCompared(ViewOf(c), random.Below(static_cast<int>(c.y.size())));
  }
}

TEST(PointBits, OfAStretchAreThoseOfTheWhole) {
  RandomCurves random(33);
  for (int round = 0; round < 200; ++round) {
    const RandomCurve c = random.Next(600);
    const CurveView curve = ViewOf(c);
    BitsOfStretch whole(curve, 0, curve.n);
    whole.Compare(0, curve.n - 1);
    BitsOfStretch parts(curve, 0, curve.n);
    for (std::ptrdiff_t first = 0; first < curve.n;) {
      first += random.Below(40);
      const std::ptrdiff_t last = std::min<std::ptrdiff_t>(first + random.Below(90), curve.n - 1);
      if (first > last) break;
      parts.Compare(first, last);
      for (std::ptrdiff_t i = first; i <= last; ++i)
        for (const auto kind : {&PointBits::apex, &PointBits::rise, &PointBits::foot, &PointBits::bottom})
          ASSERT_EQ(parts.Has(i, kind), whole.Has(i, kind)) << i;
      first = last + 1;
    }
  }
}

TEST(PointBits, NextAndPreviousFindTheNearest) {
  RandomCurves random(34);
  for (int round = 0; round < 200; ++round) {
    const RandomCurve c = random.Next(300);
    const CurveView curve = ViewOf(c);
    const BitsOfStretch bits(curve, 0, curve.n);
    const std::ptrdiff_t from = random.Below(static_cast<int>(curve.n));
    const std::ptrdiff_t to = from + random.Below(static_cast<int>(curve.n - from));
    std::ptrdiff_t next = from;
    while (next < to && !curve.AboveBaseline(next)) ++next;
    EXPECT_EQ(bits.Next(from, to, kAbove), next);
    std::ptrdiff_t previous = to;
    while (previous >= from && !curve.AboveBaseline(previous)) --previous;
    EXPECT_EQ(bits.Previous(to, from, kAbove), previous);
  }
}

TEST(PointBits, AnEmptyStretchHasNone) {
  const RandomCurve c{{5, 6}, {0, 0}};
  const BitsOfStretch bits(ViewOf(c), 0, 2);
  EXPECT_EQ(bits.Next(1, 1, kAbove), 1);
  EXPECT_EQ(bits.Previous(0, 1, kAbove), 0);
}
