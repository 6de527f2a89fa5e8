#include <gtest/gtest.h>

#include <log4cxx/appenderskeleton.h>
#include <log4cxx/logger.h>
#include <tbb/task_arena.h>

#include <curve/TestCurve.h>
#include <tslbl/closed/common/XMLBuilder.h>
#include <tslbl/detect/RunStage.h>
#include <tslbl/detect/Scheduler.h>
#include <algorithm>
#include <memory>
#include <thread>

using namespace TslBL;

namespace {

// Puts the parameters of the process back after each test.
class SchedulerThreads : public testing::Test {
 protected:
  ~SchedulerThreads() override { SetMultiThreadingParams(before_); }

  // Applies a change and tells whether the scheduler was remade for it.
  template <class Change>
  static bool Remakes(Change change) {
    AppThreadingParams params = GetMultiThreadingParams();
    change(params);
    const std::uint64_t generation = SchedulerGeneration();
    SetMultiThreadingParams(params);
    EXPECT_EQ(GetMultiThreadingParams(), params);
    return SchedulerGeneration() != generation;
  }
  static void UseThreads(std::uint32_t count) {
    Remakes([count](AppThreadingParams& p) { p.Auto = false, p.ThreadPoolSize = count; });
  }

 private:
  const AppThreadingParams before_ = GetMultiThreadingParams();
};

// Notes in each row how many threads the arena has in which it was described.
struct ArenaProbe {
  bool Keep(PeakInfo& row) const {
    row.endIdx = static_cast<std::uint32_t>(tbb::this_task_arena::max_concurrency());
    row.useMax = std::this_thread::get_id() == caller;
    return row.apexIdx % 3 != 0;
  }
  std::thread::id caller = std::this_thread::get_id();
};

std::vector<PeakInfo> RunProbe(std::size_t rows, const EvalThreadingParams& threading) {
  std::vector<PeakInfo> table(rows);
  std::vector<PeakInfo*> list;
  for (PeakInfo& row : table) list.push_back(&row);
  RunStage(ArenaProbe(), list, threading);
  return table;
}

bool RanOnTheCaller(const std::vector<PeakInfo>& table, std::uint32_t arenaThreads) {
  return std::ranges::all_of(table,
                             [=](const PeakInfo& row) { return row.useMax && row.endIdx != arenaThreads; });
}
bool RanInTheArena(const std::vector<PeakInfo>& table, std::uint32_t arenaThreads) {
  return std::ranges::all_of(table, [=](const PeakInfo& row) { return row.endIdx == arenaThreads; });
}

// Sums the numbers of a range.
struct Sum {
  Sum() = default;
  Sum(Sum&, tbb::split) {}
  void operator()(const tbb::blocked_range<std::uint64_t>& range) {
    for (std::uint64_t i = range.begin(); i != range.end(); ++i) total += i;
  }
  void join(const Sum& other) { total += other.total; }
  std::uint64_t total = 0;
};

std::uint64_t SumUpTo(std::uint64_t n, const EvalThreadingParams& threading) {
  Sum sum;
  ParallelReduce<Sum>(tbb::blocked_range<std::uint64_t>(0, n + 1, Grain(threading)), sum, threading);
  return sum.total;
}

EvalThreadingParams With(EvalThreadingParams::Partitioners partitioner, std::uint32_t grainSize) {
  EvalThreadingParams params;
  params.Partitioner = partitioner;
  params.GrainSize = grainSize;
  return params;
}

// Keeps the messages of the logger "tbb".
class Messages : public log4cxx::AppenderSkeleton {
 public:
  void close() override {}
  bool requiresLayout() const override { return false; }
  void append(const log4cxx::spi::LoggingEventPtr& event, log4cxx::helpers::Pool&) override {
    LOG4CXX_ENCODE_CHAR(message, event->getMessage());
    texts.push_back(message);
  }
  std::vector<std::string> texts;
};

// What setting the parameters logs at a level.
std::vector<std::string> Logged(const log4cxx::LevelPtr& level, const AppThreadingParams& params) {
  const auto logger = log4cxx::Logger::getLogger("tbb");
  const auto before = logger->getLevel();
  const auto messages = std::make_shared<Messages>();
  logger->addAppender(messages);
  logger->setLevel(level);
  SetMultiThreadingParams(params);
  logger->setLevel(before);
  logger->removeAppender(messages);
  return messages->texts;
}

}  // namespace

TEST_F(SchedulerThreads, GivesBackWhatWasSet) {
  AppThreadingParams params;
  params.Auto = false;
  params.ThreadPoolSize = 3;
  params.FindFeature.GrainSize = 17;
  params.SelectPeaks.EnableMultiThreading = false;
  SetMultiThreadingParams(params);
  EXPECT_EQ(GetMultiThreadingParams(), params);
}

TEST_F(SchedulerThreads, AreAsManyAsThePoolHas) {
  for (const std::uint32_t threads : {1u, 2u, 8u}) {
    UseThreads(threads);
    EXPECT_EQ(TslBL::SchedulerThreads(), static_cast<int>(threads));
  }
}

TEST_F(SchedulerThreads, AreAtLeastOneAndNotEndless) {
  UseThreads(0);
  EXPECT_EQ(TslBL::SchedulerThreads(), 1);
  UseThreads(0xFFFFFFFF);
  EXPECT_EQ(TslBL::SchedulerThreads(), 256);
}

TEST_F(SchedulerThreads, AreTheMachinesInAutomaticMode) {
  UseThreads(5);
  EXPECT_TRUE(Remakes([](auto& p) { p.Auto = true; }));
  EXPECT_EQ(TslBL::SchedulerThreads(), tbb::task_arena(tbb::task_arena::automatic).max_concurrency());
}

TEST_F(SchedulerThreads, SurviveAChangeOfAStage) {
  for (const bool automatic : {true, false}) {
    Remakes([=](auto& p) { p.Auto = automatic; });
    EXPECT_FALSE(Remakes([](auto&) {}));
    EXPECT_FALSE(Remakes([](auto& p) { p.FindFeature.MinParallelDataSize = 1; }));
    EXPECT_FALSE(Remakes([](auto& p) { p.DescribePeaks.EnableMultiThreading = false; }));
    EXPECT_FALSE(Remakes([](auto& p) { p.SelectPeaks.Partitioner = EvalThreadingParams::AutoAffinity; }));
  }
}

TEST_F(SchedulerThreads, SurviveAChangeOfThePoolSizeInAutomaticMode) {
  Remakes([](auto& p) { p.Auto = true; });
  EXPECT_FALSE(Remakes([](auto& p) { p.ThreadPoolSize += 3; }));
}

TEST_F(SchedulerThreads, AreRemadeForAnotherPoolSizeOrMode) {
  Remakes([](auto& p) { p.Auto = true; });
  EXPECT_TRUE(Remakes([](auto& p) { p.Auto = false; }));
  EXPECT_TRUE(Remakes([](auto& p) { p.ThreadPoolSize += 1; }));
  EXPECT_TRUE(Remakes([](auto& p) { p.Auto = true; }));
}

TEST_F(SchedulerThreads, StayIdleForAStageBelowItsSize) {
  UseThreads(7);
  const DescribePeaksThreadingParams describe;
  EXPECT_TRUE(RanOnTheCaller(RunProbe(9, describe), 7));
  EXPECT_TRUE(RanInTheArena(RunProbe(10, describe), 7));
}

TEST_F(SchedulerThreads, StayIdleForAStageThatIsSwitchedOff) {
  UseThreads(7);
  EvalThreadingParams off;
  off.EnableMultiThreading = false;
  off.MinParallelDataSize = 0;
  for (const std::size_t rows : {1u, 10u, 100000u}) EXPECT_TRUE(RanOnTheCaller(RunProbe(rows, off), 7));
}

TEST_F(SchedulerThreads, ReduceToTheSameWithEveryPartitioner) {
  for (const std::uint32_t threads : {1u, 2u, 8u}) {
    UseThreads(threads);
    for (const auto partitioner :
         {EvalThreadingParams::Simple, EvalThreadingParams::Auto, EvalThreadingParams::AutoAffinity})
      for (const std::uint32_t grainSize : {0u, 1u, 1000u, 0xFFFFFFFFu})
        EXPECT_EQ(SumUpTo(20000, With(partitioner, grainSize)), 200010000u) << threads << ' ' << partitioner;
  }
}

TEST_F(SchedulerThreads, ReduceOnSeveralCallersAtOnce) {
  UseThreads(4);
  std::vector<std::uint64_t> sums(4);
  std::vector<std::thread> callers;
  for (std::uint64_t& sum : sums)
    callers.emplace_back([&sum] { sum = SumUpTo(20000, With(EvalThreadingParams::AutoAffinity, 1)); });
  for (std::thread& caller : callers) caller.join();
  EXPECT_EQ(sums, std::vector<std::uint64_t>(4, 200010000u));
}

// A caller that waits for its own reduction may be given that of a caller without a thread.
TEST_F(SchedulerThreads, ReduceForMoreCallersThanThereAreThreads) {
  UseThreads(2);
  std::vector<std::uint64_t> sums(16);
  std::vector<std::thread> callers;
  for (std::uint64_t& sum : sums)
    callers.emplace_back([&sum] { sum = SumUpTo(20000, With(EvalThreadingParams::AutoAffinity, 1)); });
  for (std::thread& caller : callers) caller.join();
  EXPECT_EQ(sums, std::vector<std::uint64_t>(16, 200010000u));
}

TEST_F(SchedulerThreads, OfAStageOutliveARemake) {
  UseThreads(3);
  const std::shared_ptr<tbb::task_arena> inUse = SchedulerArena();
  UseThreads(5);
  EXPECT_EQ(inUse->max_concurrency(), 3);
  EXPECT_EQ(SchedulerArena()->max_concurrency(), 5);
}

TEST_F(SchedulerThreads, TakeTheGrainSizeForSimpleAlone) {
  EXPECT_EQ(Grain(With(EvalThreadingParams::Simple, 40)), 40u);
  EXPECT_EQ(Grain(With(EvalThreadingParams::Simple, 0)), 1u);
  EXPECT_EQ(Grain(With(EvalThreadingParams::Auto, 40)), 1u);
  EXPECT_EQ(Grain(With(EvalThreadingParams::AutoAffinity, 40)), 1u);
}

TEST_F(SchedulerThreads, LogTheirParametersAtInfoLevel) {
  AppThreadingParams params;
  params.DescribePeaks.GrainSize = 4711;
  XMLBuilder builder;
  params.Serialize(builder);
  EXPECT_EQ(Logged(log4cxx::Level::getInfo(), params),
            std::vector<std::string>{"SetThreadingParams " + TslCommon::ToUtf8(builder.QXML())});
}

TEST_F(SchedulerThreads, LogNothingAboveInfoLevel) {
  EXPECT_EQ(Logged(log4cxx::Level::getWarn(), AppThreadingParams()), std::vector<std::string>());
}
