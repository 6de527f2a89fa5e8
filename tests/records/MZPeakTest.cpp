// Tests: PeakValues.cpp.

#include <RecordCheck.h>

#include <tslbl/records/MZPeak.h>
#include <limits>

using namespace TslBL;
using namespace tests;

namespace {

MZPeak SampleMZPeak() {
  MZPeak p;
  p.Kind = MZPeak::OverlapPeak;
  p.CurveId = 2;
  p.PeakId = 3;
  double* const values[] = {&p.CentroidX,    &p.CentroidAmpl, &p.RelCentroidAmpl,
                            &p.MaxX,         &p.MaxAmpl,      &p.RelMaxAmpl,
                            &p.Mass,         &p.Ampl,         &p.Area,
                            &p.Width,        &p.Resolution,   &p.Baseline,
                            &p.Signal2Noise, &p.Noise,        &p.PkStartX,
                            &p.PkStartAmpl,  &p.PkEndX,       &p.PkEndAmpl,
                            &p.PkAreaStartX, &p.PkAreaEndX,   &p.PkAreaIntercept,
                            &p.CSValue1,     &p.CSValue2,     &p.CSValue3};
  double next = 4.5;
  for (double* value : values) *value = next++;
  p.CSSeriesRef = {CSSeries::Resolved, 7};
  p.CSCharge = -2;
  p.IsOverlapped = true;
  p.GroupId = 9;
  return p;
}

MZPeak PeakAt(double mass, double ampl) {
  MZPeak p;
  p.Mass = mass;
  p.Ampl = ampl;
  return p;
}

MZRange From(double start, double end) { return {MZRange::Partial, start, end}; }

// A peak whose centroid and maximum differ, reported at its maximum.
MZPeak TopPeak() {
  MZPeak p;
  p.CentroidX = 100.0;
  p.CentroidAmpl = 10.0;
  p.MaxX = p.Mass = 101.0;
  p.MaxAmpl = p.Ampl = 11.0;
  return p;
}

const auto kNoField = static_cast<MZPeakField::Types>(4);

}  // namespace

TEST(AllRecords, MZPeak) {
  CheckRecord<MZPeak>({
      {"Kind", [](auto& r) { r.Kind = MZPeak::OverlapPeak; }},
      {"CurveId", [](auto& r) { r.CurveId = 1; }},
      {"PeakId", [](auto& r) { r.PeakId = 1; }},
      {"CentroidX", [](auto& r) { r.CentroidX = 1.0; }},
      {"CentroidAmpl", [](auto& r) { r.CentroidAmpl = 1.0; }},
      {"RelCentroidAmpl", [](auto& r) { r.RelCentroidAmpl = 1.0; }},
      {"MaxX", [](auto& r) { r.MaxX = 1.0; }},
      {"MaxAmpl", [](auto& r) { r.MaxAmpl = 1.0; }},
      {"RelMaxAmpl", [](auto& r) { r.RelMaxAmpl = 1.0; }},
      {"Mass", [](auto& r) { r.Mass = 1.0; }},
      {"Ampl", [](auto& r) { r.Ampl = 1.0; }},
      {"Area", [](auto& r) { r.Area = 1.0; }},
      {"Width", [](auto& r) { r.Width = 1.0; }},
      {"Resolution", [](auto& r) { r.Resolution = 1.0; }},
      {"Baseline", [](auto& r) { r.Baseline = 1.0; }},
      {"Signal2Noise", [](auto& r) { r.Signal2Noise = 1.0; }},
      {"Noise", [](auto& r) { r.Noise = 1.0; }},
      {"PkStartX", [](auto& r) { r.PkStartX = 1.0; }},
      {"PkStartAmpl", [](auto& r) { r.PkStartAmpl = 1.0; }},
      {"PkEndX", [](auto& r) { r.PkEndX = 1.0; }},
      {"PkEndAmpl", [](auto& r) { r.PkEndAmpl = 1.0; }},
      {"PkAreaStartX", [](auto& r) { r.PkAreaStartX = 1.0; }},
      {"PkAreaEndX", [](auto& r) { r.PkAreaEndX = 1.0; }},
      {"PkAreaIntercept", [](auto& r) { r.PkAreaIntercept = 1.0; }},
      {"CSSeriesRef", [](auto& r) { r.CSSeriesRef.Id = 1; }},
      {"CSValue1", [](auto& r) { r.CSValue1 = 1.0; }},
      {"CSValue2", [](auto& r) { r.CSValue2 = 1.0; }},
      {"CSValue3", [](auto& r) { r.CSValue3 = 1.0; }},
      {"CSCharge", [](auto& r) { r.CSCharge = -1; }},
      {"IsOverlapped", [](auto& r) { r.IsOverlapped = true; }},
      {"GroupId", [](auto& r) { r.GroupId = 1; }},
  });
}
TEST(Golden, MZPeak) { CheckGolden(SampleMZPeak(), "MZPeak.v2"); }
TEST(CutShort, MZPeak) { CheckCutShort(SampleMZPeak()); }

TEST(MZPeak, IsAllZeroByDefault) {
  const std::string bytes = ToBytes(MZPeak());
  const std::string nested = Bytes(1u, 0u, 0u);
  EXPECT_EQ(bytes,
            Bytes(2u) + std::string(3 * 4 + 21 * 8, '\0') + nested + std::string(3 * 8 + 4 + 1 + 4, '\0'));
}

TEST(MZPeak, ReadsVersion2Alone) {
  for (const std::uint32_t version : {0u, 1u, 3u})
    EXPECT_EQ(ReadFailure<MZPeak>(Bytes(version) + ToBytes(SampleMZPeak()).substr(4)),
              "Unknown MZPeak version.");
}

TEST(MZPeak, DumpsEveryFieldInItsOrder) {
  EXPECT_EQ(DumpOf(SampleMZPeak()),
            L"  Kind:\t1\r\n  CurveId:\t2\r\n  PeakId:\t3\r\n  CentroidX:\t4.5\r\n  CentroidAmpl:\t5.5\r\n"
            L"  RelCentroidAmpl:\t6.5\r\n  MaxX:\t7.5\r\n  MaxAmpl:\t8.5\r\n  RelMaxAmpl:\t9.5\r\n"
            L"  Mass:\t10.5\r\n  Ampl:\t11.5\r\n  Area:\t12.5\r\n  Width:\t13.5\r\n  Resolution:\t14.5\r\n"
            L"  Baseline:\t15.5\r\n  Signal2Noise:\t16.5\r\n  Noise:\t17.5\r\n  PkStartX:\t18.5\r\n"
            L"  PkStartAmpl:\t19.5\r\n  PkEndX:\t20.5\r\n  PkEndAmpl:\t21.5\r\n  PkAreaStartX:\t22.5\r\n"
            L"  PkAreaEndX:\t23.5\r\n  PkAreaIntercept:\t24.5\r\n  Type:\tResolved\r\n  Id:\t7\r\n"
            L"  CSValue1:\t25.5\r\n  CSValue2:\t26.5\r\n  CSValue3:\t27.5\r\n  CSCharge:\t-2\r\n"
            L"  IsOverlapped:\ttrue\r\n  GroupId:\t9\r\n");
}

TEST(FindBasePeak, IsADefaultPeakInAnEmptyTable) { EXPECT_EQ(FindBasePeak({}, MZRange()), MZPeak()); }

TEST(FindBasePeak, IsTheTallestInTheRange) {
  const std::vector<MZPeak> peaks = {PeakAt(10, 99), PeakAt(20, 1), PeakAt(30, 3), PeakAt(40, 2),
                                     PeakAt(50, 98)};
  EXPECT_EQ(FindBasePeak(peaks, From(15, 45)).Mass, 30.0);
}

TEST(FindBasePeak, RangeHasBothItsEnds) {
  const std::vector<MZPeak> peaks = {PeakAt(10, 2), PeakAt(20, 1)};
  EXPECT_EQ(FindBasePeak(peaks, From(10, 20)).Mass, 10.0);
  EXPECT_EQ(FindBasePeak(peaks, From(10.5, 20)).Mass, 20.0);
}

TEST(FindBasePeak, FirstOfEqualPeaksStays) {
  EXPECT_EQ(FindBasePeak({PeakAt(10, 5), PeakAt(20, 5)}, MZRange()).Mass, 10.0);
}

TEST(FindBasePeak, EndsAtTheFirstPeakBeyondTheRange) {
  EXPECT_EQ(FindBasePeak({PeakAt(10, 1), PeakAt(50, 9), PeakAt(20, 5)}, From(5, 30)).Mass, 10.0);
}

TEST(FindBasePeak, FullRangeMeansItsLimits) {
  const std::vector<MZPeak> peaks = {PeakAt(4, 9), PeakAt(100, 1), PeakAt(3001, 9)};
  EXPECT_EQ(FindBasePeak(peaks, MZRange()).Mass, 100.0);
  EXPECT_EQ(FindBasePeak(peaks, MZRange(MZRange::Full, 1.0, 50.0)).Mass, 4.0);
}

TEST(FindBasePeak, IsADefaultPeakIfNoneRisesAboveZero) {
  EXPECT_EQ(FindBasePeak({PeakAt(10, 0.0), PeakAt(20, -1.0)}, MZRange()), MZPeak());
}

TEST(QMZPeakField, ReadsWhatTheFieldNames) {
  const MZPeak p = SampleMZPeak();
  EXPECT_EQ(QMZPeakField(p, MZPeakField::Ampl), p.Ampl);
  EXPECT_EQ(QMZPeakField(p, MZPeakField::Mass), p.Mass);
  EXPECT_EQ(QMZPeakField(p, MZPeakField::Res), p.Resolution);
  EXPECT_EQ(QMZPeakField(p, MZPeakField::Width), p.Width);
}

TEST(QMZPeakField, RefusesAFieldThatIsNone) {
  MZPeak p = SampleMZPeak();
  const auto text = [](auto f) {
    try {
      f();
    } catch (const std::runtime_error& e) {
      return std::string(e.what());
    }
    return std::string();
  };
  EXPECT_EQ(text([&] { QMZPeakField(p, kNoField); }), "Unknown MZPeakField type");
  EXPECT_EQ(text([&] { WMZPeakField(p, kNoField, 1.0); }), "Unknown MZPeakField type");
  EXPECT_EQ(p, SampleMZPeak());
}

TEST(WMZPeakField, WritesResolutionAndWidthAlone) {
  MZPeak expected = TopPeak();
  expected.Resolution = 3.0;
  expected.Width = 4.0;
  MZPeak p = TopPeak();
  WMZPeakField(p, MZPeakField::Res, 3.0);
  WMZPeakField(p, MZPeakField::Width, 4.0);
  EXPECT_EQ(p, expected);
}

TEST(WMZPeakField, WritesTheMaximumOfAPeakReportedThere) {
  MZPeak expected = TopPeak();
  expected.Mass = expected.MaxX = 7.0;
  expected.Ampl = expected.MaxAmpl = 8.0;
  MZPeak p = TopPeak();
  WMZPeakField(p, MZPeakField::Mass, 7.0);
  WMZPeakField(p, MZPeakField::Ampl, 8.0);
  EXPECT_EQ(p, expected);
}

TEST(WMZPeakField, WritesTheCentroidOfAPeakReportedThere) {
  MZPeak p = TopPeak();
  p.Mass = p.CentroidX;
  p.Ampl = p.CentroidAmpl;
  MZPeak expected = p;
  expected.Mass = expected.CentroidX = 7.0;
  expected.Ampl = expected.CentroidAmpl = 8.0;
  WMZPeakField(p, MZPeakField::Mass, 7.0);
  WMZPeakField(p, MZPeakField::Ampl, 8.0);
  EXPECT_EQ(p, expected);
}

TEST(WMZPeakField, WritesTheCentroidWhereBothAreEqual) {
  MZPeak p;
  WMZPeakField(p, MZPeakField::Mass, 7.0);
  WMZPeakField(p, MZPeakField::Ampl, 8.0);
  EXPECT_EQ(p.CentroidX, 7.0);
  EXPECT_EQ(p.MaxX, 0.0);
  EXPECT_EQ(p.CentroidAmpl, 8.0);
  EXPECT_EQ(p.MaxAmpl, 0.0);
}

TEST(WMZPeakField, WritesTheMaximumOfAPeakReportedNowhere) {
  MZPeak p = TopPeak();
  p.Ampl = std::numeric_limits<double>::quiet_NaN();
  WMZPeakField(p, MZPeakField::Ampl, 8.0);
  EXPECT_EQ(p.MaxAmpl, 8.0);
  EXPECT_EQ(p.CentroidAmpl, 10.0);
}
