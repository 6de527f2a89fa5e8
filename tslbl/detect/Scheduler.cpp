#include <tslbl/detect/Scheduler.h>

#include <log4cxx/logger.h>
#include <tbb/global_control.h>
#include <tbb/info.h>

#include <tslbl/closed/common/Log.h>
#include <tslbl/closed/common/XMLBuilder.h>
#include <algorithm>
#include <memory>
#include <optional>
#include <utility>

namespace TslBL {
namespace {

const log4cxx::LoggerPtr logger = log4cxx::Logger::getLogger("tbb");

// More threads than any machine has that runs this; a larger number asked for is a mistake.
constexpr std::uint32_t kMostThreads = 256;

int ThreadCount(const AppThreadingParams& params) {
  if (params.Auto) return tbb::task_arena::automatic;
  return static_cast<int>(std::clamp(params.ThreadPoolSize, std::uint32_t{1}, kMostThreads));
}

struct Scheduler {
  explicit Scheduler(const AppThreadingParams& params) : arena(ThreadCount(params)) {
    // The limit is the host's as well: it is only ever raised, for more threads than processors.
    if (const int threads = ThreadCount(params); threads > tbb::info::default_concurrency())
      limit.emplace(tbb::global_control::max_allowed_parallelism, static_cast<std::size_t>(threads));
  }

  std::optional<tbb::global_control> limit;
  tbb::task_arena arena;
};

struct Process {
  AppThreadingParams params;
  std::shared_ptr<Scheduler> scheduler = std::make_shared<Scheduler>(params);
  std::uint64_t generation = 1;
};

Process& TheProcess() {
  static Process process;
  return process;
}

bool NeedsNewScheduler(const AppThreadingParams& now, const AppThreadingParams& wanted) {
  return now.Auto != wanted.Auto || (!wanted.Auto && now.ThreadPoolSize != wanted.ThreadPoolSize);
}

// Made when the module is loaded, before the first call.
[[maybe_unused]] const Process& atModuleStart = TheProcess();

}  // namespace

std::shared_ptr<tbb::task_arena> SchedulerArena() {
  const std::shared_ptr<Scheduler>& scheduler = TheProcess().scheduler;
  return {scheduler, &scheduler->arena};
}
std::uint64_t SchedulerGeneration() { return TheProcess().generation; }
int SchedulerThreads() { return SchedulerArena()->max_concurrency(); }

AppThreadingParams GetMultiThreadingParams() { return TheProcess().params; }

void SetMultiThreadingParams(const AppThreadingParams& params) {
  Process& process = TheProcess();
  const bool remake = NeedsNewScheduler(process.params, params);
  process.params = params;
  if (TslCommon::IsHeard(logger, log4cxx::Level::getInfo())) {
    XMLBuilder builder;
    params.Serialize(builder);
    LOG4CXX_INFO(logger, L"SetThreadingParams " << builder.QXML());
  }
  if (!remake) return;
  process.scheduler = std::make_shared<Scheduler>(params);
  ++process.generation;
}

}  // namespace TslBL
