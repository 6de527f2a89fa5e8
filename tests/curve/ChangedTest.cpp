#include <gtest/gtest.h>

#include <curve/TestCurve.h>
#include <bit>
#include <cstring>

using namespace TslBL;
using namespace tests;

namespace {

// The seven flags of the word that holds them; what its other bits hold is nobody's business.
std::uint32_t FlagBits(const Changed& changed) {
  std::uint32_t bits = 0;
  std::memcpy(&bits, reinterpret_cast<const char*>(&changed) + sizeof changed.value, 1);
  return bits & 0x7F;
}

Changed With(void (*set)(Changed&)) {
  Changed changed;
  set(changed);
  return changed;
}

}  // namespace

TEST(Changed, HasNoFlagsAndNoValueAtFirst) {
  EXPECT_EQ(Flags(Changed()), "");
  EXPECT_EQ(Changed().value, 0u);
}

TEST(Changed, TakesTheCallersValueAndNoFlags) {
  EXPECT_EQ(Changed(0xFFFFFFFFu).value, 0xFFFFFFFFu);
  EXPECT_EQ(Flags(Changed(0xFFFFFFFFu)), "");
}

TEST(Changed, CopiesValueAndFlags) {
  Changed changed(7);
  changed.noise = true;
  Changed copy(1);
  copy = changed;
  EXPECT_EQ(copy.value, 7u);
  EXPECT_EQ(Flags(copy), "noise");
}

TEST(Changed, HasItsFlagsFromTheLowestBitUp) {
  const struct {
    void (*set)(Changed&);
    std::uint32_t bits;
    const char* name;
  } rows[] = {
      {[](Changed& c) { c.yAxis = true; }, 0x01, "yAxis"},
      {[](Changed& c) { c.baseline = true; }, 0x02, "baseline"},
      {[](Changed& c) { c.noise = true; }, 0x04, "noise"},
      {[](Changed& c) { c.threshold = true; }, 0x08, "threshold"},
      {[](Changed& c) { c.peaks = true; }, 0x10, "peaks"},
      {[](Changed& c) { c.overlapPeaks = true; }, 0x20, "overlapPeaks"},
      {[](Changed& c) { c.chargeState = true; }, 0x40, "chargeState"},
  };
  for (const auto& [set, bits, name] : rows) {
    EXPECT_EQ(Flags(With(set)), name);
    EXPECT_EQ(FlagBits(With(set)), bits) << name;
  }
}

TEST(Changed, StepsOnlyAddFlags) {
  TestCurve curve = CurveOf("1 2 3");
  Changed changed(5);
  changed.chargeState = true;
  std::wstring error;
  EXPECT_TRUE(CurveEval(ThresholdParams()).Execute(curve, changed, error));
  EXPECT_EQ(Flags(changed), "threshold chargeState");
  EXPECT_EQ(changed.value, 5u);
}
