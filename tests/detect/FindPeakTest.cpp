#include <gtest/gtest.h>

#include <tslbl/detect/FindPeak.h>
#include <sstream>
#include <string>

using namespace TslBL;

namespace {

// Peaks from "start-end start-end ...".
std::vector<PeakInfo> Peaks(const std::string& text) {
  std::istringstream in(text);
  std::vector<PeakInfo> peaks;
  PeakInfo peak;
  for (char dash; in >> peak.startIdx >> dash >> peak.endIdx;) peaks.push_back(peak);
  return peaks;
}

std::vector<PeakInfo*> Pointers(std::vector<PeakInfo>& peaks) {
  std::vector<PeakInfo*> pointers;
  for (PeakInfo& peak : peaks) pointers.push_back(&peak);
  return pointers;
}

std::int32_t BruteForce(const std::vector<PeakInfo>& peaks, std::uint32_t idx) {
  for (std::size_t i = 0; i < peaks.size(); ++i)
    if (peaks[i].startIdx <= idx && idx <= peaks[i].endIdx) return static_cast<std::int32_t>(i);
  return -1;
}

}  // namespace

TEST(FindPeakIdxByCurveIdx, FindsNothingInAnEmptyTable) {
  std::vector<PeakInfo*> none;
  EXPECT_EQ(FindPeakIdxByCurveIdx(std::vector<PeakInfo>(), 0), -1);
  EXPECT_EQ(FindPeakIdxByCurveIdx(none, 0), -1);
  EXPECT_EQ(FindPeakIdxByCurveIdx(pointer_vector_adaptor<PeakInfo>(none), 0), -1);
}

TEST(FindPeakIdxByCurveIdx, CountsBothEndsToThePeak) {
  const struct {
    std::uint32_t idx;
    std::int32_t peak;
  } rows[] = {{0, -1},  {9, -1},  {10, 0}, {12, 0}, {14, 0},  {15, -1}, {19, -1},     {20, 1},
              {21, -1}, {29, -1}, {30, 2}, {39, 2}, {40, -1}, {45, -1}, {1000000, -1}};
  for (const auto& [idx, peak] : rows)
    EXPECT_EQ(FindPeakIdxByCurveIdx(Peaks("10-14 20-20 30-39"), idx), peak) << idx;
}

TEST(FindPeakIdxByCurveIdx, AgreesWithATableScan) {
  auto peaks = Peaks("3-4 6-9 10-10 12-15 16-20 25-26 27-27 30-31 40-44");
  for (; !peaks.empty(); peaks.pop_back())
    for (std::uint32_t idx = 0; idx < 50; ++idx)
      ASSERT_EQ(FindPeakIdxByCurveIdx(peaks, idx), BruteForce(peaks, idx)) << idx << " of " << peaks.size();
}

TEST(FindPeakIdxByCurveIdx, TakesRowsPointersAndTheAdaptorAlike) {
  auto peaks = Peaks("1-2 4-6 8-9");
  const auto pointers = Pointers(peaks);
  const pointer_vector_adaptor<PeakInfo> adaptor(pointers);
  for (std::uint32_t idx = 0; idx < 12; ++idx) {
    EXPECT_EQ(FindPeakIdxByCurveIdx(pointers, idx), BruteForce(peaks, idx)) << idx;
    EXPECT_EQ(FindPeakIdxByCurveIdx(adaptor, idx), BruteForce(peaks, idx)) << idx;
  }
}

TEST(FindPeakIdxByCurveIdx, EndsOnATableOutOfOrder) {
  EXPECT_EQ(FindPeakIdxByCurveIdx(Peaks("0-1 30-40 2-3 4-90"), 50), 3);
  EXPECT_EQ(FindPeakIdxByCurveIdx(Peaks("0-1 30-40 20-90"), 10), -1);
  EXPECT_EQ(FindPeakIdxByCurveIdx(Peaks("0-1 2-3 5-4 0-99"), 80), 3);
}

TEST(PointerVectorAdaptor, LooksLikeAVectorOfWhatThePointersPointTo) {
  auto peaks = Peaks("1-2 4-6 8-9");
  const auto pointers = Pointers(peaks);
  const pointer_vector_adaptor<PeakInfo> adaptor(pointers);
  EXPECT_EQ(adaptor.size(), 3u);
  EXPECT_FALSE(adaptor.empty());
  EXPECT_EQ(&adaptor.front(), &peaks[0]);
  EXPECT_EQ(&adaptor[1], &peaks[1]);
  EXPECT_EQ(&adaptor.back(), &peaks[2]);
}
