// Tests: DevTuneRules.cpp, DevTuneRulesWriters.cpp, TurnVoltages.cpp.

#include <tslbl/tune/MZConvert.h>
#include <tslbl/tune/Q1FieldConvert.h>
#include <cmath>
#include <functional>
#include <random>
#include <vector>

#include <tune/rules/Rules.h>

// What holds whatever the tune. Every random value has up to six digits, as a document keeps
// them.

namespace {

using namespace tests;

constexpr unsigned kSeed = 20240607;
constexpr int kRounds = 400;

using R = DevTuneRules;
using C = Control;

struct LensField {
  TuneField::Id id;
  IOPoint Control::*lens;
  ErrTypes (DevTuneRules::*write)(const IOPoint&);
};
constexpr LensField kLenses[] = {
    {TuneField::CapExit, &C::CapExit, &R::WCapExit},
    {TuneField::Skimmer, &C::Skimmer, &R::WSkimmer},
    {TuneField::Q0RFAmpl, &C::Q0RFAmpl, &R::WQ0RFAmpl},
    {TuneField::Q0Offset, &C::Q0Offset, &R::WQ0Offset},
    {TuneField::Q0Exit1, &C::Q0Exit1, &R::WQ0Exit1},
    {TuneField::Q0Exit2, &C::Q0Exit2, &R::WQ0Exit2},
    {TuneField::Q1Resolution, &C::Q1Resolution, &R::WQ1Resolution},
    {TuneField::Q1CoarseResolution, &C::Q1CoarseResolution, &R::WQ1CoarseResolution},
    {TuneField::Q1Offset, &C::Q1Offset, &R::WQ1Offset},
    {TuneField::Q1IonGuide, &C::Q1IonGuide, &R::WQ1IonGuide},
};

class Random {
 public:
  explicit Random(unsigned seed) : engine_(seed) {}

  int Whole(int low, int high) { return std::uniform_int_distribution<int>(low, high)(engine_); }
  std::uint32_t Count(int low, int high) { return static_cast<std::uint32_t>(Whole(low, high)); }
  bool Flip() { return Whole(0, 1) == 1; }
  double Tenths(int low, int high) { return Whole(low * 10, high * 10) / 10.0; }
  // Within the limits of a field.
  double Of(Probes::ProbeTypes probe, TuneField::Id field) {
    const Limits limits = FieldLimits().QLimits(probe, static_cast<int>(field));
    return Tenths(static_cast<int>(std::ceil(limits.Min)), static_cast<int>(limits.Max));
  }
  template <class T>
  T Of(Probes::ProbeTypes probe, TuneField::Id field) {
    return static_cast<T>(Of(probe, field));
  }
  Probes::ProbeTypes Probe() { return kProbes[Count(0, 2)]; }

 private:
  std::mt19937 engine_;
};

IonSource RandomSource(Random& random, Probes::ProbeTypes probe) {
  const bool apci = probe == Probes::APCI;
  IonSource source;
  source.Type = probe;
  source.EndPlate = random.Of<std::int32_t>(probe, TuneField::EndPlate);
  const int farthest = apci ? 5000 : 6000;
  source.CapEnter =
      random.Whole(std::max(-farthest, source.EndPlate - 1000), std::min(farthest, source.EndPlate + 1000));
  source.Cylinder =
      random.Whole(std::max(-6000, source.EndPlate - 6000), std::min(6000, source.EndPlate + 6000));
  source.EndPlateTemp = random.Of<IonSource::TempLevels>(probe, TuneField::EndPlateTemp);
  source.DryGasTemp = random.Of<std::uint32_t>(probe, TuneField::DryGasTemp);
  source.ApciVapTemp = random.Of<std::uint32_t>(probe, TuneField::ApciVapTemp);
  source.DryGasFlow = random.Of(probe, TuneField::DryGasFlow);
  source.Neb1GasPres = random.Of<std::uint32_t>(probe, apci ? TuneField::ApciAuxGas : TuneField::Neb1GasPres);
  source.Neb2GasOn = random.Flip();
  source.CalValve2On = random.Flip();
  source.CalSample1On = random.Flip();
  source.CalSample2On = random.Flip();
  source.CalValveOn = random.Flip();
  source.ControlByCurrent = !apci || random.Flip();  // a document keeps both for APCI only
  source.CoronaCurrent = apci ? random.Of(probe, TuneField::CoronaCurrent) : 1.0;
  return source;
}

void SetRange(Random& random, Control& control) {
  control.Type = random.Flip() ? Control::Sim : Control::Scan;
  control.MZLow = random.Tenths(5, 2000);
  if (control.Type == Control::Sim)
    control.MZHi = random.Whole(0, 10) / 5.0;
  else
    control.MZHi = control.MZLow + random.Whole(1, 900);
  control.MZStepSize = random.Whole(1, 20) / 20.0;
}

Control RandomControl(Random& random) {
  constexpr Probes::ProbeTypes kAny = Probes::ESI;
  Control control;
  SetRange(random, control);
  control.PolarityType = random.Flip() ? PolarityNegative : PolarityPositive;
  control.InitSettleDelay = random.Of<std::uint32_t>(kAny, TuneField::InitSettleDelay) / 2;
  control.StepSettleDelay = random.Of<std::uint32_t>(kAny, TuneField::StepSettleDelay);
  control.PulseCountDelay = random.Count(25, 2000);
  control.ScansPerSpec = random.Count(1, 20);
  for (const LensField& field : kLenses) control.*field.lens = SingleLens(random.Of(kAny, field.id));
  control.CapExit.Single = random.Tenths(-400, 270);
  control.HEDynode = random.Whole(-9000, 9000);
  control.DetectorGain = random.Of<std::int32_t>(kAny, TuneField::DetectorGain);
  control.SignalThreshold = random.Of<std::uint32_t>(kAny, TuneField::SignalThreshold);
  control.Q1MZType = random.Flip() ? Control::RF_Only : Control::RF_DC;
  control.Q1PolePolarity = random.Flip();
  return control;
}

std::vector<Q1CalPt> RandomCalibrants(Random& random) {
  std::vector<Q1CalPt> points;
  for (int i = random.Whole(0, 6); i > 0; --i) {
    points.emplace_back(500 * i + random.Tenths(-100, 0), L"point " + std::to_wstring(i));
    for (const LensField& field : kLenses)
      if (random.Flip()) points.back().Fields[field.id] = random.Of(Probes::ESI, field.id);
  }
  return points;
}

// Good for Validate, now and then of lenses that follow m/z.
Tune RandomTune(Random& random) {
  Tune tune;
  tune.Info = SampleTuneInfo();
  tune.Source = RandomSource(random, random.Probe());
  tune.ControlData = RandomControl(random);
  tune.SyringeData = SampleSyringe();
  tune.MZCalPts = {{L"high", random.Tenths(2000, 3000), static_cast<double>(random.Whole(40000, 65535))},
                   {L"low", random.Tenths(5, 1000), static_cast<double>(random.Whole(0, 20000))}};
  tune.Q1CalPts = RandomCalibrants(random);
  if (random.Flip()) tune.ControlData.Q0Exit1 = LensOf(IOPoint::CalibratedType);
  return tune;
}

TEST(AnyTune, TurnedTwiceIsAsItWas) {
  SCOPED_TRACE(kSeed);
  Random random(kSeed);
  for (int round = 0; round < kRounds; ++round) {
    Tune tune = RandomTune(random);
    tune.ControlData.Skimmer = SampleIOPoint();
    DevTuneRules rules(tune);
    const PolarityTypes first = rules.QPolarityType();
    const PolarityTypes second = first == PolarityPositive ? PolarityNegative : PolarityPositive;
    EXPECT_EQ(rules.WPolarityType(second), kNoError);
    ASSERT_NE(TuneBytes(rules), TuneBytes(tune));
    EXPECT_EQ(rules.WPolarityType(first), kNoError);
    ASSERT_EQ(TuneBytes(rules), TuneBytes(tune)) << round;
  }
}

TEST(AnyTune, ThatIsAcceptedIsAcceptedForTheOtherPolarity) {
  Random random(kSeed + 1);
  int accepted = 0;
  for (int round = 0; round < kRounds; ++round) {
    Tune tune = RandomTune(random);
    tune.ControlData.CapExit.Single = random.Tenths(-150, 150);  // near the skimmer either way
    DevTuneRules rules(tune);
    if (rules.Validate() != kNoError) continue;
    ++accepted;
    rules.WPolarityType(rules.QPolarityType() == PolarityPositive ? PolarityNegative : PolarityPositive);
    EXPECT_EQ(rules.Validate(), kNoError) << round << " " << testing::PrintToString(LastErrorOf(rules));
  }
  EXPECT_GT(accepted, kRounds / 3);
}

TEST(AnyTune, ThatIsAcceptedSurvivesBothFormsAndIsAcceptedAgain) {
  SCOPED_TRACE(kSeed + 2);
  Random random(kSeed + 2);
  int accepted = 0;
  for (int round = 0; round < kRounds; ++round) {
    const Tune tune = RandomTune(random);
    if (DevTuneRules(tune).Validate() != kNoError) continue;
    ++accepted;
    const Tune binary = FromBytes<Tune>(TuneBytes(tune));
    EXPECT_EQ(TuneBytes(binary), TuneBytes(tune));
    EXPECT_EQ(DevTuneRules(binary).Validate(), kNoError);
    const Tune document = FromXml<Tune>(ToXml(tune));
    EXPECT_EQ(TuneBytes(document), TuneBytes(tune)) << round;
    EXPECT_EQ(DevTuneRules(document).Validate(), kNoError);
  }
  EXPECT_GT(accepted, kRounds / 3);
}

TEST(AnyTune, ThatIsAcceptedHasASettlingDelay) {
  Random random(kSeed + 3);
  for (int round = 0; round < kRounds; ++round) {
    DevTuneRules rules(RandomTune(random));
    rules.CalculateInitialSettlingDelay();
    EXPECT_FALSE(rules.CalculateInitialSettlingDelay());
    EXPECT_LE(rules.QInitSettleDelay(), 5000u) << "the whole range takes less, the lens no more";
  }
}

TEST(AnyCurve, GoesThroughItsPoints) {
  SCOPED_TRACE(kSeed + 4);
  Random random(kSeed + 4);
  for (int round = 0; round < kRounds; ++round) {
    const std::vector<Q1CalPt> points = RandomCalibrants(random);
    for (const LensField& field : kLenses) {
      if (!TuneField::IsFieldSteppable(field.id)) continue;
      const Q1FieldConvert curve(points, field.id);
      for (const Q1CalPt& point : points) {
        const auto entry = point.Fields.find(field.id);
        if (entry == point.Fields.end()) continue;
        EXPECT_NEAR(curve.MZToFieldVal(point.MZ), entry->second, 1e-9) << round << " " << field.id;
      }
    }
  }
}

TEST(AnyCalibration, GoesThroughItsPoints) {
  Random random(kSeed + 5);
  for (int round = 0; round < kRounds; ++round) {
    const Tune tune = RandomTune(random);
    const MZConvert convert(tune.MZCalPts);
    for (const MZCalPt& point : tune.MZCalPts)
      EXPECT_NEAR(convert.MZToDAC(point.MZ), point.MassDAC, 1e-6) << round;
  }
}

// ---- Any sequence of writers -----------------------------------------------------------------

using Edit = std::function<ErrTypes(DevTuneRules&, Random&)>;

template <class Value>
Edit Number(ErrTypes (DevTuneRules::*write)(Value), int low, int high) {
  return [=](DevTuneRules& rules, Random& random) {
    return (rules.*write)(static_cast<Value>(random.Tenths(low, high)));
  };
}

Edit LensEdit(const LensField& field) {
  return [=](DevTuneRules& rules, Random& random) {
    IOPoint point = rules.ControlData.*field.lens;
    point.Type = static_cast<IOPoint::Types>(random.Whole(0, 3));
    point.Single = random.Tenths(-900, 900);
    return (rules.*field.write)(point);
  };
}
Edit CurveEdit(const LensField& field) {
  return [=](DevTuneRules& rules, Random& random) {
    return rules.WRampResults(field.id, random.Tenths(-900, 900),
                              {{random.Tenths(0, 3100), random.Tenths(-900, 900)}});
  };
}

std::vector<Edit> Edits() {
  std::vector<Edit> edits = {
      Number(&R::WCylinder, -7000, 7000),
      Number(&R::WCoronaVoltage, -7000, 7000),
      Number(&R::WEndPlate, -7000, 7000),
      Number(&R::WCapEnter, -7000, 7000),
      Number(&R::WEndPlateTemp, 0, 5),
      Number(&R::WDryGasTemp, 0, 400),
      Number(&R::WApciVapTemp, 0, 400),
      Number(&R::WDryGasFlow, 0, 17),
      Number(&R::WNeb1GasPres, 0, 120),
      Number(&R::WApciAuxGas, 0, 70),
      Number(&R::WCoronaCurrent, -1, 22),
      Number(&R::WMZLow, 0, 3500),
      Number(&R::WMZHi, 0, 3500),
      Number(&R::WSimWithSpan, 0, 12),
      Number(&R::WMZStepSize, 0, 3000),
      Number(&R::WSamplesPerMass, 0, 25),
      Number(&R::WInitSettleDelay, 0, 6000000),
      Number(&R::WStepSettleDelay, 0, 5000),
      Number(&R::WPulseCountDelay, 0, 40),
      Number(&R::WScansPerSpec, 0, 70000),
      Number(&R::WHEDynode, -11000, 11000),
      Number(&R::WDetectorGain, -3200, 200),
      Number(&R::WSignalThreshold, 0, 300),
      Number(&R::WQ1MZType, 0, 3),
      Number(&R::WPolarityType, 0, 3),
      Number(&R::WIonSourceType, 0, 2),
      [](DevTuneRules& r, Random& random) { return r.WApciNebGas(random.Flip()); },
      [](DevTuneRules& r, Random& random) {
        return r.WMZRange(random.Tenths(0, 3500), random.Tenths(0, 3500));
      },
      [](DevTuneRules& r, Random& random) { return r.AddQ1CalPt(random.Tenths(0, 3100), L""); },
      [](DevTuneRules& r, Random& random) {
        const double mz = r.Q1CalPts.empty() ? 0 : r.Q1CalPts[0].MZ;
        return r.ChangeQ1CalPtMZ(mz, random.Tenths(0, 3100));
      },
  };
  for (const LensField& field : kLenses) {
    edits.push_back(LensEdit(field));
    edits.push_back(CurveEdit(field));
  }
  return edits;
}

bool Within(const Tune& tune, TuneField::Id field, double value) {
  const Limits limits = FieldLimits().QLimits(tune.Source.Type, static_cast<int>(field));
  return limits.Min <= value && value <= limits.Max;
}

bool SourceWithin(const Tune& t) {
  const bool apci = t.Source.Type == Probes::APCI;
  return Within(t, apci ? TuneField::CoronaVoltage : TuneField::Cylinder, t.Source.Cylinder) &&
         Within(t, apci ? TuneField::ApciAuxGas : TuneField::Neb1GasPres, t.Source.Neb1GasPres) &&
         Within(t, TuneField::CoronaCurrent, t.Source.CoronaCurrent) &&
         Within(t, TuneField::ApciVapTemp, t.Source.ApciVapTemp) &&
         Within(t, TuneField::EndPlate, t.Source.EndPlate) &&
         Within(t, TuneField::CapEnter, t.Source.CapEnter) &&
         Within(t, TuneField::EndPlateTemp, t.Source.EndPlateTemp) &&
         Within(t, TuneField::DryGasTemp, t.Source.DryGasTemp) &&
         Within(t, TuneField::DryGasFlow, t.Source.DryGasFlow) &&
         (!apci || t.Source.ApciVapTemp <= 25 || t.Source.ApciVapTemp >= 150) &&
         (!apci || t.Source.Neb1GasPres == 0 || t.Source.Neb1GasPres >= 15);
}

bool AcquisitionWithin(const Tune& t) {
  const Control& c = t.ControlData;
  const bool scan = c.Type == Control::Scan;
  return Within(t, TuneField::MZLow, c.MZLow) && Within(t, TuneField::MZStepSize, c.MZStepSize) &&
         (scan ? Within(t, TuneField::MZHi, c.MZHi) : c.MZHi == 0.0 || t.IsSimWithSpan()) &&
         Within(t, scan ? TuneField::PulseCountDelayScan : TuneField::PulseCountDelaySim,
                c.PulseCountDelay) &&
         Within(t, TuneField::InitSettleDelay, c.InitSettleDelay) &&
         Within(t, TuneField::StepSettleDelay, c.StepSettleDelay) &&
         Within(t, TuneField::ScansPerSpec, c.ScansPerSpec) &&
         Within(t, TuneField::PolarityType, c.PolarityType) && Within(t, TuneField::Q1MZType, c.Q1MZType) &&
         Within(t, TuneField::HEDynode, c.HEDynode) && Within(t, TuneField::DetectorGain, c.DetectorGain) &&
         Within(t, TuneField::SignalThreshold, c.SignalThreshold);
}

// The single value of a lens that follows m/z counts for nothing.
bool LensesWithin(const Tune& t) {
  for (const LensField& field : kLenses) {
    const IOPoint& lens = t.ControlData.*field.lens;
    if (!Within(t, TuneField::IOPointType, lens.Type)) return false;
    if (lens.Type == IOPoint::SingleType && !Within(t, field.id, lens.Single)) return false;
  }
  return true;
}

bool CalibrantsWithin(const Tune& t) {
  for (const Q1CalPt& point : t.Q1CalPts) {
    if (!Within(t, TuneField::MZ, point.MZ)) return false;
    for (const auto& [field, value] : point.Fields)
      if (!Within(t, field, value)) return false;
  }
  return true;
}

TEST(AnySequenceOfWriters, KeepsEveryFieldWithinItsLimits) {
  SCOPED_TRACE(kSeed + 6);
  Random random(kSeed + 6);
  const std::vector<Edit> edits = Edits();
  std::vector<int> accepted(edits.size());
  std::vector<int> refused(edits.size());
  for (int round = 0; round < kRounds; ++round) {
    DevTuneRules rules = Unmarked(random.Probe());
    if (random.Flip()) {
      rules.WControlType(Control::Sim);
      rules.WSimWithSpan(Control::Span0_4);
    }
    for (int step = 0; step < 100; ++step) {
      const std::size_t edit = random.Count(0, static_cast<int>(edits.size()) - 1);
      const std::string before = TuneBytes(rules);
      ++(edits[edit](rules, random) == kError ? refused : accepted)[edit];
      ASSERT_TRUE(SourceWithin(rules)) << "edit " << edit;
      ASSERT_TRUE(AcquisitionWithin(rules)) << "edit " << edit;
      ASSERT_TRUE(LensesWithin(rules)) << "edit " << edit;
      ASSERT_TRUE(CalibrantsWithin(rules)) << "edit " << edit;
      ASSERT_TRUE(rules.IsModified() || rules.Q1CalPts.size() > 0 || TuneBytes(rules) == before);
    }
  }
  for (std::size_t i = 0; i < edits.size(); ++i) EXPECT_GT(accepted[i], 0) << "edit " << i;
}

}  // namespace
