#include <cmath>
#include <limits>

#include <tune/rules/Rules.h>
#include "tune/BesideLibrary.h"

namespace {

using namespace tests;

constexpr const wchar_t* kCustom = L"CUSTOM - User Entered";
constexpr const wchar_t* kBadDiameter = L"Syringe Diameter is out of range.  Valid values are 0.46 to 10.30.";
constexpr const wchar_t* kBadFlow = L"Syringe Flow Rate is out of range.  Valid values are 0.00 to 999.00.";
constexpr const wchar_t* kInvalidModel = L"Invalid syringe model.";

Syringe Of(const wchar_t* maker, const wchar_t* model, double diameter, std::uint32_t flow) {
  Syringe syringe;
  syringe.Manufacturer = maker;
  syringe.Model.Name = model;
  syringe.Model.Diameter = diameter;
  syringe.FlowRate = flow;
  return syringe;
}

Tune With(const Syringe& syringe) {
  Tune tune = SampleTune();
  tune.SyringeData = syringe;
  return tune;
}

std::wstring SyringeTold(double diameter, std::uint32_t flow) {
  DevTuneRules rules = DevTuneRules(SampleTune());
  const ErrTypes result = rules.CheckSyringe(Of(L"", L"", diameter, flow));
  const std::wstring text = LastErrorOf(rules);
  EXPECT_EQ(result, text.empty() ? kNoError : kError);
  EXPECT_EQ(TuneBytes(rules), TuneBytes(SampleTune()));
  EXPECT_FALSE(rules.IsModified());
  return text;
}

TEST(CheckSyringe, HasADiameterWithinTheLimits) {
  for (const double diameter : {0.46, 1.0, 10.3}) EXPECT_EQ(SyringeTold(diameter, 0), L"") << diameter;
  for (const double diameter : {std::nextafter(0.46, 0.0), 0.0, -1.0, std::nextafter(10.3, 11.0), 1e300,
                                std::numeric_limits<double>::infinity()})
    EXPECT_EQ(SyringeTold(diameter, 0), kBadDiameter) << diameter;
}

// What is no number is not within the limits either.
TEST(CheckSyringe, RefusesADiameterThatIsNoNumber) {
  EXPECT_EQ(SyringeTold(std::numeric_limits<double>::quiet_NaN(), 0), kBadDiameter);
}

TEST(CheckSyringe, HasAFlowWithinTheLimits) {
  for (const std::uint32_t flow : {0u, 1u, 999u}) EXPECT_EQ(SyringeTold(1, flow), L"") << flow;
  for (const std::uint32_t flow : {1000u, 4294967295u}) EXPECT_EQ(SyringeTold(1, flow), kBadFlow) << flow;
}

TEST(CheckSyringe, LooksAtTheDiameterFirst) { EXPECT_EQ(SyringeTold(11, 1000), kBadDiameter); }

// ---- A syringe of the user's own -----------------------------------------------------------

TEST(SyringeCustom, HasADiameterAndNoModel) {
  for (const double diameter : {0.46, 2.3, 10.3})
    ExpectAccepted(
        DevTuneRules(SampleTune()), [=](DevTuneRules& r) { return r.WSyringeCustom(diameter); },
        With(Of(kCustom, L"", diameter, 180)));
}

TEST(SyringeCustom, KeepsTheLimits) {
  for (const double diameter : {0.45, 10.31})
    ExpectRefused(
        DevTuneRules(SampleTune()), [=](DevTuneRules& r) { return r.WSyringeCustom(diameter); },
        kBadDiameter);
}

TEST(SyringeCustom, ThatIsTheSameIsNotChecked) {
  const Tune tune = With(Of(kCustom, L"odd", 99, 5000));
  ExpectAccepted(
      DevTuneRules(tune), [](DevTuneRules& r) { return r.WSyringeCustom(99); }, tune);
}

TEST(SyringeCustom, OfAnotherDiameterLosesItsModel) {
  ExpectAccepted(
      DevTuneRules(With(Of(kCustom, L"odd", 2, 5))), [](DevTuneRules& r) { return r.WSyringeCustom(3); },
      With(Of(kCustom, L"", 3, 5)));
}

TEST(SyringeCustom, IsRefusedForTheFlowOfTheTune) {
  ExpectRefused(
      DevTuneRules(With(Of(L"Hamilton", L"1725", 2.3, 1000))),
      [](DevTuneRules& r) { return r.WSyringeCustom(3); }, kBadFlow);
}

// ---- Flow ----------------------------------------------------------------------------------

TEST(SyringeFlow, KeepsTheLimits) {
  for (const std::uint32_t flow : {0u, 999u})
    ExpectAccepted(
        DevTuneRules(SampleTune()), [=](DevTuneRules& r) { return r.WSyringeFlow(flow); },
        With(Of(L"Hamilton", L"1725", 2.3, flow)));
  ExpectRefused(
      DevTuneRules(SampleTune()), [](DevTuneRules& r) { return r.WSyringeFlow(1000); }, kBadFlow);
}

TEST(SyringeFlow, ThatIsTheSameIsNotChecked) {
  const Tune tune = With(Of(L"", L"", 0, 5000));
  ExpectAccepted(
      DevTuneRules(tune), [](DevTuneRules& r) { return r.WSyringeFlow(5000); }, tune);
}

TEST(SyringeFlow, IsRefusedForTheDiameterOfTheTune) {
  ExpectRefused(
      DevTuneRules(With(Of(L"Hamilton", L"1725", 11, 180))),
      [](DevTuneRules& r) { return r.WSyringeFlow(100); }, kBadDiameter);
}

// ---- The catalogue -------------------------------------------------------------------------

constexpr const char* kCatalogue =
    "<Manufacturers>"
    "<Manufacturer Name=\"Hamilton\"><Models><Model Name=\"1725\" Diameter=\"2.3\"/>"
    "<Model Name=\"1750\" Diameter=\"3.26\"/><Model Name=\"1750\" Diameter=\"4\"/>"
    "<Model Name=\"Drum\" Diameter=\"99\"/></Models></Manufacturer>"
    "<Manufacturer Name=\"SGE\"><Models><Model Name=\"25F\" Diameter=\"1.46\"/></Models></Manufacturer>"
    "<Manufacturer Name=\"SGE\"><Models><Model Name=\"50F\" Diameter=\"5\"/></Models></Manufacturer>"
    "</Manufacturers>";

bool Chosen(const Syringe& before, const wchar_t* maker, const wchar_t* model, const Syringe& after) {
  DevTuneRules rules(With(before));
  return rules.WSyringeModel(maker, model) == kNoError && TuneBytes(rules) == TuneBytes(With(after)) &&
         rules.IsModified() == !(before == after) && LastErrorOf(rules).empty();
}
bool Refused(const wchar_t* maker, const wchar_t* model) {
  DevTuneRules rules(SampleTune());
  return rules.WSyringeModel(maker, model) == kError && TuneBytes(rules) == TuneBytes(SampleTune()) &&
         !rules.IsModified() && LastErrorOf(rules) == kInvalidModel;
}

TEST(SyringeModelOfTheCatalogue, BringsItsDiameterAndKeepsTheFlow) {
  const BesideLibrary site("SyringeList.xml", kCatalogue);
  const auto chosen = [] {
    const Syringe before = Of(kCustom, L"", 1, 5000);
    return Chosen(before, L"Hamilton", L"1750", Of(L"Hamilton", L"1750", 3.26, 5000)) &&
           Chosen(before, L"SGE", L"25F", Of(L"SGE", L"25F", 1.46, 5000)) &&
           Chosen(before, L"Hamilton", L"Drum", Of(L"Hamilton", L"Drum", 99, 5000));  // trusted
  };
  EXPECT_BESIDE_LIBRARY(site, chosen(), "");
}

TEST(SyringeModelOfTheCatalogue, ComparesExactlyAndTakesTheFirstManufacturer) {
  const BesideLibrary site("SyringeList.xml", kCatalogue);
  const auto refused = [] {
    return Refused(L"Hamilton", L"25F") && Refused(L"hamilton", L"1750") && Refused(L"Hamilton", L"1750 ") &&
           Refused(L"SGE", L"50F") && Refused(L"", L"") && Refused(L"Hamilton", L"");
  };
  EXPECT_BESIDE_LIBRARY(site, refused(), "");
}

TEST(SyringeModelOfTheCatalogue, ThatIsTheSameIsNotLookedUp) {
  const BesideLibrary site("SyringeList.xml", kCatalogue);
  const auto kept = [] {
    const Syringe odd = Of(L"Hamilton", L"1725", 77, 180);  // the catalogue has another diameter
    return Chosen(odd, L"Hamilton", L"1725", odd);
  };
  EXPECT_BESIDE_LIBRARY(site, kept(), "");
}

TEST(SyringeModelOfTheCatalogue, WithoutOneIsRefused) {
  const BesideLibrary site;
  const auto refused = [] {
    const Syringe same = SampleSyringe();
    return Refused(L"Hamilton", L"1750") && Chosen(same, L"Hamilton", L"1725", same);
  };
  EXPECT_BESIDE_LIBRARY(site, refused(), "");
}

TEST(SyringeModelOfTheCatalogue, IsReadAnewEachTime) {
  const BesideLibrary site;
  const auto later = [&] {
    if (!Refused(L"SGE", L"25F")) return false;
    std::ofstream(site.Folder() / "SyringeList.xml") << kCatalogue;
    return Chosen(SampleSyringe(), L"SGE", L"25F", Of(L"SGE", L"25F", 1.46, 180));
  };
  EXPECT_BESIDE_LIBRARY(site, later(), "");
}

}  // namespace
