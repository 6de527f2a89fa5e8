#pragma once
// The same work for each group of a spectrum: groups know nothing of each other.

#include <tbb/blocked_range.h>

#include <tslbl/detect/Scheduler.h>
#include <tslbl/detect/ThreadingParams.h>
#include <tslbl/overlap/GroupPoints.h>
#include <cstddef>
#include <exception>
#include <span>
#include <utility>
#include <variant>
#include <vector>

namespace TslBL {

// What became of the work for a group.
template <class Result>
class Outcome {
 public:
  Outcome() = default;
  template <class Work>
  explicit Outcome(Work work) {
    try {
      result_ = work();
    } catch (...) {
      result_ = std::current_exception();
    }
  }

  // Throws what the work threw.
  Result Take() {
    if (const auto* failure = std::get_if<std::exception_ptr>(&result_)) std::rethrow_exception(*failure);
    return std::move(std::get<Result>(result_));
  }

 private:
  std::variant<Result, std::exception_ptr> result_;
};

// Does work(group) for the groups of a range. As the parallel library wants a reduction.
template <class Result, class Peak, class Work>
struct WorkOnRange {
  const std::vector<std::span<const Peak>>& groups;
  std::vector<Outcome<Result>>& outcomes;
  Work& work;

  WorkOnRange(const std::vector<std::span<const Peak>>& groups_, std::vector<Outcome<Result>>& outcomes_,
              Work& work_)
      : groups(groups_), outcomes(outcomes_), work(work_) {}
  WorkOnRange(WorkOnRange& other, tbb::split)
      : groups(other.groups), outcomes(other.outcomes), work(other.work) {}

  void operator()(const tbb::blocked_range<std::size_t>& range) {
    for (std::size_t i = range.begin(); i != range.end(); ++i)
      outcomes[i] = Outcome<Result>([&] { return work(groups[i]); });
  }
  void join(const WorkOnRange&) {}
};

// Calls use(outcome) for each run of peaks of equal GroupId, in order, with what work(run) came to. The work
// is done on the threads on which peaks are described if `atOnce`, all of it before the first use; else on
// the calling thread, group by group, and not for those behind a use that throws.
template <class Result, class Peak, class Work, class Use>
void WorkOnGroups(std::span<const Peak> peaks, bool atOnce, Work work, Use use) {
  std::vector<std::span<const Peak>> groups;
  ForEachGroup(peaks, [&](std::span<const Peak> group) { groups.push_back(group); });
  const EvalThreadingParams threading = GetMultiThreadingParams().DescribePeaks;
  if (!atOnce || !threading.EnableMultiThreading || groups.size() < 2) {
    for (const auto& group : groups) {
      Outcome<Result> outcome([&] { return work(group); });
      use(outcome);
    }
    return;
  }
  std::vector<Outcome<Result>> outcomes(groups.size());
  WorkOnRange<Result, Peak, Work> body(groups, outcomes, work);
  ParallelReduce<WorkOnRange<Result, Peak, Work>>(tbb::blocked_range<std::size_t>(0, groups.size()), body,
                                                  threading);
  for (Outcome<Result>& outcome : outcomes) use(outcome);
}

}  // namespace TslBL
