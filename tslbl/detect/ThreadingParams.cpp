#include <tslbl/detect/ThreadingParams.h>

#include <tslbl/records/Archive.h>

namespace TslBL {
namespace {

constexpr CodeText kPartitioners[] = {{EvalThreadingParams::Simple, L"Simple"},
                                      {EvalThreadingParams::Auto, L"Auto"},
                                      {EvalThreadingParams::AutoAffinity, L"AutoAffinity"}};

void SetStage(EvalThreadingParams& stage, std::uint32_t minParallelDataSize, std::uint32_t grainSize) {
  stage.MinParallelDataSize = minParallelDataSize;
  stage.Partitioner = EvalThreadingParams::Simple;
  stage.GrainSize = grainSize;
}

}  // namespace

FindFeatureThreadingParams::FindFeatureThreadingParams() { SetStage(*this, 30000, 40000); }
DescribePeaksThreadingParams::DescribePeaksThreadingParams() { SetStage(*this, 10, 100); }
SelectPeaksThreadingParams::SelectPeaksThreadingParams() { SetStage(*this, 1000, 5000); }

void Describe(Archive& ar, EvalThreadingParams& p) {
  ar.Version(1, "Unknown EvalThreadingParams version.");
  // One element name for all stages: in a document their order tells them apart.
  if (const auto element = ar.Element(L"PeakDetect")) {
    ar(L"EnableMultiThreading", p.EnableMultiThreading);
    ar(L"MinParallelDataSize", p.MinParallelDataSize);
    ar.Enum(L"Partitioner", p.Partitioner, {.rows = kPartitioners, .exact = true, .keepOnMiss = true});
    ar(L"GrainSize", p.GrainSize);
  }
}

void Describe(Archive& ar, AppThreadingParams& p) {
  ar.Version(1, "Unknown AppThreadingParams version.");
  if (const auto element = ar.Element(L"AppThreadingParams")) {
    ar(L"Auto", p.Auto);
    ar(L"ThreadPoolSize", p.ThreadPoolSize);
    ar.Nested(static_cast<EvalThreadingParams&>(p.FindFeature));
    ar.Nested(static_cast<EvalThreadingParams&>(p.DescribePeaks));
    ar.Nested(static_cast<EvalThreadingParams&>(p.SelectPeaks));
  }
}

}  // namespace TslBL
