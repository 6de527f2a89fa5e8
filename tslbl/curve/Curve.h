#pragma once
// The one data model of all evaluation: an x axis, amplitudes, the baseline and noise
// curves computed from them, the parameters of every step, the table of detected peaks and
// the history of what was done.
//
// All arrays of a curve have one entry a point. A creator fills xAxis and yAxis and sets
// STATUS_X and STATUS_Y; evaluation commands (CurveEval.h) do the rest. A curve is a value,
// copied deep, and not for two threads at once.

#include <tslbl/closed/common/XMLBuilder.h>
#include <tslbl/curve/BaselineParams.h>
#include <tslbl/curve/CurveEval.h>
#include <tslbl/curve/CurvePeak.h>
#include <tslbl/curve/NoiseParams.h>
#include <tslbl/curve/PeakDetectParams.h>
#include <tslbl/curve/PeakInfo.h>
#include <tslbl/curve/SmoothParams.h>
#include <tslbl/curve/ThresholdParams.h>
#include <cstdint>
#include <string>
#include <vector>

namespace TslBL {

// A labelled position, carried for the caller.
struct Annotation {
  double x = 0.0;
  double y = 0.0;
  std::wstring text;

  bool operator==(const Annotation&) const = default;
};

// Which of its two neighbours stands for a place between points.
enum RoundIndex : std::uint32_t { ROUND_DOWN = 0, ROUND_UP = 1 };

class TSLBL_API Curve : public ITslSerial {
 public:
  static constexpr std::uint32_t ID_INVALID = 0;
  static constexpr std::uint32_t ID_RT_SPEC = 1;
  static constexpr std::uint32_t ID_RT_TIC_SCAN = 2;
  static constexpr std::uint32_t ID_RT_TIC_SIM = 3;

  // What of the curve is valid. Bits are only ever added.
  enum Status : std::uint32_t {
    STATUS_Y = 0x001,
    STATUS_X = 0x002,
    STATUS_THRESHOLD = 0x004,
    STATUS_SMOOTHED = 0x008,
    STATUS_BASELINE = 0x010,
    STATUS_NOISE = 0x020,
    STATUS_PEAKS = 0x040,  // `peaks` may still be empty
    STATUS_OPD = 0x080,
    STATUS_CSDECON = 0x100,
  };
  // A curve with one of these is frozen against further processing, so that the results of
  // a deconvolution cannot go stale under it.
  static constexpr auto STATUS_FROZEN = static_cast<Status>(STATUS_OPD | STATUS_CSDECON);

  std::uint32_t id = ID_INVALID;
  std::wstring name;
  std::uint32_t status = 0;
  std::vector<std::uint32_t> sourceListA;  // ids carried for the caller
  std::vector<std::uint32_t> sourceListB;
  std::vector<double> xAxis;  // strictly ascending
  SmoothParams smoothParams;
  std::vector<double> yAxis;
  BaselineParams baselineParams;
  std::vector<double> baseline;
  NoiseParams noiseParams;
  std::vector<double> noise;
  ThresholdParams thresholdParams;
  PeakDetectParams peakDetectParams;
  std::vector<PeakInfo> peaks;  // ascending by position
  // Index of the peak with the largest area, maxAmpl and centroidAmpl, of equal ones the
  // first; -1 while there is no peak.
  std::int32_t largestAreaIdx = -1;
  std::int32_t largestMaxIdx = -1;
  std::int32_t largestCentroidIdx = -1;
  std::vector<CurveEval> evals;  // every evaluation that ran, in its order
  std::vector<Annotation> annotations;

  Curve() = default;
  Curve(const Curve&) = default;
  Curve& operator=(const Curve&) = default;
  Curve(Curve&&) = default;
  Curve& operator=(Curve&&) = default;

  // A new copy, owned by the caller.
  virtual Curve* Clone() const = 0;

  void AddStatus(Status bits) { status |= bits; }
  bool CheckAllStatus(Status bits) const { return (status & bits) == bits; }
  bool CheckAnyStatus(Status bits) const { return (status & bits) != 0; }

  std::uint32_t QNumPoints() const { return static_cast<std::uint32_t>(yAxis.size()); }
  std::uint32_t QNumPeaks() const { return static_cast<std::uint32_t>(peaks.size()); }

  // The point at x, within 1e-6; between two points the one below or above it. Clamped to
  // the ends; 0 without STATUS_X.
  std::uint32_t QXAxisToIdx(double x, RoundIndex round) const;
  // The x value at a fractional index, linear between points; past the last point, the last.
  double FractionalIndexToXAxisVal(double idx) const;

  // Stores a parameter block; an int stands for a command without parameters.
  template <class T>
  void SetParam(const T& params) {
    *this = params;
  }

  // Versions 1 (without annotations) and 2.
  using ITslSerial::Serialize;
  void Serialize(BinaryReader& reader) override;
  void Serialize(BinaryWriter& writer) const override;

 private:
  void operator=(const SmoothParams& params) { smoothParams = params; }
  void operator=(const BaselineParams& params) { baselineParams = params; }
  void operator=(const NoiseParams& params) { noiseParams = params; }
  void operator=(const ThresholdParams& params) { thresholdParams = params; }
  void operator=(const PeakDetectParams& params) { peakDetectParams = params; }
  void operator=(int) {}
};
// The fields that Curve itself has.
TSLBL_API void Describe(Archive& ar, Curve& c);

// One peak in x-axis units. Throws std::runtime_error "Peak table is empty.", and
// std::out_of_range if peakIdx is no row of the table.
TSLBL_API CurvePeak TranslateCurvePeak(const Curve& curve, std::uint32_t peakIdx);

// The peak table as XML: nothing if the curve has not been peak-detected.
TSLBL_API void AddCurvePeaks(const Curve& curve, XMLBuilder& builder);

// (signal - baseline) / noise, and 9e99 where noise is below 1e-8 or not a number.
TSLBL_API double QSignalToNoise(double signal, double baseline, double noise);

// Width rightX - leftX, and resolution x / width, 0 for a width that is not above 0.
TSLBL_API void QWidthAndResolution(double x, double leftX, double rightX, double& width, double& resolution);

}  // namespace TslBL
