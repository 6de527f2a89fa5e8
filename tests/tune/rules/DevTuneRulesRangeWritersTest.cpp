// Tests: DevTuneRulesWriters.cpp.

#include <ctime>
#include <limits>
#include <vector>

#include <tune/rules/Rules.h>

namespace {

using namespace tests;

constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
constexpr const wchar_t* kHighBelowLow = L"High m/z must be greater than or equal to low m/z.";
constexpr const wchar_t* kBadLow = L"Low m/z is out of range.  Valid values are 5.00 to 3000.00.";
constexpr const wchar_t* kBadHigh = L"High m/z is out of range.  Valid values are 5.00 to 3000.00.";
constexpr const wchar_t* kBadSpan =
    L"Sim with Span value must be either No Span, 0.2, 0.4, 0.6, 0.8, or 1.0.";

// Always with the same moment of saving, to be compared.
Tune Scan(double low, double high) {
  Tune tune = Unmarked();
  tune.Info = SampleTuneInfo();
  tune.ControlData.MZLow = low;
  tune.ControlData.MZHi = high;
  return tune;
}
Tune Sim(double centre, double span) {
  Tune tune = Scan(centre, span);
  tune.ControlData.Type = Control::Sim;
  return tune;
}

// ---- m/z range -----------------------------------------------------------------------------

void ExpectRange(const Tune& before, double low, double high, const Tune& after) {
  ExpectAccepted(
      DevTuneRules(before), [=](DevTuneRules& r) { return r.WMZRange(low, high); }, after);
}

TEST(MZRange, TakesBothEnds) {
  ExpectRange(Scan(100, 200), 5, 3000, Scan(5, 3000));
  ExpectRange(Scan(100, 200), 500, 600, Scan(500, 600));
  ExpectRange(Scan(500, 600), 100, 200, Scan(100, 200));
  ExpectRange(Scan(100, 200), 150, 150, Scan(150, 150));
  ExpectRange(Scan(100, 200), 100, 300, Scan(100, 300));
  ExpectRange(Scan(100, 200), 50, 200, Scan(50, 200));
  ExpectRange(Scan(100, 200), 100, 200, Scan(100, 200));
}

TEST(MZRange, IsNeverReversed) {
  ExpectRefused(
      DevTuneRules(Scan(100, 200)), [](DevTuneRules& r) { return r.WMZRange(300.01, 300); }, kHighBelowLow);
}

TEST(MZRange, IsOfAScanOnly) {
  ExpectRefused(
      DevTuneRules(Sim(100, 0.4)), [](DevTuneRules& r) { return r.WMZRange(100, 200); }, kHighBelowLow);
}

void ExpectPart(double low, double high, ErrTypes result, const Tune& after, const std::wstring& text) {
  DevTuneRules rules(Scan(100, 200));
  EXPECT_EQ(rules.WMZRange(low, high), result);
  EXPECT_EQ(TuneBytes(rules), TuneBytes(after));
  EXPECT_EQ(LastErrorOf(rules), text);
  EXPECT_EQ(rules.IsModified(), TuneBytes(after) != TuneBytes(Scan(100, 200)));
}

TEST(MZRange, ABadLowEndIsToldAndTheHighEndDecides) {
  ExpectPart(1, 150, kNoError, Scan(100, 150), kBadLow);
  ExpectPart(1, 200, kNoError, Scan(100, 200), kBadLow);
  DevTuneRules rules = Unmarked();
  EXPECT_EQ(rules.WMZRange(1.0, 100.0), kNoError);
  EXPECT_EQ(rules.QMZLow(), 5.0);
  EXPECT_EQ(rules.QMZHi(), 100.0);
  EXPECT_EQ(LastErrorOf(rules), kBadLow);
}

TEST(MZRange, ABadHighEndIsRefusedAndTheLowEndStays) {
  ExpectPart(50, 3001, kError, Scan(50, 200), kBadHigh);
  ExpectPart(100, 3001, kError, Scan(100, 200), kBadHigh);
}

TEST(MZRange, OfTwoBadEndsTheHighOneIsTold) {
  ExpectPart(1, 2, kError, Scan(100, 200), kBadHigh);
  ExpectPart(3001, 3002, kError, Scan(100, 200), kBadHigh);
}

TEST(MZLow, OfAScanIsAtMostTheHighEnd) {
  ExpectAccepted(
      DevTuneRules(Scan(100, 200)), [](DevTuneRules& r) { return r.WMZLow(200); }, Scan(200, 200));
  ExpectAccepted(
      DevTuneRules(Scan(100, 200)), [](DevTuneRules& r) { return r.WMZLow(5); }, Scan(5, 200));
  ExpectRefused(
      DevTuneRules(Scan(100, 200)), [](DevTuneRules& r) { return r.WMZLow(200.01); }, kHighBelowLow);
  ExpectRefused(
      DevTuneRules(Scan(100, 200)), [](DevTuneRules& r) { return r.WMZLow(3001); }, kHighBelowLow);
}

TEST(MZLow, OfAScanHasLimits) {
  ExpectRefused(
      DevTuneRules(Scan(100, 200)), [](DevTuneRules& r) { return r.WMZLow(4.99); }, kBadLow);
  ExpectRefused(
      DevTuneRules(Scan(100, 4000)), [](DevTuneRules& r) { return r.WMZLow(3000.01); }, kBadLow);
}

TEST(MZLow, OfASimMayStandAboveItsSpan) {
  ExpectAccepted(
      DevTuneRules(Sim(100, 0.4)), [](DevTuneRules& r) { return r.WMZLow(500); }, Sim(500, 0.4));
}

TEST(MZHi, OfAScanIsAtLeastTheLowEnd) {
  ExpectAccepted(
      DevTuneRules(Scan(100, 200)), [](DevTuneRules& r) { return r.WMZHi(100); }, Scan(100, 100));
  ExpectAccepted(
      DevTuneRules(Scan(100, 200)), [](DevTuneRules& r) { return r.WMZHi(3000); }, Scan(100, 3000));
  ExpectRefused(
      DevTuneRules(Scan(100, 200)), [](DevTuneRules& r) { return r.WMZHi(99.99); }, kHighBelowLow);
  ExpectRefused(
      DevTuneRules(Scan(100, 200)), [](DevTuneRules& r) { return r.WMZHi(4); }, kHighBelowLow);
}

TEST(MZHi, OfAScanHasLimits) {
  ExpectRefused(
      DevTuneRules(Scan(100, 200)), [](DevTuneRules& r) { return r.WMZHi(3000.01); }, kBadHigh);
  ExpectRefused(
      DevTuneRules(Scan(1, 200)), [](DevTuneRules& r) { return r.WMZHi(4.99); }, kBadHigh);
  ExpectAccepted(
      DevTuneRules(Scan(1, 200)), [](DevTuneRules& r) { return r.WMZHi(5); }, Scan(1, 5));
}

TEST(MZHi, OfASimCannotBeSet) {
  for (const double mz : {0.4, 100.0, 3001.0})
    ExpectRefused(
        DevTuneRules(Sim(100, 0.4)), [=](DevTuneRules& r) { return r.WMZHi(mz); },
        L"Acquisition type must be Scan to set High m/z value.");
}

// ---- Span of a SIM -------------------------------------------------------------------------

constexpr double kSpans[] = {0.0, 0.2, 0.4, 0.6, 0.8, 1.0, 1.2, 1.4, 1.6, 1.8, 2.0};

ErrTypes WSpan(DevTuneRules& rules, std::uint32_t code) {
  return rules.WSimWithSpan(static_cast<Control::SimWithSpanTypes>(code));
}

TEST(SimSpan, OfEachCode) {
  for (std::uint32_t code = 0; code < std::size(kSpans); ++code) {
    SCOPED_TRACE(code);
    ExpectAccepted(
        DevTuneRules(Sim(100, 7)), [=](DevTuneRules& r) { return WSpan(r, code); }, Sim(100, kSpans[code]));
    ExpectAccepted(
        DevTuneRules(Sim(100, kSpans[code])), [=](DevTuneRules& r) { return WSpan(r, code); },
        Sim(100, kSpans[code]));
  }
}

TEST(SimSpan, HasNoOtherCode) {
  for (const std::uint32_t code : {11u, 12u, 4294967295u})
    ExpectRefused(
        DevTuneRules(Sim(100, 0.4)), [=](DevTuneRules& r) { return WSpan(r, code); }, kBadSpan);
}

TEST(SimSpan, OfAScanCannotBeSet) {
  for (const std::uint32_t code : {0u, 1u, 11u})
    ExpectRefused(
        DevTuneRules(Scan(100, 200)), [=](DevTuneRules& r) { return WSpan(r, code); },
        L"Acquisition type must be Sim to set Sim with Span value.");
}

// ---- Samples per mass ----------------------------------------------------------------------

double StepOf(double samples) {
  DevTuneRules rules = Unmarked();
  rules.WMZStepSize(1.0);
  rules.ClearModified();
  EXPECT_EQ(rules.WSamplesPerMass(samples), kNoError);
  EXPECT_TRUE(rules.IsModified());
  return rules.QMZStepSize();
}

TEST(SamplesPerMass, SetTheStep) {
  const std::pair<double, double> rows[] = {{20, 0.05}, {10, 0.1}, {6, 0.15}, {5, 0.2}, {4, 0.25}};
  for (const auto& [samples, step] : rows) EXPECT_DOUBLE_EQ(StepOf(samples), step) << samples;
}

TEST(SamplesPerMass, ThatAreNoneOfThemAreTen) {
  for (const double samples : {7.0, 0.0, 1.0, 3.0, 3.999, 8.0, 9.99, 11.0, 19.0, 21.0, -10.0, 1e300, kNaN})
    EXPECT_DOUBLE_EQ(StepOf(samples), 0.1) << samples;
}

// The number is truncated to find its kind, the step is made of it as given.
TEST(SamplesPerMass, WithAFractionMakeTheStepOfTheFraction) {
  EXPECT_DOUBLE_EQ(StepOf(4.9), 0.2);     // 20.4 hundredths
  EXPECT_DOUBLE_EQ(StepOf(5.9), 0.15);    // 16.9
  EXPECT_DOUBLE_EQ(StepOf(6.9), 0.1);     // 14.4
  EXPECT_DOUBLE_EQ(StepOf(10.1), 0.05);   // 9.9
  EXPECT_DOUBLE_EQ(StepOf(4.0001), 0.2);  // 24.9
}

TEST(SamplesPerMass, BeyondTwentyMakeAStepThatIsTooSmall) {
  ExpectRefused(
      Unmarked(), [](DevTuneRules& r) { return r.WSamplesPerMass(20.5); },
      L"Step Size is out of range.  Valid values are 0.05 to 2995.00.");
}

TEST(SamplesPerMass, OfTheSameStepChangeNothing) {
  DevTuneRules rules = Unmarked();
  rules.WSamplesPerMass(10);
  rules.ClearModified();
  EXPECT_EQ(rules.WSamplesPerMass(10), kNoError);
  EXPECT_FALSE(rules.IsModified());
}

// ---- m/z calibration -----------------------------------------------------------------------

TEST(MZCalPts, AreTakenAsGiven) {
  const std::vector<MZCalPt> points = {{L"b", 2000, 40000}, {L"a", 50, 1000}, {L"c", 2500, 60000}};
  Tune after = Unmarked();
  const Tune before = after;
  after.MZCalPts = points;
  ExpectAccepted(
      DevTuneRules(before), [&](DevTuneRules& r) { return r.WMZCalPts(points); }, after);
}

TEST(MZCalPts, ThatAreBadAreRefused) {
  ExpectRefused(
      Unmarked(),
      [](DevTuneRules& r) {
        return r.WMZCalPts({{L"", 5, 100}});
      },
      L"There must be at least two m/z calibration points.");
  ExpectRefused(
      Unmarked(),
      [](DevTuneRules& r) {
        return r.WMZCalPts({{L"", 5, 100}, {L"", 6, 100}});
      },
      L"m/z calibration point 1 is invalid.  m/z and mass DAC values must be greater than previous m/z "
      L"calibration point.");
}

TEST(MZCalPts, WithAnotherNameAreAChange) {
  DevTuneRules rules = Unmarked();
  std::vector<MZCalPt> points = rules.QMZCalPts();
  points[0].Name = L"renamed";
  EXPECT_EQ(rules.WMZCalPts(points), kNoError);
  EXPECT_TRUE(rules.IsModified());
  EXPECT_EQ(rules.QMZCalPts()[0].Name, L"renamed");
}

TEST(MZCalPts, WithinTheToleranceOfAPointAreNoChange) {
  DevTuneRules rules = Unmarked();
  std::vector<MZCalPt> points = rules.QMZCalPts();
  points[0].MassDAC += 5e-7;
  EXPECT_EQ(rules.WMZCalPts(points), kNoError);
  EXPECT_FALSE(rules.IsModified());
  EXPECT_EQ(rules.QMZCalPts()[0].MassDAC, 100.0);
}

// ---- Moment of saving ----------------------------------------------------------------------

TEST(LastSavedNow, IsNowAndAlwaysAChange) {
  DevTuneRules rules = Unmarked();
  rules.WLastSaved(0);
  for (int round = 0; round < 2; ++round) {
    rules.ClearModified();
    const std::int64_t before = std::time(nullptr);
    EXPECT_EQ(rules.WLastSavedNow(), kNoError);
    EXPECT_GE(rules.QLastSaved(), before);
    EXPECT_LE(rules.QLastSaved(), std::time(nullptr));
    EXPECT_TRUE(rules.IsModified());
  }
}

}  // namespace
