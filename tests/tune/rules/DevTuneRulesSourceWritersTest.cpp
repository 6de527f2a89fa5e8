// Tests: DevTuneRulesWriters.cpp.

#include <vector>

#include <tune/rules/Rules.h>

namespace {

using namespace tests;

// ---- Voltages that follow the sign of the ions -------------------------------------------

DevTuneRules Apci(PolarityTypes polarity) {
  DevTuneRules rules = Unmarked(Probes::APCI);
  rules.WPolarityType(polarity);
  rules.ClearModified();
  return rules;
}

TEST(ApciVoltages, OfEndPlateAndEntranceNeverTakeTheSignOfTheIons) {
  for (const auto write : {&DevTuneRules::WEndPlate, &DevTuneRules::WCapEnter}) {
    EXPECT_EQ((Apci(PolarityPositive).*write)(1), kError);
    EXPECT_EQ((Apci(PolarityPositive).*write)(-1), kNoError);
    EXPECT_EQ((Apci(PolarityNegative).*write)(-1), kError);
    EXPECT_EQ((Apci(PolarityNegative).*write)(1), kNoError);
  }
}

TEST(ApciVoltages, OfTheCoronaTakeTheSignOfTheIons) {
  EXPECT_EQ(Apci(PolarityPositive).WCoronaVoltage(-1), kError);
  EXPECT_EQ(Apci(PolarityPositive).WCoronaVoltage(1), kNoError);
  EXPECT_EQ(Apci(PolarityNegative).WCoronaVoltage(1), kError);
  EXPECT_EQ(Apci(PolarityNegative).WCoronaVoltage(-1), kNoError);
}

TEST(ApciVoltages, OfTheWrongSignAreToldTheRangeOfThePolarity) {
  ExpectRefused(
      Apci(PolarityPositive), [](DevTuneRules& r) { return r.WEndPlate(1); },
      L"Endplate is out of range.  Valid values are -5000.00 to 0.00.");
  ExpectRefused(
      Apci(PolarityNegative), [](DevTuneRules& r) { return r.WCapEnter(-1); },
      L"Capillary Entrance is out of range.  Valid values are 0.00 to 5000.00.");
  ExpectRefused(
      Apci(PolarityNegative), [](DevTuneRules& r) { return r.WCoronaVoltage(1); },
      L"Corona Voltage is out of range.  Valid values are -6000.00 to 0.00.");
}

TEST(EsiVoltages, MayHaveEitherSign) {
  for (const PolarityTypes polarity : {PolarityPositive, PolarityNegative}) {
    DevTuneRules rules = Unmarked();
    rules.WPolarityType(polarity);
    for (const auto write : {&DevTuneRules::WEndPlate, &DevTuneRules::WCapEnter, &DevTuneRules::WCylinder}) {
      EXPECT_EQ((rules.*write)(1), kNoError);
      EXPECT_EQ((rules.*write)(-1), kNoError);
    }
  }
}

// ---- APCI settings that pull on one another ----------------------------------------------

Tune ApciTune(std::uint32_t vapTemp, std::uint32_t auxGas, bool nebGas) {
  Tune tune = Unmarked(Probes::APCI);
  tune.Source.ApciVapTemp = vapTemp;
  tune.Source.Neb1GasPres = auxGas;
  tune.Source.CalValveOn = nebGas;
  return tune;
}

void ExpectVapTemp(const Tune& before, std::uint32_t degrees, const Tune& after) {
  ExpectAccepted(
      DevTuneRules(before), [=](DevTuneRules& r) { return r.WApciVapTemp(degrees); }, after);
}

TEST(ApciVapTemp, IsOffOrHigh) {
  for (const std::uint32_t degrees : {25u, 150u, 151u, 350u})
    ExpectVapTemp(ApciTune(300, 20, true), degrees, ApciTune(degrees, 20, true));
}

TEST(ApciVapTemp, IsNeverInBetween) {
  for (const std::uint32_t degrees : {26u, 27u, 100u, 148u, 149u})
    ExpectRefused(
        DevTuneRules(ApciTune(300, 20, true)), [=](DevTuneRules& r) { return r.WApciVapTemp(degrees); },
        L"APCI Vaporizer Temperature must be 25 or greater than 149");
}

TEST(ApciVapTemp, AboveItsLowestTurnsTheNebulizingGasOn) {
  ExpectVapTemp(ApciTune(25, 20, false), 150, ApciTune(150, 20, true));
}

TEST(ApciVapTemp, AboveItsLowestNeedsAuxGas) {
  ExpectVapTemp(ApciTune(25, 0, false), 150, ApciTune(150, 25, true));
  ExpectVapTemp(ApciTune(25, 14, true), 350, ApciTune(350, 25, true));
  ExpectVapTemp(ApciTune(25, 15, true), 350, ApciTune(350, 15, true));
}

TEST(ApciVapTemp, AtItsLowestLeavesTheGases) {
  ExpectVapTemp(ApciTune(150, 0, false), 25, ApciTune(25, 0, false));
  ExpectVapTemp(ApciTune(150, 20, true), 25, ApciTune(25, 20, true));
}

TEST(ApciVapTemp, ThatIsTheSameLeavesTheGases) {
  ExpectVapTemp(ApciTune(150, 0, false), 150, ApciTune(150, 0, false));
}

TEST(ApciVapTemp, OfAnEsiTuneHasNoLimits) {
  ExpectRefused(
      Unmarked(), [](DevTuneRules& r) { return r.WApciVapTemp(25); },
      L"APCI Vaporizer Temp. is out of range.  Valid values are 0.00 to 0.00.");
}

TEST(ApciAuxGas, IsOffOrEnough) {
  for (const std::uint32_t pressure : {0u, 15u, 16u, 60u})
    ExpectAccepted(
        DevTuneRules(ApciTune(150, 20, true)), [=](DevTuneRules& r) { return r.WApciAuxGas(pressure); },
        ApciTune(150, pressure, true));
}

TEST(ApciAuxGas, IsNeverALittle) {
  for (const std::uint32_t pressure : {1u, 2u, 13u, 14u})
    ExpectRefused(
        DevTuneRules(ApciTune(150, 20, true)), [=](DevTuneRules& r) { return r.WApciAuxGas(pressure); },
        L"APCI Aux Gas Pressure must be 0 or greater than 14");
}

void ExpectNebGas(const Tune& before, bool on, const Tune& after) {
  ExpectAccepted(
      DevTuneRules(before), [=](DevTuneRules& r) { return r.WApciNebGas(on); }, after);
}

TEST(ApciNebGas, TurnedOffCoolsTheVaporizer) {
  ExpectNebGas(ApciTune(300, 20, true), false, ApciTune(25, 20, false));
}

TEST(ApciNebGas, TurnedOnLeavesTheVaporizer) {
  ExpectNebGas(ApciTune(300, 20, false), true, ApciTune(300, 20, true));
}

TEST(ApciNebGas, ThatIsOffAlreadyLeavesTheVaporizer) {
  ExpectNebGas(ApciTune(300, 20, false), false, ApciTune(300, 20, false));
}

// Without limits of its own the vaporizer of an ESI source falls to nothing.
TEST(ApciNebGas, OfAnEsiTuneTurnedOffHasNoVaporizer) {
  Tune before = Unmarked();
  before.Source.CalValveOn = true;
  before.Source.ApciVapTemp = 100;
  Tune after = Unmarked();
  ASSERT_EQ(after.Source.ApciVapTemp, 0u);
  after.Info = before.Info;
  ExpectNebGas(before, false, after);
}

TEST(CalValve, TurnedOffLeavesTheVaporizer) {
  ExpectAccepted(
      DevTuneRules(ApciTune(300, 20, true)), [](DevTuneRules& r) { return r.WCalValveOn(false); },
      ApciTune(300, 20, false));
}

TEST(Neb1GasPres, OfAnEsiTuneMayBeALittle) { EXPECT_EQ(Unmarked().WNeb1GasPres(7), kNoError); }

// ---- The probe -----------------------------------------------------------------------------

TEST(IonSourceType, BringsTheDefaultsOfTheProbe) {
  for (const Probes::ProbeTypes from : kProbes) {
    for (const Probes::ProbeTypes to : kProbes) {
      if (from == to) continue;
      SCOPED_TRACE(std::to_string(from) + " to " + std::to_string(to));
      Tune before = SampleTune(from);
      before.ControlData.PolarityType = PolarityPositive;
      Tune after = before;
      after.Source = Unmarked(to).Source;
      ExpectAccepted(
          DevTuneRules(before), [=](DevTuneRules& r) { return r.WIonSourceType(to); }, after);
    }
  }
}

TEST(IonSourceType, BringsVoltagesForThePolarity) {
  Tune before = SampleTune(Probes::ESI);
  before.ControlData.PolarityType = PolarityNegative;
  Tune after = before;
  after.Source = Unmarked(Probes::APCI).Source;
  after.Source.Cylinder = 0;
  after.Source.EndPlate = 2000;
  after.Source.CapEnter = 3000;
  ExpectAccepted(
      DevTuneRules(before), [](DevTuneRules& r) { return r.WIonSourceType(Probes::APCI); }, after);

  before.Source.Type = Probes::APCI;
  after.Source = Unmarked(Probes::ESI).Source;
  after.Source.Cylinder = 3500;
  after.Source.EndPlate = 5000;
  after.Source.CapEnter = 6000;
  ExpectAccepted(
      DevTuneRules(before), [](DevTuneRules& r) { return r.WIonSourceType(Probes::ESI); }, after);
}

TEST(IonSourceType, ThatIsTheSameKeepsTheSource) {
  ExpectAccepted(
      DevTuneRules(SampleTune(Probes::APCI)), [](DevTuneRules& r) { return r.WIonSourceType(Probes::APCI); },
      SampleTune(Probes::APCI));
}

TEST(IonSourceType, MayBeAnyThatPinsCanTell) {
  DevTuneRules rules = Unmarked();
  EXPECT_EQ(rules.WIonSourceType(static_cast<Probes::ProbeTypes>(7)), kNoError);
  EXPECT_EQ(rules.QIonSourceType(), 7u);
  EXPECT_EQ(rules.QEndPlate(), -5000) << "an ESI kind";
  ExpectRefused(
      Unmarked(), [](DevTuneRules& r) { return r.WIonSourceType(static_cast<Probes::ProbeTypes>(8)); },
      L"Ion Source Type is out of range.  Valid values are 0.00 to 7.00.");
}

}  // namespace
