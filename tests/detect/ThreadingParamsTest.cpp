#include <RecordCheck.h>

#include <tslbl/detect/ThreadingParams.h>

using namespace TslBL;
using namespace tests;

namespace {

EvalThreadingParams SampleEvalThreadingParams() {
  EvalThreadingParams p;
  p.EnableMultiThreading = false;
  p.MinParallelDataSize = 12345;
  p.Partitioner = EvalThreadingParams::AutoAffinity;
  p.GrainSize = 678;
  return p;
}

AppThreadingParams SampleAppThreadingParams() {
  AppThreadingParams p;
  p.Auto = false;
  p.ThreadPoolSize = 6;
  p.FindFeature.EnableMultiThreading = false;
  p.FindFeature.GrainSize = 21;
  p.DescribePeaks.MinParallelDataSize = 22;
  p.DescribePeaks.Partitioner = EvalThreadingParams::Auto;
  p.SelectPeaks.Partitioner = EvalThreadingParams::AutoAffinity;
  p.SelectPeaks.GrainSize = 23;
  return p;
}

std::uint32_t WithPartitioner(const std::wstring& text) {
  return FromXml<EvalThreadingParams>(L"<PeakDetect><Partitioner>" + text + L"</Partitioner></PeakDetect>",
                                      SampleEvalThreadingParams())
      .Partitioner;
}

void ExpectParams(const EvalThreadingParams& p, std::uint32_t minParallelDataSize, std::uint32_t partitioner,
                  std::uint32_t grainSize) {
  EXPECT_TRUE(p.EnableMultiThreading);
  EXPECT_EQ(p.MinParallelDataSize, minParallelDataSize);
  EXPECT_EQ(p.Partitioner, partitioner);
  EXPECT_EQ(p.GrainSize, grainSize);
}

}  // namespace

TEST(AllRecords, EvalThreadingParams) {
  CheckRecord<EvalThreadingParams>({
      {"EnableMultiThreading", [](auto& p) { p.EnableMultiThreading = false; }},
      {"MinParallelDataSize", [](auto& p) { p.MinParallelDataSize = 1; }},
      {"Partitioner", [](auto& p) { p.Partitioner = EvalThreadingParams::Simple; }},
      {"GrainSize", [](auto& p) { p.GrainSize = 1; }},
  });
}
TEST(Golden, EvalThreadingParams) { CheckGolden(SampleEvalThreadingParams(), "EvalThreadingParams.v1"); }
TEST(CutShort, EvalThreadingParams) { CheckCutShort(SampleEvalThreadingParams()); }

TEST(AllRecords, AppThreadingParams) {
  CheckRecord<AppThreadingParams>({
      {"Auto", [](auto& p) { p.Auto = false; }},
      {"ThreadPoolSize", [](auto& p) { p.ThreadPoolSize = 2; }},
      {"FindFeature", [](auto& p) { p.FindFeature.GrainSize = 1; }},
      {"DescribePeaks", [](auto& p) { p.DescribePeaks.GrainSize = 1; }},
      {"SelectPeaks", [](auto& p) { p.SelectPeaks.GrainSize = 1; }},
  });
}
TEST(Golden, AppThreadingParams) { CheckGolden(SampleAppThreadingParams(), "AppThreadingParams.v1"); }
TEST(CutShort, AppThreadingParams) { CheckCutShort(SampleAppThreadingParams()); }

TEST(ThreadingParams, HaveTheirDefaults) {
  ExpectParams(EvalThreadingParams(), 10000, EvalThreadingParams::Auto, 5000);
  ExpectParams(FindFeatureThreadingParams(), 30000, EvalThreadingParams::Simple, 40000);
  ExpectParams(DescribePeaksThreadingParams(), 10, EvalThreadingParams::Simple, 100);
  ExpectParams(SelectPeaksThreadingParams(), 1000, EvalThreadingParams::Simple, 5000);
}

TEST(ThreadingParams, OfTheProcessAreAutomaticByDefault) {
  const AppThreadingParams p;
  EXPECT_TRUE(p.Auto);
  EXPECT_EQ(p.ThreadPoolSize, 1u);
  EXPECT_EQ(p.FindFeature, FindFeatureThreadingParams());
  EXPECT_EQ(p.DescribePeaks, DescribePeaksThreadingParams());
  EXPECT_EQ(p.SelectPeaks, SelectPeaksThreadingParams());
}

TEST(ThreadingParams, HaveTheirNumbers) {
  EXPECT_EQ(EvalThreadingParams::Simple, 0u);
  EXPECT_EQ(EvalThreadingParams::Auto, 1u);
  EXPECT_EQ(EvalThreadingParams::AutoAffinity, 2u);
}

TEST(ThreadingParams, AStageGoesParallelFromItsSizeOn) {
  const DescribePeaksThreadingParams p;
  EXPECT_FALSE(p.GoesParallel(0));
  EXPECT_FALSE(p.GoesParallel(9));
  EXPECT_TRUE(p.GoesParallel(10));
}

TEST(ThreadingParams, AStageThatIsSwitchedOffNeverGoesParallel) {
  EvalThreadingParams p;
  p.EnableMultiThreading = false;
  p.MinParallelDataSize = 0;
  for (const std::size_t size : {0u, 10u, 4000000000u}) EXPECT_FALSE(p.GoesParallel(size)) << size;
}

TEST(ThreadingParams, RefuseUnknownVersions) {
  for (const std::uint32_t version : {0u, 2u, 0xFFFFFFFFu}) {
    EXPECT_EQ(ReadFailure<EvalThreadingParams>(Bytes(version, true, 1u, 1u, 1u), SampleEvalThreadingParams()),
              "Unknown EvalThreadingParams version.");
    EXPECT_EQ(ReadFailure<AppThreadingParams>(Bytes(version) + ToBytes(AppThreadingParams()).substr(4),
                                              SampleAppThreadingParams()),
              "Unknown AppThreadingParams version.");
  }
}

TEST(ThreadingParams, AnUnknownVersionOfAStageChangesNothing) {
  EXPECT_EQ(ReadFailure<AppThreadingParams>(Bytes(1u, true, 9u, 2u), SampleAppThreadingParams()),
            "Unknown EvalThreadingParams version.");
}

TEST(ThreadingParams, WriteXml) {
  EXPECT_EQ(ToXml(SampleAppThreadingParams()),
            L"<AppThreadingParams>\n"
            L"  <Auto>false</Auto>\n"
            L"  <ThreadPoolSize>6</ThreadPoolSize>\n"
            L"  <PeakDetect>\n"
            L"    <EnableMultiThreading>false</EnableMultiThreading>\n"
            L"    <MinParallelDataSize>30000</MinParallelDataSize>\n"
            L"    <Partitioner>Simple</Partitioner>\n"
            L"    <GrainSize>21</GrainSize>\n"
            L"  </PeakDetect>\n"
            L"  <PeakDetect>\n"
            L"    <EnableMultiThreading>true</EnableMultiThreading>\n"
            L"    <MinParallelDataSize>22</MinParallelDataSize>\n"
            L"    <Partitioner>Auto</Partitioner>\n"
            L"    <GrainSize>100</GrainSize>\n"
            L"  </PeakDetect>\n"
            L"  <PeakDetect>\n"
            L"    <EnableMultiThreading>true</EnableMultiThreading>\n"
            L"    <MinParallelDataSize>1000</MinParallelDataSize>\n"
            L"    <Partitioner>AutoAffinity</Partitioner>\n"
            L"    <GrainSize>23</GrainSize>\n"
            L"  </PeakDetect>\n"
            L"</AppThreadingParams>\n");
}

TEST(ThreadingParams, ReadTheXmlThatTheyWrite) {
  EXPECT_EQ(FromXml<AppThreadingParams>(ToXml(SampleAppThreadingParams())), SampleAppThreadingParams());
}

TEST(ThreadingParams, TellTheStagesApartByTheirOrderInADocument) {
  const auto p = FromXml<AppThreadingParams>(
      L"<AppThreadingParams><PeakDetect><GrainSize>1</GrainSize></PeakDetect><Auto>false</Auto>"
      L"<PeakDetect><GrainSize>2</GrainSize></PeakDetect></AppThreadingParams>");
  EXPECT_FALSE(p.Auto);
  EXPECT_EQ(p.FindFeature.GrainSize, 1u);
  EXPECT_EQ(p.DescribePeaks.GrainSize, 2u);
  EXPECT_EQ(p.SelectPeaks.GrainSize, 5000u);
}

TEST(ThreadingParams, KeepWhatTheDocumentLacks) {
  EXPECT_EQ(FromXml<AppThreadingParams>(L"<AppThreadingParams/>", SampleAppThreadingParams()),
            SampleAppThreadingParams());
  EXPECT_EQ(FromXml<AppThreadingParams>(L"<Other><Auto>true</Auto></Other>", SampleAppThreadingParams()),
            SampleAppThreadingParams());
}

TEST(ThreadingParams, APartitionerIsComparedExactly) {
  EXPECT_EQ(WithPartitioner(L"Simple"), EvalThreadingParams::Simple);
  EXPECT_EQ(WithPartitioner(L"Auto"), EvalThreadingParams::Auto);
  EXPECT_EQ(WithPartitioner(L"AutoAffinity"), EvalThreadingParams::AutoAffinity);
  for (const wchar_t* text : {L"simple", L"AUTO", L"Auto ", L"0", L""})
    EXPECT_EQ(WithPartitioner(text), EvalThreadingParams::AutoAffinity) << "should be left alone";
}

TEST(ThreadingParams, Dump) {
  EXPECT_EQ(DumpOf(SampleEvalThreadingParams()),
            L"  EnableMultiThreading:\tfalse\r\n"
            L"  MinParallelDataSize:\t12345\r\n"
            L"  Partitioner:\tAutoAffinity\r\n"
            L"  GrainSize:\t678\r\n");
  const AppThreadingParams p = SampleAppThreadingParams();
  EXPECT_EQ(DumpOf(p), L"  Auto:\tfalse\r\n  ThreadPoolSize:\t6\r\n" + DumpOf(p.FindFeature) +
                           DumpOf(p.DescribePeaks) + DumpOf(p.SelectPeaks));
}
