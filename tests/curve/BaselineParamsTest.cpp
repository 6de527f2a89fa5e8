#include <RecordCheck.h>

#include <tslbl/curve/BaselineParams.h>

using namespace TslBL;
using namespace tests;

namespace {

BaselineParams SampleBaselineParams() {
  BaselineParams p;
  p.Auto = false;
  p.Alg = BaselineParams::Adaptive;
  p.SegSize = 251;
  p.Window = 102;
  p.Points = 7;
  p.Width = 4;
  p.ManVal = -3.25;
  return p;
}

BaselineParams WithAlg(const std::wstring& text) {
  return FromXml<BaselineParams>(L"<Baseline><Alg>" + text + L"</Alg></Baseline>");
}
bool AutoOf(const std::wstring& mode, bool before) {
  BaselineParams p;
  p.Auto = before;
  return FromXml<BaselineParams>(L"<Baseline><Mode>" + mode + L"</Mode></Baseline>", p).Auto;
}

}  // namespace

TEST(AllRecords, BaselineParams) {
  CheckRecord<BaselineParams>({
      {"Auto", [](auto& p) { p.Auto = false; }},
      {"Alg", [](auto& p) { p.Alg = BaselineParams::VFBaseline; }},
      {"SegSize", [](auto& p) { p.SegSize = 1; }},
      {"Window", [](auto& p) { p.Window = 1; }},
      {"Points", [](auto& p) { p.Points = 1; }},
      {"Width", [](auto& p) { p.Width = 1; }},
      {"ManVal", [](auto& p) { p.ManVal = 1.5; }},
  });
}
TEST(Golden, BaselineParams) { CheckGolden(SampleBaselineParams(), "BaselineParams.v1"); }
TEST(CutShort, BaselineParams) { CheckCutShort(SampleBaselineParams()); }

TEST(BaselineParams, HasItsDefaults) {
  const BaselineParams p;
  EXPECT_TRUE(p.Auto);
  EXPECT_EQ(p.Alg, BaselineParams::LinearFitSD);
  EXPECT_EQ(p.SegSize, 250u);
  EXPECT_EQ(p.Window, 100u);
  EXPECT_EQ(p.Points, 5u);
  EXPECT_EQ(p.Width, 3u);
  EXPECT_EQ(p.ManVal, 0.0);
}

TEST(BaselineParams, PresetForMassSpectraIsTheDefault) {
  EXPECT_EQ(BaselineParams::DefaultMS(), BaselineParams());
}

TEST(BaselineParams, PresetForIonChromatogramsIsVFOnShortSegments) {
  BaselineParams expected;
  expected.Alg = BaselineParams::VFBaseline;
  expected.SegSize = 50;
  expected.Window = 10;
  EXPECT_EQ(BaselineParams::DefaultIC(), expected);
}

TEST(BaselineParams, HasItsNumbers) {
  EXPECT_EQ(BaselineParams::VFBaseline, 0u);
  EXPECT_EQ(BaselineParams::Adaptive, 1u);
  EXPECT_EQ(BaselineParams::LinearFitSD, 2u);
}

TEST(BaselineParams, RefusesUnknownVersions) {
  for (const std::uint32_t version : {0u, 2u, 0xFFFFFFFFu})
    EXPECT_EQ(ReadFailure<BaselineParams>(Bytes(version) + ToBytes(BaselineParams()).substr(4),
                                          SampleBaselineParams()),
              "Unknown BaselineParams version.");
}

TEST(BaselineParams, WritesXml) {
  EXPECT_EQ(ToXml(SampleBaselineParams()),
            L"<Baseline>\n"
            L"  <Mode>Manual</Mode>\n"
            L"  <Alg>Adaptive</Alg>\n"
            L"  <SegSize>251</SegSize>\n"
            L"  <Window>102</Window>\n"
            L"  <Points>7</Points>\n"
            L"  <Width>4</Width>\n"
            L"  <ManVal>-3.25</ManVal>\n"
            L"</Baseline>\n");
}

TEST(BaselineParams, ReadsTheXmlThatItWrites) {
  EXPECT_EQ(FromXml<BaselineParams>(ToXml(SampleBaselineParams())), SampleBaselineParams());
}

TEST(BaselineParams, KeepsWhatTheDocumentLacks) {
  EXPECT_EQ(FromXml<BaselineParams>(L"<Baseline/>", SampleBaselineParams()), SampleBaselineParams());
  EXPECT_EQ(FromXml<BaselineParams>(L"<Noise><Width>9</Width></Noise>", SampleBaselineParams()),
            SampleBaselineParams());
}

TEST(BaselineParams, KeepsSixDigitsInXml) {
  BaselineParams p;
  p.ManVal = 1.2345678;
  EXPECT_EQ(FromXml<BaselineParams>(ToXml(p)).ManVal, 1.23457);
}

TEST(BaselineParams, IsAutomaticForAutoAlone) {
  for (const wchar_t* mode : {L"Auto", L"auto", L"AUTO"}) EXPECT_TRUE(AutoOf(mode, false));
  for (const wchar_t* mode : {L"Manual", L"", L"true", L"1", L"Auto ", L"Automatic"})
    EXPECT_FALSE(AutoOf(mode, true));
}

TEST(BaselineParams, WritesEachAlgorithmByName) {
  const wchar_t* const texts[] = {L"V-F Baseline", L"Adaptive", L"Linear Fit SD", L"Unknown"};
  for (std::uint32_t alg = 0; alg < std::size(texts); ++alg) {
    BaselineParams p;
    p.Alg = static_cast<BaselineParams::Algs>(alg);
    EXPECT_NE(ToXml(p).find(std::wstring(L"<Alg>") + texts[alg] + L"</Alg>"), std::wstring::npos) << alg;
    EXPECT_EQ(FromBytes<BaselineParams>(ToBytes(p)), p) << alg;
  }
}

TEST(BaselineParams, ReadsAnAlgorithmWhateverItsCase) {
  EXPECT_EQ(WithAlg(L"v-f baseline").Alg, BaselineParams::VFBaseline);
  EXPECT_EQ(WithAlg(L"ADAPTIVE").Alg, BaselineParams::Adaptive);
  EXPECT_EQ(WithAlg(L"linear FIT sd").Alg, BaselineParams::LinearFitSD);
}

TEST(BaselineParams, ReadsTheOlderNameOfAdaptive) {
  EXPECT_EQ(WithAlg(L"APB Morph").Alg, BaselineParams::Adaptive);
  EXPECT_EQ(WithAlg(L"apb morph").Alg, BaselineParams::Adaptive);
}

TEST(BaselineParams, AnyOtherAlgorithmIsVF) {
  for (const wchar_t* text : {L"", L"Unknown", L"2", L"Adaptive "})
    EXPECT_EQ(WithAlg(text).Alg, BaselineParams::VFBaseline);
}

TEST(BaselineParams, Dumps) {
  EXPECT_EQ(DumpOf(SampleBaselineParams()),
            L"  Mode:\tManual\r\n"
            L"  Alg:\tAdaptive\r\n"
            L"  SegSize:\t251\r\n"
            L"  Window:\t102\r\n"
            L"  Points:\t7\r\n"
            L"  Width:\t4\r\n"
            L"  ManVal:\t-3.25\r\n");
}
