#include <gtest/gtest.h>
#include <zlib.h>

#include <cmath>
#include <limits>
#include <stdexcept>
#include <string>
#include <vector>

#include <tool/io/Counts.h>
#include <tool/io/MzMLMaker.h>

namespace tests {
namespace {

using TslTool::PackCounts;
using TslTool::PackedCounts;
using TslTool::UnpackCounts;

std::vector<double> RoundTrip(const std::vector<double>& counts) {
  const PackedCounts packed = PackCounts(counts);
  std::vector<double> back = {7.0};
  UnpackCounts(packed.encoding, packed.bytes, counts.size(), back);
  return back;
}

std::string ErrorOf(const std::string& encoding, const std::string& bytes, std::uint64_t points) {
  std::vector<double> counts;
  try {
    UnpackCounts(encoding, bytes, points, counts);
  } catch (const std::runtime_error& error) {
    return error.what();
  }
  return "";
}

TEST(Counts, ComeBackToTheBit) {
  const double most = std::numeric_limits<std::uint32_t>::max();
  for (const std::vector<double>& counts :
       {Values{}, Values{0}, Values{0, 1, 2, most}, Values{0.5, -3, 1e300}, Values{most + 1}, Values{-1}})
    EXPECT_EQ(RoundTrip(counts), counts);
}

TEST(Counts, KeepTheSignOfZero) { EXPECT_TRUE(std::signbit(RoundTrip({-0.0}).front())); }

TEST(Counts, AreIntegersWhereTheyAreWhole) {
  EXPECT_EQ(PackCounts({0, 5, 4294967295.0}).encoding, "u32-zlib");
  for (const double other : {0.5, -1.0, 4294967296.0, -0.0})
    EXPECT_EQ(PackCounts({other}).encoding, "f64-zlib");
}

TEST(Counts, AreOneZlibStreamOfLittleEndianNumbers) {
  const std::string bytes = PackCounts({1, 258}).bytes;
  unsigned char plain[8];
  uLongf size = sizeof plain;
  ASSERT_EQ(uncompress(plain, &size, reinterpret_cast<const Bytef*>(bytes.data()), bytes.size()), Z_OK);
  EXPECT_EQ(std::vector<int>(plain, plain + size), std::vector<int>({1, 0, 0, 0, 2, 1, 0, 0}));
}

TEST(Counts, ShrinkWhereTheyAreSmall) {
  EXPECT_LT(PackCounts(std::vector<double>(20000, 8.0)).bytes.size(), 1000U);
}

TEST(Counts, AreRefusedCutAtAnyLength) {
  const PackedCounts packed = PackCounts({1, 2, 3, 400, 5, 60000});
  for (std::size_t length = 0; length < packed.bytes.size(); ++length)
    EXPECT_NE(ErrorOf(packed.encoding, packed.bytes.substr(0, length), 6), "") << length;
}

TEST(Counts, AreRefusedWithAnyByteChanged) {
  const PackedCounts packed = PackCounts({1, 2, 3, 400, 5, 60000});
  for (std::size_t i = 2; i < packed.bytes.size(); ++i) {
    std::string bytes = packed.bytes;
    bytes[i] = static_cast<char>(bytes[i] ^ 0x41);
    std::vector<double> counts;
    EXPECT_NE(ErrorOf(packed.encoding, bytes, 6), "") << i;
  }
}

TEST(Counts, AreRefusedForAnotherNumberOfPoints) {
  const PackedCounts packed = PackCounts({1, 2, 3});
  for (const std::uint64_t points : {0ULL, 2ULL, 4ULL})
    EXPECT_EQ(ErrorOf(packed.encoding, packed.bytes, points), "counts are damaged");
}

TEST(Counts, ClaimsOfMorePointsThanTheBytesCanHoldCostNoMemory) {
  const PackedCounts packed = PackCounts({1, 2, 3});
  for (const std::uint64_t points : {1ULL << 32, 1ULL << 62, ~0ULL})
    EXPECT_EQ(ErrorOf(packed.encoding, packed.bytes, points), "counts are cut short");
}

TEST(Counts, UnknownEncodingIsNamed) {
  EXPECT_EQ(ErrorOf("u16", "", 0), "unknown encoding of counts \"u16\"");
}

}  // namespace
}  // namespace tests
