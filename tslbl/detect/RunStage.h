#pragma once
// RunStage: how a stage runs over the list of rows, on the caller's thread or spread over several.

#include <tbb/blocked_range.h>

#include <tslbl/detect/LargestPeaks.h>
#include <tslbl/detect/Scheduler.h>
#include <vector>

namespace TslBL {

using RowRange = tbb::blocked_range<std::size_t>;

// The body of the reduce. `Worker` has `bool Keep(PeakInfo& row)`: false throws the row
// out. Bodies write only to the rows and list cells of their own stretch. A body may be
// split while it runs, so the new one takes its worker from the original, which is idle.
template <class Worker>
class StageBody {
 public:
  StageBody(const Worker& original, std::vector<PeakInfo*>& list)
      : original_(original), worker_(original), list_(list) {}
  StageBody(StageBody& other, tbb::split) : StageBody(other.original_, other.list_) {}

  void operator()(const RowRange& range) {
    for (std::size_t i = range.begin(); i != range.end(); ++i) {
      if (list_[i] == nullptr) continue;
      if (worker_.Keep(*list_[i])) {
        largest_.Offer(*list_[i]);
      } else {
        list_[i] = nullptr;
      }
    }
  }
  void join(const StageBody& other) { largest_.Join(other.largest_); }
  const LargestPeaks& Largest() const { return largest_; }

 private:
  const Worker& original_;
  Worker worker_;
  std::vector<PeakInfo*>& list_;
  LargestPeaks largest_;
};

template <class Worker>
LargestPeaks RunStage(const Worker& worker, std::vector<PeakInfo*>& list,
                      const EvalThreadingParams& threading) {
  StageBody<Worker> body(worker, list);
  const RowRange all(0, list.size(), Grain(threading));
  if (threading.GoesParallel(list.size())) {
    ParallelReduce<Worker>(all, body, threading);
  } else {
    body(all);
  }
  return body.Largest();
}

}  // namespace TslBL
