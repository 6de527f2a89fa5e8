#pragma once
// The threads of the process on which peak detection runs, and how a stage spreads over
// them.

#include <tbb/parallel_reduce.h>
#include <tbb/partitioner.h>
#include <tbb/task_arena.h>

#include <tslbl/Export.h>
#include <tslbl/curve/ThreadingParams.h>
#include <cstdint>
#include <memory>

namespace TslBL {

// The arena of the process, with the number of threads that the process-wide parameters
// ask for. Remade by SetMultiThreadingParams.
TSLBL_API tbb::task_arena& SchedulerArena();

// How many schedulers the process has made so far, and the threads of the present one.
TSLBL_API std::uint64_t SchedulerGeneration();
TSLBL_API int SchedulerThreads();

// A parallel reduce of `body` over `range` on the process's threads, cut up as the
// parameters say. `Stage` tells the stages apart: each remembers on its own which thread
// did what, so that a stage can return to the same threads from call to call.
template <class Stage, class Range, class Body>
void ParallelReduce(const Range& range, Body& body, const EvalThreadingParams& params) {
  SchedulerArena().execute([&] {
    switch (params.Partitioner) {
      case EvalThreadingParams::Simple:
        tbb::parallel_reduce(range, body, tbb::simple_partitioner());
        return;
      case EvalThreadingParams::AutoAffinity: {
        // The object may be used by one thread, and in arenas of one size only.
        thread_local std::uint64_t generation = 0;
        thread_local std::unique_ptr<tbb::affinity_partitioner> affinity;
        if (!affinity || generation != SchedulerGeneration())
          affinity = std::make_unique<tbb::affinity_partitioner>();
        generation = SchedulerGeneration();
        tbb::parallel_reduce(range, body, *affinity);
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
