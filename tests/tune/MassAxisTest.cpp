#include <gtest/gtest.h>

#include <tslbl/tune/MZConvert.h>
#include <tslbl/tune/MassAxis.h>
#include <bit>
#include <limits>
#include <random>
#include <stdexcept>

using namespace TslBL;

namespace {

// The bits of the axis by single conversions; nothing if one of them fails.
std::vector<std::uint64_t> OneByOne(const std::vector<MZCalPt>& calPts, double start, double step,
                                    std::size_t points) {
  const MZConvert convert(calPts);
  std::vector<std::uint64_t> bits;
  try {
    for (std::size_t i = 0; i < points; ++i)
      bits.push_back(std::bit_cast<std::uint64_t>(convert.DACToMZ(static_cast<double>(i) * step + start)));
  } catch (const std::runtime_error&) {
    bits.clear();
  }
  return bits;
}

std::vector<std::uint64_t> AtOnce(const std::vector<MZCalPt>& calPts, double start, double step,
                                  std::size_t points) {
  std::vector<std::uint64_t> bits;
  try {
    for (const double mz : MassAxis(calPts, start, step, points))
      bits.push_back(std::bit_cast<std::uint64_t>(mz));
  } catch (const std::runtime_error&) {
  }
  return bits;
}

const std::vector<MZCalPt> kFourPoints = {
    {L"a", 5, 100}, {L"b", 500, 10001}, {L"c", 1500, 29997.5}, {L"d", 3000, 60000}};

}  // namespace

TEST(MassAxis, IsLinearOnTwoPoints) {
  EXPECT_EQ(MassAxis(std::vector<MZCalPt>{{L"Low", 5, 100}, {L"High", 3000, 60000}}, 2000.0, 2.0, 3),
            (std::vector<double>{100.0, 100.1, 100.2}));
}

TEST(MassAxis, HasTheBitsOfSingleConversionsOverAllSegmentsAndBeyond) {
  EXPECT_EQ(AtOnce(kFourPoints, -500.25, 1.0, 62000), OneByOne(kFourPoints, -500.25, 1.0, 62000));
  EXPECT_EQ(AtOnce(kFourPoints, 61000.0, -1.0, 62000), OneByOne(kFourPoints, 61000.0, -1.0, 62000));
}

TEST(MassAxis, TakesPointsInAnyOrder) {
  const std::vector<MZCalPt> shuffled = {kFourPoints[2], kFourPoints[0], kFourPoints[3], kFourPoints[1]};
  EXPECT_EQ(MassAxis(shuffled, 0.0, 50.0, 1300), MassAxis(kFourPoints, 0.0, 50.0, 1300));
}

TEST(MassAxis, OfNoCalibrationIsZeroAndOfOnePointThatPoint) {
  EXPECT_EQ(MassAxis(std::vector<MZCalPt>{}, 1.0, 2.0, 2), (std::vector<double>{0.0, 0.0}));
  EXPECT_EQ(MassAxis(std::vector<MZCalPt>{{L"a", 7.0, 9.0}}, 1.0, 2.0, 2), (std::vector<double>{7.0, 7.0}));
}

TEST(MassAxis, OfNoPointsIsEmptyAndNeverFails) {
  EXPECT_TRUE(MassAxis(std::vector<MZCalPt>{{L"a", 7.0, 0.0}, {L"b", 7.0, 9.0}}, 1.0, 2.0, 0).empty());
}

TEST(MassAxis, FailsOnlyWhereItFallsBetweenPointsOfOneMz) {
  const std::vector<MZCalPt> calPts = {{L"a", 5, 100}, {L"b", 10, 200}, {L"c", 10, 300}, {L"d", 20, 400}};
  EXPECT_NO_THROW(MassAxis(calPts, 100.0, 10.0, 11));
  EXPECT_THROW(MassAxis(calPts, 100.0, 10.0, 12), std::runtime_error);
}

// Tables as a damaged file may hold them: DAC values that fall or stand, equal m/z, values
// that are no numbers.
TEST(MassAxis, HasTheBitsOfSingleConversionsForAnyTable) {
  std::mt19937 random(20240607);
  const auto below = [&](int end) { return std::uniform_int_distribution<int>(0, end - 1)(random); };
  for (int round = 0; round < 3000; ++round) {
    std::vector<MZCalPt> calPts;
    for (int i = below(7); i >= 0; --i) {
      const double mz = static_cast<double>(calPts.size()) + 0.25 * below(3) * below(2);
      const double dac = below(50) == 0 ? std::numeric_limits<double>::quiet_NaN() : 10.0 * below(20);
      calPts.emplace_back(L"", mz, dac);
    }
    const double start = 10.0 * below(30) - 50.0;
    const double step = 2.5 * (below(9) - 4);
    SCOPED_TRACE("round " + std::to_string(round));
    ASSERT_EQ(AtOnce(calPts, start, step, 80), OneByOne(calPts, start, step, 80));
  }
}
