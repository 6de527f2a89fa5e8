// The Sequential route: sweeps the range on the caller's thread or spread over several, and
// turns the features into rows.

#include <tslbl/detect/FeatureRows.h>
#include <tslbl/detect/FindFeatures.h>
#include <tslbl/detect/RejectionBound.h>
#include <tslbl/detect/Scheduler.h>
#include <algorithm>

namespace TslBL {
namespace {

// A stretch of points for the parallel reduce. It is cut only where the curve rises from
// the baseline, in the middle as nearly as that allows: no feature reaches across such a
// point, so the result is the same however the scheduler cuts, to the bit.
class SweepRange {
 public:
  SweepRange(const CurveView& curve, std::ptrdiff_t begin, std::ptrdiff_t end, std::size_t grain)
      : curve_(&curve), begin_(begin), end_(end), grain_(static_cast<std::ptrdiff_t>(grain)) {
    FindCut();
  }
  SweepRange(SweepRange& whole, tbb::split)
      : curve_(whole.curve_), begin_(whole.cut_), end_(whole.end_), grain_(whole.grain_) {
    whole.end_ = whole.cut_;
    whole.FindCut();
    FindCut();
  }

  bool empty() const { return begin_ >= end_; }
  bool is_divisible() const { return cut_ > begin_; }
  std::ptrdiff_t Begin() const { return begin_; }
  std::ptrdiff_t End() const { return end_; }

 private:
  // The cut nearest to the middle, to its right and then to its left; none for a stretch of
  // grain size.
  void FindCut() {
    cut_ = begin_;
    if (end_ - begin_ <= grain_) return;
    const std::ptrdiff_t middle = begin_ + (end_ - begin_) / 2;
    for (std::ptrdiff_t i = std::max(middle, begin_ + 1); i < end_; ++i)
      if (curve_->RisesFromBaseline(i)) return void(cut_ = i);
    for (std::ptrdiff_t i = middle - 1; i > begin_; --i)
      if (curve_->RisesFromBaseline(i)) return void(cut_ = i);
  }

  const CurveView* curve_;
  std::ptrdiff_t begin_;
  std::ptrdiff_t end_;
  std::ptrdiff_t grain_;
  std::ptrdiff_t cut_ = 0;
};

// The finder in the shape that the parallel reduce wants.
class SweepBody {
 public:
  explicit SweepBody(FindFeatures finder) : finder_(std::move(finder)) {}
  SweepBody(SweepBody& other, tbb::split) : finder_(other.finder_.NewForPart()) {}

  void operator()(const SweepRange& range) { finder_.Sweep(range.Begin(), range.End()); }
  void join(const SweepBody& right) { finder_.Join(right.finder_); }
  const FindFeatures& Finder() const { return finder_; }

 private:
  FindFeatures finder_;
};

void KeepTallest(std::vector<PeakFeature>& features, std::size_t count, const double* y) {
  if (features.size() <= count) return;
  std::ranges::stable_sort(features, std::ranges::greater{}, [y](const PeakFeature& f) { return y[f.apex]; });
  features.resize(count);
  std::ranges::sort(features, {}, &PeakFeature::apex);
}

}  // namespace

FeatureRows FindFeaturesSequential(const Curve& curve, const SearchRange& range, Features wanted) {
  const PeakDetectParams& p = curve.peakDetectParams;
  const FindFeatureThreadingParams threading = GetMultiThreadingParams().FindFeature;
  const CurveView view{curve.yAxis.data() + range.first, curve.baseline.data() + range.first,
                       static_cast<std::ptrdiff_t>(range.last - range.first) + 1};
  // A feature that fails may be among the tallest.
  const RejectionBound bound(curve, range.first);
  const bool leaveOut = wanted == Features::Promising && !p.PeakCntInUse && !bound.RejectsNothing();
  SweepBody body(FindFeatures(view, p.MaxValley, leaveOut ? &bound : nullptr));
  const SweepRange whole(view, 0, view.n, Grain(threading));
  if (threading.GoesParallel(static_cast<std::size_t>(view.n))) {
    ParallelReduce<FindFeatures>(whole, body, threading);
  } else {
    body(whole);
  }

  std::vector<PeakFeature> features = body.Finder().Settled();
  if (p.PeakCntInUse) KeepTallest(features, p.PeakCnt, view.y);

  FeatureRows found;
  found.rows.reserve(features.size());
  found.list.reserve(features.size());
  for (const PeakFeature& f : features) {
    PeakInfo row;
    row.startIdx = range.first + static_cast<std::uint32_t>(f.start);
    row.apexIdx = range.first + static_cast<std::uint32_t>(f.apex);
    row.endIdx = range.first + static_cast<std::uint32_t>(f.end);
    row.apexAmpl = view.y[f.apex];
    row.useMax = p.RetentionType == PeakDetectParams::PeakTop;
    found.rows.push_back(row);
    found.list.push_back(&found.rows.back());
  }
  return found;
}

}  // namespace TslBL
