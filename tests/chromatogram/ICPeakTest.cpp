#include <RecordCheck.h>

#include <tslbl/chromatogram/ICPeak.h>

using namespace TslBL;
using namespace tests;

namespace {

ICPeak SampleICPeak() {
  ICPeak p;
  p.CurveId = 2;
  p.PeakId = 3;
  double next = 1.5;
  for (double PeakValues::*value :
       {&PeakValues::CentroidX, &PeakValues::CentroidAmpl, &PeakValues::RelCentroidAmpl, &PeakValues::MaxX,
        &PeakValues::MaxAmpl, &PeakValues::RelMaxAmpl, &PeakValues::Area, &PeakValues::Width,
        &PeakValues::Resolution, &PeakValues::Baseline, &PeakValues::Signal2Noise, &PeakValues::Noise,
        &PeakValues::PkStartX, &PeakValues::PkStartAmpl, &PeakValues::PkEndX, &PeakValues::PkEndAmpl,
        &PeakValues::PkAreaStartX, &PeakValues::PkAreaEndX, &PeakValues::PkAreaIntercept})
    p.*value = next++;
  p.SpecIds = {12, 13, 4294967295u};
  return p;
}

}  // namespace

TEST(AllRecords, ICPeak) {
  CheckRecord<ICPeak>({
      {"CurveId", [](auto& p) { p.CurveId = 1; }},
      {"PeakId", [](auto& p) { p.PeakId = 1; }},
      {"CentroidX", [](auto& p) { p.CentroidX = 1.5; }},
      {"CentroidAmpl", [](auto& p) { p.CentroidAmpl = 1.5; }},
      {"RelCentroidAmpl", [](auto& p) { p.RelCentroidAmpl = 1.5; }},
      {"MaxX", [](auto& p) { p.MaxX = 1.5; }},
      {"MaxAmpl", [](auto& p) { p.MaxAmpl = 1.5; }},
      {"RelMaxAmpl", [](auto& p) { p.RelMaxAmpl = 1.5; }},
      {"Area", [](auto& p) { p.Area = 1.5; }},
      {"Width", [](auto& p) { p.Width = 1.5; }},
      {"Resolution", [](auto& p) { p.Resolution = 1.5; }},
      {"Baseline", [](auto& p) { p.Baseline = 1.5; }},
      {"Signal2Noise", [](auto& p) { p.Signal2Noise = 1.5; }},
      {"Noise", [](auto& p) { p.Noise = 1.5; }},
      {"PkStartX", [](auto& p) { p.PkStartX = 1.5; }},
      {"PkStartAmpl", [](auto& p) { p.PkStartAmpl = 1.5; }},
      {"PkEndX", [](auto& p) { p.PkEndX = 1.5; }},
      {"PkEndAmpl", [](auto& p) { p.PkEndAmpl = 1.5; }},
      {"PkAreaStartX", [](auto& p) { p.PkAreaStartX = 1.5; }},
      {"PkAreaEndX", [](auto& p) { p.PkAreaEndX = 1.5; }},
      {"PkAreaIntercept", [](auto& p) { p.PkAreaIntercept = 1.5; }},
      {"SpecIds", [](auto& p) { p.SpecIds = {1}; }},
      {"SpecIds.id", [](auto& p) { p.SpecIds[0] = 2; }},
  });
}
TEST(Golden, ICPeak) { CheckGolden(SampleICPeak(), "ICPeak.v1"); }
TEST(CutShort, ICPeak) { CheckCutShort(SampleICPeak()); }

TEST(ICPeak, IsZeroAndEmptyByDefault) {
  const ICPeak p;
  EXPECT_EQ(ToBytes(p), Bytes(1u, 0u, 0u) + std::string(19 * 8, '\0') + Bytes(0u));
}

TEST(ICPeak, RefusesUnknownVersions) {
  for (const std::uint32_t version : {0u, 2u})
    EXPECT_EQ(ReadFailure<ICPeak>(Bytes(version) + ToBytes(SampleICPeak()).substr(4)),
              "Unknown ICPeak version.");
}
