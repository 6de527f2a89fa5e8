// The number of threads that oneTBB may use is the host's to set.
//
// Tests: Scheduler.cpp.
#include <gtest/gtest.h>

#include <tbb/global_control.h>
#include <tbb/info.h>
#include <tbb/task_arena.h>

#include <tslbl/detect/Scheduler.h>

using namespace TslBL;

namespace {

// Puts the parameters of the process back after each test.
class SchedulerLimit : public testing::Test {
 public:
  ~SchedulerLimit() override { SetMultiThreadingParams(before_); }

  static void Use(bool automatic, std::uint32_t threads) {
    AppThreadingParams params = GetMultiThreadingParams();
    params.Auto = automatic;
    params.ThreadPoolSize = threads;
    SetMultiThreadingParams(params);
  }
  static std::size_t Limit() {
    return tbb::global_control::active_value(tbb::global_control::max_allowed_parallelism);
  }

 private:
  const AppThreadingParams before_ = GetMultiThreadingParams();
};

}  // namespace

TEST_F(SchedulerLimit, IsNotLoweredForASmallPool) {
  Use(true, 1);
  const std::size_t before = Limit();
  Use(false, 1);
  EXPECT_EQ(Limit(), before);
}

TEST_F(SchedulerLimit, IsRaisedForAPoolBeyondTheProcessors) {
  Use(false, 100);
  EXPECT_EQ(Limit(), 100u);
  Use(true, 1);
  EXPECT_LT(Limit(), 100u);
}

TEST_F(SchedulerLimit, OfTheCallersArenaIsNotTheLibrarys) {
  Use(false, 1);
  tbb::task_arena(1).execute([] { Use(true, 1); });
  EXPECT_EQ(SchedulerThreads(), tbb::info::default_concurrency());
}
