#include <tslbl/curve/Scheduler.h>

#include <log4cxx/logger.h>
#include <tbb/global_control.h>

#include <tslbl/closed/common/XMLBuilder.h>
#include <algorithm>
#include <memory>
#include <utility>

namespace TslBL {
namespace {

const log4cxx::LoggerPtr logger = log4cxx::Logger::getLogger("tbb");

// More threads than any machine of ours has; asks beyond it are wishes, not plans.
constexpr std::uint32_t kMostThreads = 256;

int ThreadCount(const AppThreadingParams& params) {
  if (params.Auto) return tbb::task_arena::automatic;
  return static_cast<int>(std::clamp(params.ThreadPoolSize, std::uint32_t{1}, kMostThreads));
}

std::size_t Parallelism(const AppThreadingParams& params) {
  const int threads = params.Auto ? tbb::this_task_arena::max_concurrency() : ThreadCount(params);
  return static_cast<std::size_t>(std::max(threads, 1));
}

struct Scheduler {
  explicit Scheduler(const AppThreadingParams& params)
      : limit(tbb::global_control::max_allowed_parallelism, Parallelism(params)),
        arena(ThreadCount(params)) {}

  tbb::global_control limit;
  tbb::task_arena arena;
};

struct Process {
  AppThreadingParams params;
  std::unique_ptr<Scheduler> scheduler = std::make_unique<Scheduler>(params);
  std::uint64_t generation = 1;
};

Process& TheProcess() {
  static Process process;
  return process;
}

bool NeedsNewScheduler(const AppThreadingParams& now, const AppThreadingParams& wanted) {
  return now.Auto != wanted.Auto || (!wanted.Auto && now.ThreadPoolSize != wanted.ThreadPoolSize);
}

// The parameters and their scheduler stand before the first caller comes.
[[maybe_unused]] const Process& atModuleStart = TheProcess();

}  // namespace

tbb::task_arena& SchedulerArena() { return TheProcess().scheduler->arena; }
std::uint64_t SchedulerGeneration() { return TheProcess().generation; }
int SchedulerThreads() { return SchedulerArena().max_concurrency(); }

AppThreadingParams GetMultiThreadingParams() { return TheProcess().params; }

void SetMultiThreadingParams(const AppThreadingParams& params) {
  Process& process = TheProcess();
  const bool remake = NeedsNewScheduler(process.params, params);
  process.params = params;
  if (logger->isInfoEnabled()) {
    XMLBuilder builder;
    params.Serialize(builder);
    LOG4CXX_INFO(logger, L"SetThreadingParams " << builder.QXML());
  }
  if (!remake) return;
  process.scheduler = std::make_unique<Scheduler>(params);
  ++process.generation;
}

}  // namespace TslBL
