#pragma once
// Curves that are ready for peak detection, and notations for what it finds.

#include <gtest/gtest.h>

#include <curve/TestCurve.h>
#include <tslbl/curve/Execute.h>
#include <tslbl/curve/PeakInfo.h>
#include <array>
#include <bit>
#include <cstdint>
#include <random>
#include <sstream>
#include <string>
#include <vector>

namespace tests {

using TslBL::PeakDetectParams;
using TslBL::PeakInfo;

// A curve with a baseline, a noise of 1 and no limit in use.
inline TestCurve PeakCurve(const std::vector<double>& y, const std::vector<double>& baseline) {
  TestCurve curve = CurveOf(y);
  curve.baseline = baseline;
  curve.noise.assign(y.size(), 1.0);
  curve.AddStatus(TslBL::Curve::STATUS_BASELINE);
  curve.AddStatus(TslBL::Curve::STATUS_NOISE);
  curve.peakDetectParams.SNInUse = false;
  return curve;
}
inline TestCurve PeakCurve(const std::vector<double>& y) {
  return PeakCurve(y, std::vector<double>(y.size(), 0.0));
}
inline TestCurve PeakCurve(const std::string& y) { return PeakCurve(Values(y)); }

// Runs peak detection with the curve's own parameters.
inline Outcome Detect(TslBL::Curve& curve) {
  return RunCommand(PeakDetectParams(curve.peakDetectParams), curve);
}

// The table as "start-apex-end start-apex-end".
inline std::string Spans(const std::vector<PeakInfo>& peaks) {
  std::ostringstream out;
  for (const PeakInfo& p : peaks)
    out << (&p == peaks.data() ? "" : " ") << p.startIdx << '-' << p.apexIdx << '-' << p.endIdx;
  return out.str();
}

inline std::string SpansFound(TestCurve curve) {
  EXPECT_TRUE(Detect(curve).ok);
  return Spans(curve.peaks);
}

// Every bit of a row.
inline std::vector<std::uint64_t> Bits(const PeakInfo& p) {
  std::vector<std::uint64_t> bits = {p.startIdx, p.apexIdx, p.endIdx, p.useMax, p.overlapGroup};
  for (const double value : {p.apexAmpl, p.maxIdx, p.maxAmpl, p.maxBaseline, p.centroidIdx, p.centroidAmpl,
                             p.baselineAmpl, p.halfHeightLeftIdx, p.halfHeightRightIdx, p.areaIntercept,
                             p.areaStartIdx, p.areaEndIdx, p.area, p.noiseAmpl})
    bits.push_back(std::bit_cast<std::uint64_t>(value));
  return bits;
}

// Every bit of the table with its three largest rows.
inline std::vector<std::uint64_t> Bits(const TslBL::Curve& curve) {
  std::vector<std::uint64_t> bits;
  for (const std::int32_t index : {curve.largestAreaIdx, curve.largestMaxIdx, curve.largestCentroidIdx})
    bits.push_back(static_cast<std::uint32_t>(index));
  for (const PeakInfo& p : curve.peaks)
    for (const std::uint64_t word : Bits(p)) bits.push_back(word);
  return bits;
}

}  // namespace tests
