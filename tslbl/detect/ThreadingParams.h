#pragma once
// How peak detection, the one part of the library that runs on several threads, spreads
// over them: whether each of its three stages goes parallel, from which size on, and how
// the work is cut up.

#include <tslbl/records/Record.h>
#include <cstdint>

namespace TslBL {

struct TSLBL_API EvalThreadingParams : Record<EvalThreadingParams> {
  enum Partitioners : std::uint32_t { Simple = 0, Auto = 1, AutoAffinity = 2 };

  bool EnableMultiThreading = true;
  std::uint32_t MinParallelDataSize = 10000;  // with fewer items the caller's thread does it
  Partitioners Partitioner = Auto;
  std::uint32_t GrainSize = 5000;  // items a task, for Simple

  // Whether a stage with this many items goes parallel.
  bool GoesParallel(std::size_t items) const { return EnableMultiThreading && items >= MinParallelDataSize; }
};
TSLBL_API void Describe(Archive& ar, EvalThreadingParams& p);

// Finding features; an item is a point of the search range.
struct TSLBL_API FindFeatureThreadingParams : EvalThreadingParams {
  FindFeatureThreadingParams();
};

// Describing peaks; an item is a feature.
struct TSLBL_API DescribePeaksThreadingParams : EvalThreadingParams {
  DescribePeaksThreadingParams();
};

// Selecting peaks; an item is a feature.
struct TSLBL_API SelectPeaksThreadingParams : EvalThreadingParams {
  SelectPeaksThreadingParams();
};

struct TSLBL_API AppThreadingParams : Record<AppThreadingParams> {
  bool Auto = true;                  // the scheduler chooses the number of threads
  std::uint32_t ThreadPoolSize = 1;  // threads when Auto is off; 0 counts as 1, beyond 256 as 256
  FindFeatureThreadingParams FindFeature;
  DescribePeaksThreadingParams DescribePeaks;
  SelectPeaksThreadingParams SelectPeaks;
};
TSLBL_API void Describe(Archive& ar, AppThreadingParams& p);

// A copy of the process-wide record.
TSLBL_API AppThreadingParams GetMultiThreadingParams();

// Replaces it, and remakes the scheduler if the number of threads changes with it. A stage
// of detection that runs keeps what it began with. Neither function locks: while one
// of them runs, neither may be called again, and no detection may begin. The limit that the host set for
// oneTBB is raised for a pool of more threads than processors, and never lowered.
TSLBL_API void SetMultiThreadingParams(const AppThreadingParams& params);

}  // namespace TslBL
