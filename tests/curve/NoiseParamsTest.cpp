#include <RecordCheck.h>

#include <tslbl/curve/NoiseParams.h>

using namespace TslBL;
using namespace tests;

namespace {

using AutoAlgs = NoiseParams::AutoAlgs;
using ManAlgs = NoiseParams::ManAlgs;

NoiseParams SampleNoiseParams() {
  NoiseParams p;
  p.Auto = false;
  p.AlgAuto = AutoAlgs::Median;
  p.SegSize = 251;
  p.Median = 8;
  p.Points = 7;
  p.Width = 4;
  p.AlgMan = ManAlgs::SixTimesSD;
  p.Start = 12.5;
  p.End = 99.75;
  return p;
}

NoiseParams WithChild(const std::wstring& name, const std::wstring& text) {
  return FromXml<NoiseParams>(L"<Noise><" + name + L">" + text + L"</" + name + L"></Noise>");
}

bool Writes(const NoiseParams& p, const std::wstring& line) {
  return ToXml(p).find(line) != std::wstring::npos;
}

}  // namespace

TEST(AllRecords, NoiseParams) {
  CheckRecord<NoiseParams>({
      {"Auto", [](auto& p) { p.Auto = false; }},
      {"AlgAuto", [](auto& p) { p.AlgAuto = AutoAlgs::Dispersion; }},
      {"SegSize", [](auto& p) { p.SegSize = 1; }},
      {"Median", [](auto& p) { p.Median = 1; }},
      {"Points", [](auto& p) { p.Points = 1; }},
      {"Width", [](auto& p) { p.Width = 1; }},
      {"AlgMan", [](auto& p) { p.AlgMan = ManAlgs::SixTimesSD; }},
      {"Start", [](auto& p) { p.Start = 1.5; }},
      {"End", [](auto& p) { p.End = 1.5; }},
  });
}
TEST(Golden, NoiseParams) { CheckGolden(SampleNoiseParams(), "NoiseParams.v1"); }
TEST(CutShort, NoiseParams) { CheckCutShort(SampleNoiseParams()); }

TEST(NoiseParams, HasItsDefaults) {
  const NoiseParams p;
  EXPECT_TRUE(p.Auto);
  EXPECT_EQ(p.AlgAuto, AutoAlgs::LinearFitSD);
  EXPECT_EQ(p.SegSize, 250u);
  EXPECT_EQ(p.Median, 0u);
  EXPECT_EQ(p.Points, 5u);
  EXPECT_EQ(p.Width, 3u);
  EXPECT_EQ(p.AlgMan, ManAlgs::PeakToPeak);
  EXPECT_EQ(p.Start, 5.0);
  EXPECT_EQ(p.End, 3000.0);
}

TEST(NoiseParams, PresetForMassSpectraIsTheDefault) { EXPECT_EQ(NoiseParams::DefaultMS(), NoiseParams()); }

TEST(NoiseParams, PresetForIonChromatogramsIsVFWithoutAStretch) {
  NoiseParams expected;
  expected.AlgAuto = AutoAlgs::VFNoise;
  expected.Start = 0.0;
  expected.End = 0.0;
  EXPECT_EQ(NoiseParams::DefaultIC(), expected);
}

TEST(NoiseParams, HasItsNumbers) {
  EXPECT_EQ(static_cast<std::uint32_t>(AutoAlgs::VFNoise), 0u);
  EXPECT_EQ(static_cast<std::uint32_t>(AutoAlgs::Dispersion), 1u);
  EXPECT_EQ(static_cast<std::uint32_t>(AutoAlgs::Median), 2u);
  EXPECT_EQ(static_cast<std::uint32_t>(AutoAlgs::LinearFitSD), 3u);
  EXPECT_EQ(static_cast<std::uint32_t>(ManAlgs::PeakToPeak), 0u);
  EXPECT_EQ(static_cast<std::uint32_t>(ManAlgs::SixTimesSD), 1u);
}

TEST(NoiseParams, RefusesUnknownVersions) {
  for (const std::uint32_t version : {0u, 2u, 0xFFFFFFFFu})
    EXPECT_EQ(
        ReadFailure<NoiseParams>(Bytes(version) + ToBytes(NoiseParams()).substr(4), SampleNoiseParams()),
        "Unknown NoiseParams version.");
}

TEST(NoiseParams, WritesXml) {
  EXPECT_EQ(ToXml(SampleNoiseParams()),
            L"<Noise>\n"
            L"  <Mode>Manual</Mode>\n"
            L"  <AlgAuto>Median</AlgAuto>\n"
            L"  <SegSize>251</SegSize>\n"
            L"  <Median>8</Median>\n"
            L"  <Points>7</Points>\n"
            L"  <Width>4</Width>\n"
            L"  <AlgMan>6 Times SD</AlgMan>\n"
            L"  <Start>12.5</Start>\n"
            L"  <End>99.75</End>\n"
            L"</Noise>\n");
}

TEST(NoiseParams, ReadsTheXmlThatItWrites) {
  EXPECT_EQ(FromXml<NoiseParams>(ToXml(SampleNoiseParams())), SampleNoiseParams());
}

TEST(NoiseParams, KeepsWhatTheDocumentLacks) {
  EXPECT_EQ(FromXml<NoiseParams>(L"<Noise/>", SampleNoiseParams()), SampleNoiseParams());
  EXPECT_EQ(FromXml<NoiseParams>(L"<Other><Width>9</Width></Other>", SampleNoiseParams()),
            SampleNoiseParams());
}

TEST(NoiseParams, IsAutomaticForAutoAlone) {
  EXPECT_TRUE(WithChild(L"Mode", L"aUTO").Auto);
  for (const wchar_t* mode : {L"Manual", L"", L"true", L"Auto "}) EXPECT_FALSE(WithChild(L"Mode", mode).Auto);
}

TEST(NoiseParams, WritesEachAlgorithmByName) {
  const wchar_t* const automatic[] = {L"V-F Noise", L"Dispersion", L"Median", L"Linear Fit SD", L"Unknown"};
  for (std::uint32_t alg = 0; alg < std::size(automatic); ++alg) {
    NoiseParams p;
    p.AlgAuto = static_cast<AutoAlgs>(alg);
    EXPECT_TRUE(Writes(p, std::wstring(L"<AlgAuto>") + automatic[alg] + L"</AlgAuto>")) << alg;
  }
  const wchar_t* const manual[] = {L"Peak To Peak", L"6 Times SD", L"Unknown"};
  for (std::uint32_t alg = 0; alg < std::size(manual); ++alg) {
    NoiseParams p;
    p.AlgMan = static_cast<ManAlgs>(alg);
    EXPECT_TRUE(Writes(p, std::wstring(L"<AlgMan>") + manual[alg] + L"</AlgMan>")) << alg;
  }
}

TEST(NoiseParams, ReadsAnAutomaticAlgorithmWhateverItsCase) {
  EXPECT_EQ(WithChild(L"AlgAuto", L"v-f noise").AlgAuto, AutoAlgs::VFNoise);
  EXPECT_EQ(WithChild(L"AlgAuto", L"DISPERSION").AlgAuto, AutoAlgs::Dispersion);
  EXPECT_EQ(WithChild(L"AlgAuto", L"median").AlgAuto, AutoAlgs::Median);
  EXPECT_EQ(WithChild(L"AlgAuto", L"LINEAR fit sd").AlgAuto, AutoAlgs::LinearFitSD);
}

TEST(NoiseParams, AnyOtherAutomaticAlgorithmIsVF) {
  for (const wchar_t* text : {L"", L"Unknown", L"3", L"Median "})
    EXPECT_EQ(WithChild(L"AlgAuto", text).AlgAuto, AutoAlgs::VFNoise);
}

TEST(NoiseParams, AnyManualAlgorithmButPeakToPeakIsSixTimesSD) {
  EXPECT_EQ(WithChild(L"AlgMan", L"peak to peak").AlgMan, ManAlgs::PeakToPeak);
  for (const wchar_t* text : {L"6 Times SD", L"", L"Unknown", L"0", L"Peak To Peak "})
    EXPECT_EQ(WithChild(L"AlgMan", text).AlgMan, ManAlgs::SixTimesSD);
}

TEST(NoiseParams, Dumps) {
  EXPECT_EQ(DumpOf(SampleNoiseParams()),
            L"  Mode:\tManual\r\n"
            L"  AlgAuto:\tMedian\r\n"
            L"  SegSize:\t251\r\n"
            L"  Median:\t8\r\n"
            L"  Points:\t7\r\n"
            L"  Width:\t4\r\n"
            L"  AlgMan:\t6 Times SD\r\n"
            L"  Start:\t12.5\r\n"
            L"  End:\t99.75\r\n");
}
