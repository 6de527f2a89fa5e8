#include <tool/chain/Threads.h>

#include <fmt/format.h>
#include <tbb/task_arena.h>

#include <tool/frame/UsageError.h>
#include <tslbl/detect/ThreadingParams.h>

namespace TslTool {
namespace {

// More than any computer has, and few enough to be made.
constexpr std::uint32_t kMost = 1024;

}  // namespace

void UseThreads(std::uint32_t threads) {
  if (threads == 0) throw UsageError("--threads: there must be at least one");
  if (threads > kMost) throw UsageError(fmt::format("--threads: {} at most", kMost));
  TslBL::AppThreadingParams params = TslBL::GetMultiThreadingParams();
  params.Auto = false;
  params.ThreadPoolSize = threads;
  TslBL::SetMultiThreadingParams(params);
}

int ThreadsAllowed() {
  const TslBL::AppThreadingParams params = TslBL::GetMultiThreadingParams();
  return tbb::task_arena(params.Auto ? tbb::task_arena::automatic : static_cast<int>(params.ThreadPoolSize))
      .max_concurrency();
}

}  // namespace TslTool
