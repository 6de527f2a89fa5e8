#include <tslbl/curve/Curve.h>

#include <tslbl/closed/common/BinaryStream.h>
#include <tslbl/closed/common/Truncate.h>
#include <tslbl/curve/PeakLevels.h>
#include <tslbl/records/Archive.h>
#include <algorithm>
#include <cmath>
#include <memory>
#include <utility>

namespace TslBL {
namespace {

void DescribeAnnotation(Archive& ar, Annotation& a) {
  ar(L"x", a.x);
  ar(L"y", a.y);
  ar(L"text", a.text);
}

class NewCurve final : public Curve {
 public:
  Curve* Clone() const override { return new NewCurve(*this); }
};

}  // namespace

void Describe(Archive& ar, Curve& c) {
  ar.Version(2, "Unknown Curve version.");
  ar(L"id", c.id);
  ar(L"name", c.name);
  ar(L"status", c.status);
  ar.List(L"sourceListA", c.sourceListA, DescribeId);
  ar.List(L"sourceListB", c.sourceListB, DescribeId);
  ar(L"xAxis", c.xAxis);
  ar.Nested(c.smoothParams);
  ar(L"yAxis", c.yAxis);
  ar.Nested(c.baselineParams);
  ar(L"baseline", c.baseline);
  ar.Nested(c.noiseParams);
  ar(L"noise", c.noise);
  ar.Nested(c.thresholdParams);
  ar.Nested(c.peakDetectParams);
  ar.List(L"peaks", c.peaks);
  ar(L"largestAreaIdx", c.largestAreaIdx);
  ar(L"largestMaxIdx", c.largestMaxIdx);
  ar(L"largestCentroidIdx", c.largestCentroidIdx);
  ar.List(L"evals", c.evals);
  if (ar.Since(2)) ar.List(L"annotations", c.annotations, DescribeAnnotation);
}

void Curve::Serialize(BinaryReader& reader) {
  // A failure half way must not leave half a curve. What a derived class has of its own stays, what an older
  // version lacks is as in a new curve.
  const std::unique_ptr<Curve> fresh(Clone());
  *fresh = NewCurve();
  frame::ReadBinary(&frame::DescribeErased<Curve>, fresh.get(), reader);
  *this = std::move(*fresh);
}

void Curve::Serialize(BinaryWriter& writer) const {
  frame::WriteBinary(&frame::DescribeErased<Curve>, this, writer);
}

std::uint32_t Curve::QXAxisToIdx(double x, RoundIndex round) const {
  if (!CheckAllStatus(STATUS_X) || xAxis.empty()) return 0;
  const auto n = static_cast<std::int64_t>(xAxis.size());
  if (x <= xAxis.front()) return 0;
  if (x >= xAxis.back()) return static_cast<std::uint32_t>(n - 1);
  std::int64_t lo = 0;
  std::int64_t hi = n;
  for (std::int64_t mid = n / 2; hi >= lo; mid = lo + (hi - lo) / 2) {
    const double at = xAxis[static_cast<std::size_t>(mid)];
    if (std::abs(at - x) <= 1e-6) return static_cast<std::uint32_t>(mid);
    if (at < x) {
      lo = mid + 1;
    } else {
      hi = mid - 1;
    }
  }
  // A NaN leads below the first point.
  return static_cast<std::uint32_t>(std::max<std::int64_t>(round == ROUND_DOWN ? hi : lo, 0));
}

double Curve::FractionalIndexToXAxisVal(double idx) const {
  if (xAxis.empty()) return 0.0;
  const std::size_t i = std::min<std::size_t>(Truncate<std::uint32_t>(idx), xAxis.size() - 1);
  if (i + 1 >= xAxis.size()) return xAxis[i];
  return xAxis[i] + (idx - static_cast<double>(i)) * (xAxis[i + 1] - xAxis[i]);
}

double QSignalToNoise(double signal, double baseline, double noise) {
  return noise >= 1e-8 ? (signal - baseline) / noise : 9e99;
}

void QWidthAndResolution(double x, double leftX, double rightX, double& width, double& resolution) {
  width = rightX - leftX;
  resolution = ResolutionOf(x, width);
}

}  // namespace TslBL
