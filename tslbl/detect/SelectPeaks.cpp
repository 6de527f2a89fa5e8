// Selection: the user's limits, applied to the described peaks.

#include <tslbl/curve/PeakLevels.h>
#include <tslbl/detect/DescribeAndSelect.h>
#include <tslbl/detect/PeakDetectLog.h>
#include <tslbl/detect/RunStage.h>

namespace TslBL {
namespace {

class SelectPeak {
 public:
  SelectPeak(const Curve& curve, const LargestPeaks& described) : curve_(curve), described_(described) {}

  bool Keep(const PeakInfo& p) const {
    return WidthPasses(p) && AmplitudePasses(p) && SignalToNoisePasses(p) && AreaPasses(p);
  }

 private:
  const PeakDetectParams& Limits() const { return curve_.peakDetectParams; }

  bool WidthPasses(const PeakInfo& p) const {
    const PeakDetectParams& t = Limits();
    if (!t.FWHMGTInUse && !t.FWHMLTInUse) return true;
    const double width = WidthInX(curve_, p);
    return !(t.FWHMGTInUse && width < t.FWHMGT) && !(t.FWHMLTInUse && width > t.FWHMLT);
  }

  bool AmplitudePasses(const PeakInfo& p) const {
    const PeakDetectParams& t = Limits();
    const double amplitude = p.ReportedAmpl();
    if (t.ThresholdInUse && amplitude < curve_.thresholdParams.Value) return false;
    if (!t.RelAmplInUse) return true;
    const double largest = p.useMax ? described_.maxAmpl->maxAmpl : described_.centroidAmpl->centroidAmpl;
    return !(amplitude < t.RelAmpl * 0.01 * largest);
  }

  bool SignalToNoisePasses(const PeakInfo& p) const {
    return !Limits().SNInUse || !(SignalToNoiseAt(curve_, p.ReportedIdx(), p.ReportedAmpl()) < Limits().SN);
  }

  bool AreaPasses(const PeakInfo& p) const {
    const PeakDetectParams& t = Limits();
    if (t.AbsAreaInUse && p.area < t.AbsArea) return false;
    return !(t.RelAreaInUse && p.area < t.RelArea * 0.01 * described_.area->area);
  }

  const Curve& curve_;
  const LargestPeaks& described_;
};

}  // namespace

LargestPeaks SelectPeaks(const Curve& curve, std::vector<PeakInfo*>& list, const LargestPeaks& described) {
  const StageTimer timer(L"Select Peaks");
  return RunStage(SelectPeak(curve, described), list, GetMultiThreadingParams().SelectPeaks);
}

}  // namespace TslBL
