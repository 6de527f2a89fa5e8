#include <tslbl/records/VexException.h>
#include <limits>
#include <stdexcept>
#include <vector>

#include <tune/rules/Rules.h>

namespace {

using namespace tests;

constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
constexpr double kInfinity = std::numeric_limits<double>::infinity();

// What a check says: its text, empty if it finds nothing. It never changes the tune.
template <class Check>
std::wstring Told(DevTuneRules rules, Check check) {
  const std::string before = TuneBytes(rules);
  rules.ClearModified();
  const ErrTypes result = check(rules);
  EXPECT_EQ(TuneBytes(rules), before);
  EXPECT_FALSE(rules.IsModified());
  const std::wstring text = LastErrorOf(rules);
  EXPECT_EQ(result == kNoError, text.empty());
  return text;
}

// ---- CheckLimits ---------------------------------------------------------------------------

TEST(CheckLimits, WithoutATuneNamesTheValueByItsLabel) {
  std::wstring text;
  EXPECT_EQ(DevTuneRules::CheckLimits(Probes::APCI, TuneField::EndPlate, 5001, L"My plate", text), kError);
  EXPECT_EQ(text, L"My plate is out of range.  Valid values are -5000.00 to 5000.00.");
}

TEST(CheckLimits, WithoutATuneLeavesTheTextOfASuccess) {
  std::wstring text = L"before";
  EXPECT_EQ(DevTuneRules::CheckLimits(Probes::ESI, TuneField::EndPlate, 5001, L"My plate", text), kNoError);
  EXPECT_EQ(text, L"before");
}

TEST(CheckLimits, WithoutATuneTakesTheLimitsOfTheProbe) {
  for (const Probes::ProbeTypes probe : kProbes) {
    const double end = probe == Probes::APCI ? 5000 : 6000;
    std::wstring text;
    for (const double value : {-end, 0.0, end})
      EXPECT_EQ(DevTuneRules::CheckLimits(probe, TuneField::CapEnter, value, L"", text), kNoError);
    for (const double value : {-end - 1e-9, end + 1e-9, kInfinity, -kInfinity})
      EXPECT_EQ(DevTuneRules::CheckLimits(probe, TuneField::CapEnter, value, L"", text), kError);
  }
}

TEST(CheckLimits, OfATuneTakesItsProbeAndTheNameOfTheField) {
  const auto check = [](const DevTuneRules& r) { return r.CheckLimits(TuneField::EndPlate, -5001); };
  EXPECT_EQ(Told(Unmarked(Probes::APCI), check),
            L"Endplate is out of range.  Valid values are -5000.00 to 5000.00.");
  EXPECT_EQ(Told(Unmarked(Probes::ESI), check), L"");
}

TEST(CheckLimits, WithBoundsTakesThem) {
  const auto within = [](double value) {
    return Told(Unmarked(),
                [=](const DevTuneRules& r) { return r.CheckLimits(TuneField::Q0Exit1, value, -1.25, 0.5); });
  };
  EXPECT_EQ(within(-1.25), L"");
  EXPECT_EQ(within(0.5), L"");
  EXPECT_EQ(within(-1.26), L"Q0 Exit Lens 1 is out of range.  Valid values are -1.25 to 0.50.");
  EXPECT_EQ(within(0.501), L"Q0 Exit Lens 1 is out of range.  Valid values are -1.25 to 0.50.");
}

TEST(CheckLimits, LetsPassWhatIsNoNumber) {
  std::wstring text;
  EXPECT_EQ(DevTuneRules::CheckLimits(Probes::ESI, TuneField::CapExit, kNaN, L"", text), kNoError);
  const auto tune = [](const DevTuneRules& r) { return r.CheckLimits(TuneField::CapExit, kNaN); };
  const auto bounds = [](const DevTuneRules& r) { return r.CheckLimits(TuneField::CapExit, kNaN, 1, 2); };
  EXPECT_EQ(Told(Unmarked(), tune), L"");
  EXPECT_EQ(Told(Unmarked(), bounds), L"");
}

TEST(CheckLimits, OfAFieldWithoutLimitsAcceptsNought) {
  const auto check = [](double value) {
    return Told(Unmarked(), [=](const DevTuneRules& r) { return r.CheckLimits(TuneField::Comment, value); });
  };
  EXPECT_EQ(check(0), L"");
  EXPECT_EQ(check(1), L"Comment is out of range.  Valid values are 0.00 to 0.00.");
}

TEST(CheckLimits, OfANumberThatNamesNoFieldThrows) {
  const auto unknown = TuneField::kFieldCount;
  for (const double value : {0.0, 1.0, kNaN})
    EXPECT_THROW(Unmarked().CheckLimits(unknown, value), VexException) << value;
}

// ---- CheckIOPoint --------------------------------------------------------------------------

DevTuneRules WithCapExitPoints(std::size_t count) {
  Tune tune = Unmarked();
  tune.Q1CalPts.clear();
  for (std::size_t i = 0; i < count; ++i)
    tune.Q1CalPts.push_back(Calibrant(100.0 * static_cast<double>(i + 1), {{TuneField::CapExit, 1}}));
  return DevTuneRules(tune);
}

std::wstring LensTold(TuneField::Id field, const IOPoint& point, std::size_t points = 5) {
  return Told(WithCapExitPoints(points), [&](const DevTuneRules& r) { return r.CheckIOPoint(field, point); });
}

TEST(CheckIOPoint, OfASingleValueChecksItsLimits) {
  EXPECT_EQ(LensTold(TuneField::CapExit, LensOf(IOPoint::SingleType, 400)), L"");
  EXPECT_EQ(LensTold(TuneField::CapExit, LensOf(IOPoint::SingleType, -400)), L"");
  EXPECT_EQ(LensTold(TuneField::CapExit, LensOf(IOPoint::SingleType, 400.5)),
            L"Capillary Exit - Single Value is out of range.  Valid values are -400.00 to 400.00.");
  EXPECT_EQ(LensTold(TuneField::Q0Offset, LensOf(IOPoint::SingleType, -30.5)),
            L"Q0 Offset - Single Value is out of range.  Valid values are -30.00 to 30.00.");
}

TEST(CheckIOPoint, OfALensThatFollowsMzWantsTwoPoints) {
  const std::wstring text =
      L"Capillary Exit - There must be at least two Q1 step calibration points for this field.";
  EXPECT_EQ(LensTold(TuneField::CapExit, LensOf(IOPoint::CalibratedType), 0), text);
  EXPECT_EQ(LensTold(TuneField::CapExit, LensOf(IOPoint::CalibratedType), 1), text);
  EXPECT_EQ(LensTold(TuneField::CapExit, LensOf(IOPoint::CalibratedType), 2), L"");
  EXPECT_EQ(LensTold(TuneField::Skimmer, LensOf(IOPoint::CalibratedType), 5),
            L"Skimmer - There must be at least two Q1 step calibration points for this field.");
}

TEST(CheckIOPoint, OfTooFewPointsIsAWarning) {
  EXPECT_EQ(WithCapExitPoints(1).CheckIOPoint(TuneField::CapExit, LensOf(IOPoint::CalibratedType)), kWarning);
  EXPECT_EQ(WithCapExitPoints(1).CheckIOPoint(TuneField::CapExit, LensOf(IOPoint::SingleType, 401)), kError);
}

TEST(CheckIOPoint, OfAFieldThatCannotFollowMzAlwaysWarns) {
  DevTuneRules rules = Unmarked();
  rules.Q1CalPts = {Calibrant(100, {{TuneField::Q1CoarseResolution, 1}}),
                    Calibrant(200, {{TuneField::Q1CoarseResolution, 1}})};
  EXPECT_EQ(rules.CheckIOPoint(TuneField::Q1CoarseResolution, LensOf(IOPoint::CalibratedType)), kWarning);
  EXPECT_EQ(LastErrorOf(rules),
            L"Q1 Coarse Resolution - There must be at least two Q1 step calibration points for this field.");
}

TEST(CheckIOPoint, OfALensThatFollowsMzDoesNotAskForItsSingleValue) {
  EXPECT_EQ(LensTold(TuneField::CapExit, LensOf(IOPoint::CalibratedType, 1e9)), L"");
}

TEST(CheckIOPoint, OfAFunctionIsAccepted) {
  EXPECT_EQ(LensTold(TuneField::CapExit, LensOf(IOPoint::FunctionType, 1e9), 0), L"");
}

TEST(CheckIOPoint, OfAnUnknownTypeIsAnError) {
  EXPECT_EQ(LensTold(TuneField::Q1IonGuide, LensOf(static_cast<IOPoint::Types>(3))),
            L"Q1 IonGuide - IOPoint Type is out of range.  Valid values are 0.00 to 2.00.");
}

// ---- CheckSimSpanRange ---------------------------------------------------------------------

std::wstring SpanTold(double span) {
  return Told(Unmarked(), [=](const DevTuneRules& r) { return r.CheckSimSpanRange(span); });
}

TEST(CheckSimSpanRange, IsEvenTenthsUpToTwo) {
  for (const double span : {0.0, 0.2, 0.4, 0.6, 0.8, 1.0, 1.2, 1.4, 1.6, 1.8, 2.0})
    EXPECT_EQ(SpanTold(span), L"") << span;
}

TEST(CheckSimSpanRange, LooksAtTenthsOnly) {
  for (const double span : {0.05, 0.25, 0.29, 1.05}) EXPECT_EQ(SpanTold(span), L"") << span;
}

TEST(CheckSimSpanRange, IsNoOther) {
  for (const double span : {-0.2, -1e-9, 0.1, 0.19, 0.199, 1.99, 0.3, 0.5, 0.7, 0.9, 1.1, 1.3, 1.5, 1.7, 1.9,
                            2.01, 2.2, 1e300, kInfinity})
    EXPECT_EQ(SpanTold(span), L"Sim with Span value must be either No Span, 0.2, 0.4, 0.6, 0.8, or 1.0.")
        << span;
}

// ---- CheckMZCalPts -------------------------------------------------------------------------

std::wstring CalibrationTold(const std::vector<MZCalPt>& points) {
  return Told(Unmarked(), [&](const DevTuneRules& r) { return r.CheckMZCalPts(points); });
}

constexpr const wchar_t* kTooFew = L"There must be at least two m/z calibration points.";
std::wstring NotRising(int point) {
  return L"m/z calibration point " + std::to_wstring(point) +
         L" is invalid.  m/z and mass DAC values must be greater than previous m/z calibration point.";
}

TEST(CheckMZCalPts, WantsTwo) {
  EXPECT_EQ(CalibrationTold({}), kTooFew);
  EXPECT_EQ(CalibrationTold({{L"", 1, 1}}), kTooFew);
  EXPECT_EQ(CalibrationTold({{L"", 5, 0}, {L"", 3000, 65535}}), L"");
}

TEST(CheckMZCalPts, TakesAnyOrder) {
  EXPECT_EQ(CalibrationTold({{L"", 3000, 60000}, {L"", 5, 100}, {L"", 1000, 20000}}), L"");
}

TEST(CheckMZCalPts, RiseInMz) {
  EXPECT_EQ(CalibrationTold({{L"", 500, 100}, {L"", 500, 200}}), NotRising(1));
  EXPECT_EQ(CalibrationTold({{L"", 5, 1}, {L"", 9, 5}, {L"", 500, 100}, {L"", 500, 200}}), NotRising(3));
}

TEST(CheckMZCalPts, RiseInMassDAC) {
  EXPECT_EQ(CalibrationTold({{L"", 5, 100}, {L"", 6, 100}}), NotRising(1));
  EXPECT_EQ(CalibrationTold({{L"", 5, 100}, {L"", 6, 200}, {L"", 7, 199}}), NotRising(2));
  EXPECT_EQ(CalibrationTold({{L"", 7, 199}, {L"", 6, 200}, {L"", 5, 100}}), NotRising(2)) << "counted by m/z";
}

TEST(CheckMZCalPts, KeepTheLimits) {
  const std::wstring badMz = L" is invalid.  m/z is out of range.  Valid values are 5.00 to 3000.00.";
  const std::wstring badDac = L" is invalid.  Mass DAC is out of range.  Valid values are 0.00 to 65535.00.";
  EXPECT_EQ(CalibrationTold({{L"", 4.9, 1}, {L"", 6, 2}}), L"m/z calibration point 0" + badMz);
  EXPECT_EQ(CalibrationTold({{L"", 3001, 2}, {L"", 6, 1}}), L"m/z calibration point 1" + badMz);
  EXPECT_EQ(CalibrationTold({{L"", 6, -1}, {L"", 7, 2}}), L"m/z calibration point 0" + badDac);
  EXPECT_EQ(CalibrationTold({{L"", 6, 1}, {L"", 7, 65536}}), L"m/z calibration point 1" + badDac);
  EXPECT_EQ(CalibrationTold({{L"", 4, -1}, {L"", 7, 2}}), L"m/z calibration point 0" + badMz);
}

TEST(CheckMZCalPts, TellsOfTheLimitsOfAPointBeforeItsOrder) {
  EXPECT_EQ(CalibrationTold({{L"", 6, 1}, {L"", 7, -1}}),
            L"m/z calibration point 1 is invalid.  Mass DAC is out of range.  Valid values are 0.00 to "
            L"65535.00.");
}

TEST(CheckMZCalPts, TellsOfOnePointAfterTheOther) {
  EXPECT_EQ(CalibrationTold({{L"", 6, 2}, {L"", 7, 1}, {L"", 3001, 3}}), NotRising(1));
  EXPECT_EQ(CalibrationTold({{L"", 6, 1}, {L"", 7, 65536}, {L"", 7, 3}}),
            L"m/z calibration point 1 is invalid.  Mass DAC is out of range.  Valid values are 0.00 to "
            L"65535.00.");
}

TEST(CheckMZCalPts, ThatAreNoNumbersDoNotRise) {
  EXPECT_EQ(CalibrationTold({{L"", kNaN, 1}, {L"", 7, 2}}), NotRising(1));
  EXPECT_EQ(CalibrationTold({{L"", 6, kNaN}, {L"", 7, 2}}), NotRising(1));
}

TEST(CheckMZCalPts, OfManyThatAreNoNumbersDoNoHarm) {
  std::vector<MZCalPt> points;
  for (int i = 0; i < 500; ++i) points.emplace_back(L"", i % 3 == 0 ? kNaN : 3000.0 - i, i);
  EXPECT_NE(CalibrationTold(points), L"");
}

// ---- CheckCapExitSkimmer -------------------------------------------------------------------

Tune Voltages(double capExit, double skimmer) {
  Tune tune;
  tune.ControlData.MZLow = 100;
  tune.ControlData.MZHi = 1000;
  tune.ControlData.CapExit = SingleLens(capExit);
  tune.ControlData.Skimmer = SingleLens(skimmer);
  return tune;
}

bool FarApart(const Tune& tune) {
  const std::wstring text =
      Told(DevTuneRules(tune), [](const DevTuneRules& r) { return r.CheckCapExitSkimmer(); });
  if (text.empty()) return false;
  EXPECT_EQ(text, L"Capillary Exit and Skimmer can be at most 370 volts apart.");
  return true;
}

TEST(CheckCapExitSkimmer, OfSingleValues) {
  EXPECT_FALSE(FarApart(Voltages(390, 20)));
  EXPECT_TRUE(FarApart(Voltages(390.01, 20)));
  EXPECT_TRUE(FarApart(Voltages(400, 20)));
  EXPECT_TRUE(FarApart(Voltages(300, -71)));
}

TEST(CheckCapExitSkimmer, LetsTheSkimmerStandAboveByAnyAmount) {
  EXPECT_FALSE(FarApart(Voltages(-400, 20)));
  EXPECT_FALSE(FarApart(Voltages(-400, 100)));
}

Tune Curves(double capLow, double capHigh, double skimLow, double skimHigh) {
  Tune tune = Voltages(1000, 0);
  tune.ControlData.CapExit.Type = IOPoint::CalibratedType;
  tune.ControlData.Skimmer.Type = IOPoint::CalibratedType;
  tune.Q1CalPts = {Calibrant(100, {{TuneField::CapExit, capLow}, {TuneField::Skimmer, skimLow}}),
                   Calibrant(1000, {{TuneField::CapExit, capHigh}, {TuneField::Skimmer, skimHigh}})};
  return tune;
}

TEST(CheckCapExitSkimmer, OfCurvesLooksAtBothEndsOfAScan) {
  EXPECT_FALSE(FarApart(Curves(390, 390, 20, 20)));
  EXPECT_TRUE(FarApart(Curves(391, 100, 20, 20)));
  EXPECT_TRUE(FarApart(Curves(100, 391, 20, 20)));
  EXPECT_FALSE(FarApart(Curves(100, 391, 20, 21)));
}

TEST(CheckCapExitSkimmer, OfACurveAndASingleValue) {
  Tune tune = Curves(100, 391, 0, 0);
  tune.ControlData.Skimmer = SingleLens(20);
  EXPECT_TRUE(FarApart(tune));
  tune.ControlData.Skimmer = SingleLens(21);
  EXPECT_FALSE(FarApart(tune));
  tune = Curves(0, 0, 20, 31);
  tune.ControlData.CapExit = SingleLens(391);
  EXPECT_TRUE(FarApart(tune)) << "at the low end";
}

TEST(CheckCapExitSkimmer, OfASimLooksAtItsCentreOnly) {
  Tune tune = Curves(100, 391, 20, 20);
  tune.ControlData.Type = Control::Sim;
  EXPECT_FALSE(FarApart(tune));
  tune.ControlData.MZLow = 1000;
  EXPECT_TRUE(FarApart(tune));
}

TEST(CheckCapExitSkimmer, OfACurveWithoutPointsIsNought) {
  Tune tune = Voltages(1000, -400);
  tune.ControlData.CapExit.Type = IOPoint::CalibratedType;
  tune.ControlData.Skimmer.Single = -370;
  EXPECT_FALSE(FarApart(tune));
  tune.ControlData.Skimmer.Single = -370.5;
  EXPECT_TRUE(FarApart(tune));
}

TEST(CheckCapExitSkimmer, TakesAnyOtherTypeForACurve) {
  Tune tune = Voltages(1000, 0);
  tune.ControlData.CapExit.Type = IOPoint::FunctionType;
  EXPECT_FALSE(FarApart(tune));
}

// The curve is cut to the limits of its field.
TEST(CheckCapExitSkimmer, OfACurveBeyondTheLimitsTakesTheLimit) {
  Tune tune = Curves(1000, 1000, 0, 0);
  tune.ControlData.Skimmer = SingleLens(30);
  EXPECT_FALSE(FarApart(tune));
  tune.ControlData.Skimmer = SingleLens(29.9);
  EXPECT_TRUE(FarApart(tune));
}

TEST(CheckCapExitSkimmer, ThrowsWhereACurveHasTwoValues) {
  Tune tune = Curves(1, 2, 3, 4);
  tune.Q1CalPts[1].MZ = 100;
  EXPECT_THROW(DevTuneRules(tune).CheckCapExitSkimmer(), std::runtime_error);
}

}  // namespace
