// Peak detection on several threads: the table is the same, to the bit, for any number of
// threads and any way to cut up the work.
//
// Tests: CmdPeakDetect.cpp.

#include <tbb/task_scheduler_observer.h>

#include <detect/PeakCurves.h>
#include <detect/RandomCurves.h>
#include <tslbl/detect/Scheduler.h>
#include <atomic>
#include <cmath>
#include <thread>

using namespace TslBL;
using namespace tests;

namespace {

// Puts the process-wide parameters back at the end of a scope.
class KeepThreading {
 public:
  KeepThreading() = default;
  KeepThreading(const KeepThreading&) = delete;
  KeepThreading& operator=(const KeepThreading&) = delete;
  ~KeepThreading() { SetMultiThreadingParams(before_); }

 private:
  AppThreadingParams before_ = GetMultiThreadingParams();
};

using Partitioners = EvalThreadingParams::Partitioners;

AppThreadingParams Threading(std::uint32_t threads, Partitioners partitioner, std::uint32_t grain) {
  AppThreadingParams p;
  p.Auto = false;
  p.ThreadPoolSize = threads;
  for (EvalThreadingParams* stage :
       std::initializer_list<EvalThreadingParams*>{&p.FindFeature, &p.DescribePeaks, &p.SelectPeaks}) {
    stage->MinParallelDataSize = 0;
    stage->Partitioner = partitioner;
    stage->GrainSize = grain;
  }
  return p;
}

AppThreadingParams OneThread() {
  AppThreadingParams p = GetMultiThreadingParams();
  p.FindFeature.EnableMultiThreading = false;
  p.DescribePeaks.EnableMultiThreading = false;
  p.SelectPeaks.EnableMultiThreading = false;
  return p;
}

// 1, 2 and 8 threads with all partitioners and grains.
std::vector<AppThreadingParams> Schedules() {
  std::vector<AppThreadingParams> all;
  for (const std::uint32_t threads : {1u, 2u, 8u}) {
    for (const std::uint32_t grain : {1u, 2u, 3u, 7u, 100u})
      all.push_back(Threading(threads, EvalThreadingParams::Simple, grain));
    all.push_back(Threading(threads, EvalThreadingParams::Auto, 1));
    all.push_back(Threading(threads, EvalThreadingParams::AutoAffinity, 1));
  }
  return all;
}

std::string Name(const AppThreadingParams& p) {
  return std::to_string(p.ThreadPoolSize) + " threads, partitioner " +
         std::to_string(p.FindFeature.Partitioner) + ", grain " + std::to_string(p.FindFeature.GrainSize);
}

std::vector<std::uint64_t> Detected(TestCurve curve) {
  EXPECT_TRUE(Detect(curve).ok);
  return Bits(curve);
}

// All curves with all schedules against one thread.
void ExpectSameTables(const std::vector<TestCurve>& curves,
                      const std::vector<AppThreadingParams>& schedules) {
  const KeepThreading keep;
  SetMultiThreadingParams(OneThread());
  std::vector<std::vector<std::uint64_t>> expected;
  for (const TestCurve& curve : curves) expected.push_back(Detected(curve));
  for (const AppThreadingParams& schedule : schedules) {
    SetMultiThreadingParams(schedule);
    for (std::size_t i = 0; i < curves.size(); ++i)
      ASSERT_EQ(Detected(curves[i]), expected[i]) << "curve " << i << " with " << Name(schedule);
  }
}

TestCurve Prepared(const RandomCurve& c, RandomCurves& random) {
  TestCurve curve = PeakCurve(c.y, c.baseline);
  PeakDetectParams& p = curve.peakDetectParams;
  p.MaxValley = c.maxValley;
  if (random.Below(4) == 0) p.FindFeatureAlgorithm = PeakDetectParams::Sorted;
  if (random.Below(4) == 0) p.RetentionType = PeakDetectParams::PeakTop;
  p.SNInUse = random.Below(3) == 0;
  p.RelAmplInUse = random.Below(3) == 0;
  p.RelAmpl = 30.0;
  p.RelAreaInUse = random.Below(4) == 0;
  p.RelArea = 20.0;
  p.PeakCntInUse = random.Below(5) == 0;
  p.PeakCnt = static_cast<std::uint32_t>(random.Below(6));
  return curve;
}

// Peaks of many heights over noise, as a long spectrum has them.
TestCurve NoisySpectrum(std::size_t n, std::uint32_t seed) {
  std::mt19937 random(seed);
  std::vector<double> y(n);
  for (double& value : y) value = 20.0 + static_cast<double>(random() % 1000) / 100.0;
  for (std::size_t centre = 50; centre + 50 < n; centre += 40 + random() % 160) {
    const double height = std::exp(static_cast<double>(random() % 1000) / 100.0);
    const double offset = static_cast<double>(random() % 100) / 100.0;
    for (int i = -20; i <= 20; ++i)
      y[centre + static_cast<std::size_t>(i + 20)] +=
          height * std::exp(-0.5 * std::pow((i - offset) / 4.0, 2));
  }
  TestCurve curve = CurveOf(y);
  EXPECT_TRUE(RunOn(ExecuteBaseline, curve).ok);
  EXPECT_TRUE(RunOn(ExecuteNoise, curve).ok);
  curve.peakDetectParams.SN = 1;
  return curve;
}

// Counts how often a thread enters the arena of the process.
class Entries final : public tbb::task_scheduler_observer {
 public:
  Entries() : tbb::task_scheduler_observer(*SchedulerArena()) { observe(true); }
  Entries(const Entries&) = delete;
  Entries& operator=(const Entries&) = delete;
  ~Entries() override { observe(false); }
  void on_scheduler_entry(bool) override { ++count_; }
  int Count() const { return count_; }

 private:
  std::atomic<int> count_ = 0;
};

int EntriesFor(TestCurve curve) {
  const Entries entries;
  EXPECT_TRUE(Detect(curve).ok);
  return entries.Count();
}

TestCurve Hills(int count) {
  std::vector<double> y = {0.0};
  for (int i = 0; i < count; ++i) y.insert(y.end(), {3.0, 5.0 + i % 7, 3.0, 0.0});
  return PeakCurve(y);
}

}  // namespace

TEST(PeakDetectThreads, GiveTheSameTableOnRandomCurves) {
  RandomCurves random(91);
  std::vector<TestCurve> curves;
  for (int i = 0; i < 250; ++i) curves.push_back(Prepared(random.Next(150), random));
  ExpectSameTables(curves, Schedules());
}

TEST(PeakDetectThreads, GiveTheSameTableWhereNumbersAreMissing) {
  RandomCurves random(92);
  std::vector<TestCurve> curves;
  for (int i = 0; i < 120; ++i) curves.push_back(Prepared(random.NextBroken(150), random));
  ExpectSameTables(curves, Schedules());
}

TEST(PeakDetectThreads, GiveTheSameTableOnLongNoisySpectra) {
  const std::vector<TestCurve> curves = {NoisySpectrum(30000, 1), NoisySpectrum(30011, 2)};
  TestCurve count = curves[0];
  ASSERT_TRUE(Detect(count).ok);
  EXPECT_GT(count.peaks.size(), 300u);
  ExpectSameTables(curves, Schedules());
}

TEST(PeakDetectThreads, GiveTheSameTableOnSeparatePeaks) { ExpectSameTables({Hills(500)}, Schedules()); }

TEST(PeakDetectThreads, GiveTheSameTableOnACurveWhollyAboveTheBaseline) {
  TestCurve curve = NoisySpectrum(5000, 3);
  curve.baseline.assign(curve.baseline.size(), -1.0);
  curve.peakDetectParams.MaxValley = 90.0;
  ExpectSameTables({curve}, Schedules());
}

TEST(PeakDetectThreads, OfEqualPeaksTheFirstIsTheLargest) {
  const KeepThreading keep;
  std::vector<double> y = {0.0};
  for (int i = 0; i < 300; ++i) y.insert(y.end(), {3.0, 5.0, 3.0, 0.0});
  for (const AppThreadingParams& schedule : Schedules()) {
    SetMultiThreadingParams(schedule);
    TestCurve curve = PeakCurve(y);
    ASSERT_TRUE(Detect(curve).ok);
    ASSERT_EQ(curve.peaks.size(), 300u);
    EXPECT_EQ(curve.largestAreaIdx, 0) << Name(schedule);
    EXPECT_EQ(curve.largestMaxIdx, 0) << Name(schedule);
    EXPECT_EQ(curve.largestCentroidIdx, 0) << Name(schedule);
  }
}

TEST(PeakDetectThreads, MayDetectOnSeveralCurvesAtOnce) {
  const KeepThreading keep;
  const TestCurve curve = NoisySpectrum(8000, 4);
  SetMultiThreadingParams(OneThread());
  const auto expected = Detected(curve);
  for (const auto partitioner :
       {EvalThreadingParams::Simple, EvalThreadingParams::Auto, EvalThreadingParams::AutoAffinity}) {
    SetMultiThreadingParams(Threading(3, partitioner, 2));
    std::atomic<int> same = 0;
    std::vector<std::thread> callers;
    for (int caller = 0; caller < 6; ++caller)
      callers.emplace_back([&] {
        for (int run = 0; run < 10; ++run) same += Detected(curve) == expected;
      });
    for (std::thread& caller : callers) caller.join();
    EXPECT_EQ(same, 60) << partitioner;
  }
}

TEST(PeakDetectThreads, AnAffinityOutlivesItsArena) {
  const KeepThreading keep;
  const TestCurve curve = Hills(200);
  SetMultiThreadingParams(OneThread());
  const auto expected = Detected(curve);
  for (const std::uint32_t threads : {8u, 1u, 4u, 2u, 8u, 3u}) {
    SetMultiThreadingParams(Threading(threads, EvalThreadingParams::AutoAffinity, 1));
    for (int run = 0; run < 5; ++run) ASSERT_EQ(Detected(curve), expected) << threads;
  }
}

TEST(PeakDetectThreads, AStageThatIsSwitchedOffStaysOnTheCallingThread) {
  const KeepThreading keep;
  AppThreadingParams p = Threading(4, EvalThreadingParams::Simple, 1);
  SetMultiThreadingParams(p);
  EXPECT_GT(EntriesFor(Hills(300)), 0);
  p.FindFeature.EnableMultiThreading = p.DescribePeaks.EnableMultiThreading =
      p.SelectPeaks.EnableMultiThreading = false;
  // Another number of threads makes a new arena, which no worker of the first run enters late.
  p.ThreadPoolSize = 3;
  SetMultiThreadingParams(p);
  EXPECT_EQ(EntriesFor(Hills(300)), 0);
}

TEST(PeakDetectThreads, DescriptionGoesParallelFromTenFeaturesOn) {
  const KeepThreading keep;
  AppThreadingParams p = OneThread();
  p.DescribePeaks = DescribePeaksThreadingParams();
  SetMultiThreadingParams(p);
  EXPECT_EQ(EntriesFor(Hills(9)), 0);
  EXPECT_GT(EntriesFor(Hills(10)), 0);
}

TEST(PeakDetectThreads, SelectionGoesParallelFromAThousandFeaturesOn) {
  const KeepThreading keep;
  AppThreadingParams p = OneThread();
  p.SelectPeaks = SelectPeaksThreadingParams();
  SetMultiThreadingParams(p);
  EXPECT_EQ(EntriesFor(Hills(999)), 0);
  EXPECT_GT(EntriesFor(Hills(1000)), 0);
}

TEST(PeakDetectThreads, FindingGoesParallelFromThirtyThousandPointsOfTheSearchRangeOn) {
  const KeepThreading keep;
  AppThreadingParams p = OneThread();
  p.FindFeature = FindFeatureThreadingParams();
  SetMultiThreadingParams(p);
  TestCurve curve = Hills(10000);
  curve.peakDetectParams.FullSearch = false;
  curve.peakDetectParams.SearchStart = 100.0;
  curve.peakDetectParams.SearchEnd = 100.0 + 29998.0;
  EXPECT_EQ(EntriesFor(curve), 0);
  curve.peakDetectParams.SearchEnd += 1.0;
  EXPECT_GT(EntriesFor(curve), 0);
}
