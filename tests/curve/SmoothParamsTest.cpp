#include <RecordCheck.h>

#include <tslbl/curve/SmoothParams.h>

using namespace TslBL;
using namespace tests;

namespace {

SmoothParams SampleSmoothParams() {
  SmoothParams p;
  p.Passes = 3;
  p.Order = 4;
  p.Alg = SmoothParams::SavitzkyGolay;
  p.StepTrans = SmoothParams::Staggered;
  p.Steps = {{600.5, 9}, {100.25, 7}};
  return p;
}

SmoothParams WithAlg(const std::wstring& text) {
  return FromXml<SmoothParams>(L"<Smooth><Alg>" + text + L"</Alg></Smooth>", SampleSmoothParams());
}
SmoothParams WithStepTrans(const std::wstring& text) {
  return FromXml<SmoothParams>(L"<Smooth><StepTrans>" + text + L"</StepTrans></Smooth>",
                               SampleSmoothParams());
}
std::vector<SmoothStep> WithSteps(const std::wstring& items) {
  return FromXml<SmoothParams>(L"<Smooth><Steps>" + items + L"</Steps></Smooth>", SampleSmoothParams()).Steps;
}

}  // namespace

TEST(AllRecords, SmoothParams) {
  CheckRecord<SmoothParams>({
      {"Passes", [](auto& p) { p.Passes = 2; }},
      {"Order", [](auto& p) { p.Order = 3; }},
      {"Alg", [](auto& p) { p.Alg = SmoothParams::Gaussian; }},
      {"StepTrans", [](auto& p) { p.StepTrans = SmoothParams::Staggered; }},
      {"Steps", [](auto& p) { p.Steps.resize(2); }},
      {"Steps to none", [](auto& p) { p.Steps.clear(); }},
      {"Steps.Value", [](auto& p) { p.Steps[0].Value = 1.5; }},
      {"Steps.Size", [](auto& p) { p.Steps[0].Size = 1; }},
  });
}
TEST(Golden, SmoothParams) { CheckGolden(SampleSmoothParams(), "SmoothParams.v1"); }
TEST(CutShort, SmoothParams) { CheckCutShort(SampleSmoothParams()); }

TEST(SmoothParams, HasItsDefaults) {
  const SmoothParams p;
  EXPECT_EQ(p.Passes, 1u);
  EXPECT_EQ(p.Order, 2u);
  EXPECT_EQ(p.Alg, SmoothParams::Mean);
  EXPECT_EQ(p.StepTrans, SmoothParams::Smooth);
  EXPECT_EQ(p.Steps, (std::vector<SmoothStep>{{5.0, 5}}));
}

TEST(SmoothParams, PresetForMassSpectraIsTheDefault) { EXPECT_EQ(SmoothParams::DefaultMS(), SmoothParams()); }

TEST(SmoothParams, PresetForIonChromatogramsBeginsAtZero) {
  SmoothParams expected;
  expected.Steps[0].Value = 0.0;
  EXPECT_EQ(SmoothParams::DefaultIC(), expected);
}

TEST(SmoothParams, HasItsNumbers) {
  EXPECT_EQ(SmoothParams::Mean, 0u);
  EXPECT_EQ(SmoothParams::Median, 1u);
  EXPECT_EQ(SmoothParams::SavitzkyGolay, 2u);
  EXPECT_EQ(SmoothParams::Gaussian, 3u);
  EXPECT_EQ(SmoothParams::Smooth, 0u);
  EXPECT_EQ(SmoothParams::Staggered, 1u);
}

TEST(SmoothParams, ComparesStepsInTheirOrder) {
  SmoothParams swapped = SampleSmoothParams();
  std::swap(swapped.Steps[0], swapped.Steps[1]);
  EXPECT_FALSE(swapped == SampleSmoothParams());
}

TEST(SmoothParams, RefusesUnknownVersions) {
  for (const std::uint32_t version : {0u, 2u, 0xFFFFFFFFu})
    EXPECT_EQ(
        ReadFailure<SmoothParams>(Bytes(version) + ToBytes(SmoothParams()).substr(4), SampleSmoothParams()),
        "Unknown SmoothParams version.");
}

TEST(SmoothParams, DoesNotTrustTheCountOfSteps) {
  EXPECT_EQ(ReadFailure<SmoothParams>(Bytes(1u, 1u, 2u, 0u, 0u, 0xFFFFFFFFu, 1.5, 3u)),
            "Unexpected end of stream.");
}

TEST(SmoothParams, WritesXml) {
  EXPECT_EQ(ToXml(SampleSmoothParams()),
            L"<Smooth>\n"
            L"  <Passes>3</Passes>\n"
            L"  <Order>4</Order>\n"
            L"  <Alg>Savitzky-Golay</Alg>\n"
            L"  <StepTrans>Staggered</StepTrans>\n"
            L"  <Steps>\n"
            L"    <Step Value=\"600.5\" Size=\"9\" />\n"
            L"    <Step Value=\"100.25\" Size=\"7\" />\n"
            L"  </Steps>\n"
            L"</Smooth>\n");
}

TEST(SmoothParams, ReadsTheXmlThatItWrites) {
  EXPECT_EQ(FromXml<SmoothParams>(ToXml(SampleSmoothParams())), SampleSmoothParams());
}

TEST(SmoothParams, KeepsWhatTheDocumentLacks) {
  EXPECT_EQ(FromXml<SmoothParams>(L"<Smooth/>", SampleSmoothParams()), SampleSmoothParams());
  EXPECT_EQ(FromXml<SmoothParams>(L"<Other><Order>9</Order></Other>", SampleSmoothParams()),
            SampleSmoothParams());
}

TEST(SmoothParams, KeepsANumberWhoseTextIsNone) {
  EXPECT_EQ(FromXml<SmoothParams>(L"<Smooth><Passes>abc</Passes><Order/></Smooth>", SampleSmoothParams()),
            SampleSmoothParams());
}

TEST(SmoothParams, WritesEachAlgorithmByName) {
  const wchar_t* const texts[] = {L"Mean", L"Median", L"Savitzky-Golay", L"Gaussian", L"Unknown"};
  for (std::uint32_t alg = 0; alg < std::size(texts); ++alg) {
    SmoothParams p;
    p.Alg = static_cast<SmoothParams::Algs>(alg);
    EXPECT_NE(ToXml(p).find(std::wstring(L"<Alg>") + texts[alg] + L"</Alg>"), std::wstring::npos) << alg;
  }
}

TEST(SmoothParams, ReadsAnAlgorithmWhateverItsCase) {
  EXPECT_EQ(WithAlg(L"mean").Alg, SmoothParams::Mean);
  EXPECT_EQ(WithAlg(L"MEDIAN").Alg, SmoothParams::Median);
  EXPECT_EQ(WithAlg(L"savitzky-GOLAY").Alg, SmoothParams::SavitzkyGolay);
  EXPECT_EQ(WithAlg(L"gaussian").Alg, SmoothParams::Gaussian);
}

TEST(SmoothParams, AnyOtherAlgorithmIsMean) {
  for (const wchar_t* text : {L"", L"Unknown", L"Median ", L"3", L"Savitzky Golay"})
    EXPECT_EQ(WithAlg(text).Alg, SmoothParams::Mean);
}

TEST(SmoothParams, AnyStepTransitionButStaggeredIsSmooth) {
  EXPECT_EQ(WithStepTrans(L"sTAGGERED").StepTrans, SmoothParams::Staggered);
  for (const wchar_t* text : {L"Smooth", L"", L"Unknown", L"1"})
    EXPECT_EQ(WithStepTrans(text).StepTrans, SmoothParams::Smooth);
}

TEST(SmoothParams, AStepTransitionWithoutANameIsWrittenAsUnknown) {
  SmoothParams p;
  p.StepTrans = static_cast<SmoothParams::StepTransitions>(2);
  EXPECT_NE(ToXml(p).find(L"<StepTrans>Unknown</StepTrans>"), std::wstring::npos);
  EXPECT_EQ(FromBytes<SmoothParams>(ToBytes(p)), p);
}

TEST(SmoothParams, ReadStepsReplaceTheOldOnes) {
  EXPECT_EQ(WithSteps(L"<Step Value='1.5' Size='3'/>"), (std::vector<SmoothStep>{{1.5, 3}}));
  EXPECT_EQ(WithSteps(L""), std::vector<SmoothStep>());
}

TEST(SmoothParams, AStepTakesWhatItLacksFromTheDefaultStep) {
  EXPECT_EQ(WithSteps(L"<Step/><Step Value='1.5'/><Step Size='3'/><Step Value='x' Size=''/>"),
            (std::vector<SmoothStep>{{5.0, 5}, {1.5, 5}, {5.0, 3}, {5.0, 5}}));
}

TEST(SmoothParams, Dumps) {
  EXPECT_EQ(DumpOf(SampleSmoothParams()),
            L"  Alg:\tSavitzky-Golay\r\n"
            L"  Order:\t4\r\n"
            L"  Passes:\t3\r\n"
            L"  Value:\t600.5\r\n  Size:\t9\r\n"
            L"  Value:\t100.25\r\n  Size:\t7\r\n"
            L"  StepTrans:\tStaggered\r\n");
}
