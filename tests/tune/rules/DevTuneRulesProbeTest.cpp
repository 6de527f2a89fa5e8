// Tests: DevTuneRulesValidate.cpp.

#include <tune/rules/Rules.h>

namespace {

using namespace tests;

std::wstring Compatibility(DevTuneRules rules, Probes::ProbeTypes probe) {
  const std::string before = TuneBytes(rules);
  const ErrTypes result = rules.IsProbeCompatible(probe);
  EXPECT_EQ(TuneBytes(rules), before);
  const std::wstring text = LastErrorOf(rules);
  EXPECT_EQ(result, text.empty() ? kNoError : kError);
  return text;
}

TEST(IsProbeCompatible, WithTheProbeOfTheTune) {
  for (const Probes::ProbeTypes probe : kProbes) EXPECT_EQ(Compatibility(Unmarked(probe), probe), L"");
}

TEST(IsProbeCompatible, WithNoOtherProbe) {
  const std::pair<Probes::ProbeTypes, Probes::ProbeTypes> pairs[] = {{Probes::ESI, Probes::APCI},
                                                                     {Probes::APCI, Probes::ESI},
                                                                     {Probes::ESI, Probes::LowFlowESI},
                                                                     {Probes::LowFlowESI, Probes::ESI},
                                                                     {Probes::APCI, Probes::LowFlowESI}};
  for (const auto& [tune, probe] : pairs)
    EXPECT_EQ(Compatibility(Unmarked(tune), probe),
              L"Tune ion source does not match probe [ " + Probes::GetName(probe) + L" ].");
  EXPECT_EQ(Compatibility(Unmarked(Probes::ESI), Probes::APCI),
            L"Tune ion source does not match probe [ APCI (1) ].");
}

TEST(IsProbeCompatible, WithNoProbeThatCannotBeUsed) {
  const auto unknown = static_cast<Probes::ProbeTypes>(5);
  ASSERT_FALSE(Probes::IsUsable(unknown));
  EXPECT_EQ(Compatibility(Unmarked(), unknown),
            L"Source type [" + Probes::GetName(unknown) + L"] does not match tune");
}

TEST(IsProbeCompatible, IsToldOfTheProbeThenOfTheTuneThenOfBoth) {
  DevTuneRules rules = Unmarked();
  Tune bad = rules;
  bad.ControlData.DetectorGain = 1;
  const auto unknown = static_cast<Probes::ProbeTypes>(5);
  EXPECT_EQ(Compatibility(DevTuneRules(bad), unknown),
            L"Source type [" + Probes::GetName(unknown) + L"] does not match tune");
  EXPECT_EQ(Compatibility(DevTuneRules(bad), Probes::APCI),
            L"Detector Gain is out of range.  Valid values are -3000.00 to 0.00.");
}

TEST(IsProbeCompatible, NotWithATuneThatIsInvalid) {
  Tune bad = Unmarked();
  bad.MZCalPts.clear();
  EXPECT_EQ(Compatibility(DevTuneRules(bad), Probes::ESI),
            L"There must be at least two m/z calibration points.");
}

}  // namespace
