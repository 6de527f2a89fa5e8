#include <gtest/gtest.h>

#include <tslbl/closed/common/Truncate.h>
#include <cmath>
#include <cstdint>
#include <limits>

namespace {

using TslCommon::Truncate;

constexpr double kInfinity = std::numeric_limits<double>::infinity();
constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();

TEST(Truncate, DropsTheFraction) {
  EXPECT_EQ(Truncate<std::int32_t>(2.999), 2);
  EXPECT_EQ(Truncate<std::int32_t>(-2.999), -2);
  EXPECT_EQ(Truncate<std::uint32_t>(-0.999), 0u);
  EXPECT_EQ(Truncate<std::int64_t>(-9e15), -9000000000000000);
}

template <class Int>
class TruncateTo : public testing::Test {};
using Integers = testing::Types<std::int32_t, std::uint32_t, std::int64_t, std::uint64_t>;
TYPED_TEST_SUITE(TruncateTo, Integers);

TYPED_TEST(TruncateTo, StopsAtTheEnds) {
  using Limits = std::numeric_limits<TypeParam>;
  const double pastHigh = std::ldexp(1.0, Limits::digits);
  for (const double value : {pastHigh, pastHigh * 2.0, 1e300, kInfinity})
    EXPECT_EQ(Truncate<TypeParam>(value), Limits::max()) << value;
  for (const double value : {static_cast<double>(Limits::min()), -pastHigh - 1.0, -1e300, -kInfinity})
    EXPECT_EQ(Truncate<TypeParam>(value), Limits::min()) << value;
}

TYPED_TEST(TruncateTo, KeepsTheLastValueBelowTheEnd) {
  const double pastHigh = std::ldexp(1.0, std::numeric_limits<TypeParam>::digits);
  const double last = std::nextafter(pastHigh, 0.0);
  EXPECT_EQ(Truncate<TypeParam>(last), static_cast<TypeParam>(last));
}

TYPED_TEST(TruncateTo, IsZeroForWhatIsNoNumber) { EXPECT_EQ(Truncate<TypeParam>(kNaN), TypeParam{0}); }

}  // namespace
