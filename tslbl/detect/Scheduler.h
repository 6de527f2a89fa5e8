#pragma once
// The threads of the process on which peak detection runs, and how a stage spreads over
// them.

#include <tbb/parallel_reduce.h>
#include <tbb/partitioner.h>
#include <tbb/task_arena.h>

#include <tslbl/detect/ThreadingParams.h>
#include <cstdint>
#include <memory>

namespace TslBL {

// The arena of the process, with the number of threads that the process-wide parameters
// ask for. SetMultiThreadingParams may make another; one that is in use stays.
std::shared_ptr<tbb::task_arena> SchedulerArena();

// How many schedulers the process has made so far, and the threads of the present one.
std::uint64_t SchedulerGeneration();
int SchedulerThreads();

// Remembers which thread did which part of a stage. For one calling thread, and for arenas
// of one size, so that it starts anew with another scheduler.
class Affinity {
 public:
  template <class Range, class Body>
  void Reduce(const Range& range, Body& body) {
    // A thread that waits in one reduction may be given another caller's to do.
    if (busy_) return tbb::parallel_reduce(range, body, tbb::auto_partitioner());
    if (!partitioner_ || generation_ != SchedulerGeneration()) {
      partitioner_ = std::make_unique<tbb::affinity_partitioner>();
      generation_ = SchedulerGeneration();
    }
    const Busy busy(busy_);
    tbb::parallel_reduce(range, body, *partitioner_);
  }

 private:
  struct Busy {
    explicit Busy(bool& busy) : flag(busy) { flag = true; }
    ~Busy() { flag = false; }
    bool& flag;
  };

  bool busy_ = false;
  std::uint64_t generation_ = 0;
  std::unique_ptr<tbb::affinity_partitioner> partitioner_;
};

// A parallel reduce of `body` over `range` on the process's threads, cut up as the
// parameters say. `Stage` tells the stages apart: each remembers on its own which thread
// did what, so that a stage can return to the same threads from call to call.
template <class Stage, class Range, class Body>
void ParallelReduce(const Range& range, Body& body, const EvalThreadingParams& params) {
  const std::shared_ptr<tbb::task_arena> arena = SchedulerArena();
  arena->execute([&] {
    switch (params.Partitioner) {
      case EvalThreadingParams::Simple:
        tbb::parallel_reduce(range, body, tbb::simple_partitioner());
        return;
      case EvalThreadingParams::AutoAffinity: {
        thread_local Affinity affinity;
        affinity.Reduce(range, body);
        return;
      }
      default:
        tbb::parallel_reduce(range, body, tbb::auto_partitioner());
    }
  });
}

// Items a task at least: the grain of the parameters for "Simple", 1 for the others, which
// decide for themselves.
inline std::size_t Grain(const EvalThreadingParams& params) {
  const bool simple = params.Partitioner == EvalThreadingParams::Simple;
  return simple && params.GrainSize > 0 ? params.GrainSize : 1;
}

}  // namespace TslBL
