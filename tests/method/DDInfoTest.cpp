#include <tslbl/method/DDInfo.h>

#include "RecordCheck.h"
#include "method/Samples.h"

namespace {

using namespace tests;

TEST(AllRecords, DDInfo) {
  CheckRecord<DDInfo>({
      {"Type", [](auto& r) { r.Type = DDInfo::PeakPark; }},
      {"StartTrigger", [](auto& r) { r.StartTrigger = DDInfo::TICAboveThres; }, BinaryOnly},
      {"StartTriggerValue", [](auto& r) { r.StartTriggerValue = 1.5; }, BinaryOnly},
      {"CurveEvals", [](auto& r) { r.CurveEvals = {CurveEval()}; }, BinaryOnly},
      {"CurveEvals.first", [](auto& r) { r.CurveEvals[0] = CurveEval(ThresholdParams()); }, BinaryOnly},
      {"EndTrigger", [](auto& r) { r.EndTrigger = DDInfo::TriggerTimeout; }, BinaryOnly},
      {"EndTriggerValue", [](auto& r) { r.EndTriggerValue = 1.5; }, BinaryOnly},
      {"ExclDuration", [](auto& r) { r.ExclDuration = 5; }, BinaryOnly},
      {"Type.StartTrigger", [](auto& r) { r.StartTrigger = DDInfo::StartTriggerNotDetected; }},
      {"Type.StartTriggerValue", [](auto& r) { r.StartTriggerValue = 1.5; }},
      {"Type.CurveEvals", [](auto& r) { r.CurveEvals = {CurveEval(ThresholdParams())}; }},
      {"Type.EndTrigger", [](auto& r) { r.EndTrigger = DDInfo::TICAboveThres; }},
      {"Type.EndTriggerValue", [](auto& r) { r.EndTriggerValue = 1.5; }},
      {"Type.ExclDuration", [](auto& r) { r.ExclDuration = 4294967295; }},
  });
}

TEST(Golden, DDInfo) { CheckGolden(SampleDDInfo(), "DDInfo.v1"); }
TEST(DDInfo, CutShortIsRefused) { CheckCutShort(SampleDDInfo()); }

TEST(DDInfo, OfAnUnknownVersionIsRefused) {
  for (const std::uint32_t version : {0u, 2u})
    EXPECT_EQ(ReadFailure<DDInfo>(Bytes(version), SampleDDInfo()), "Unknown DDInfo version.");
}

TEST(DDInfo, HasATextForEachType) {
  const std::pair<std::uint32_t, const wchar_t*> kTexts[] = {
      {0, L"None"}, {1, L"FractionCollect"}, {2, L"PeakPark"}, {3, L"TuneChange"}};
  for (const auto& [number, text] : kTexts) {
    EXPECT_EQ(DDInfo::CvtType(static_cast<DDInfo::Types>(number)), text);
    EXPECT_EQ(DDInfo::CvtType(std::wstring(text)), number);
  }
}

TEST(DDInfo, HasATextForEachTrigger) {
  const std::pair<std::uint32_t, const wchar_t*> kTexts[] = {{0, L"StartTriggerNotDetected"},
                                                             {1, L"TriggerTimeout"},
                                                             {2, L"AbsAmplAboveThres"},
                                                             {3, L"SNAboveThres"},
                                                             {4, L"TICAboveThres"}};
  for (const auto& [number, text] : kTexts) {
    EXPECT_EQ(DDInfo::CvtTrigger(static_cast<DDInfo::Triggers>(number)), text);
    EXPECT_EQ(DDInfo::CvtTrigger(std::wstring(text)), number);
  }
}

TEST(DDInfo, TextsAreReadInAnyCase) {
  EXPECT_EQ(DDInfo::CvtType(L"tunechange"), DDInfo::TuneChange);
  EXPECT_EQ(DDInfo::CvtTrigger(L"SNABOVETHRES"), DDInfo::SNAboveThres);
}

TEST(DDInfo, WhatIsNoTypeIsNone) {
  for (const std::uint32_t number : {4u, 4294967295u})
    EXPECT_EQ(DDInfo::CvtType(static_cast<DDInfo::Types>(number)), L"None");
  for (const wchar_t* text : {L"", L"Park", L"None ", L"2"})
    EXPECT_EQ(DDInfo::CvtType(std::wstring(text)), DDInfo::None) << text;
}

TEST(DDInfo, WhatIsNoTriggerIsTheLast) {
  for (const std::uint32_t number : {5u, 4294967295u})
    EXPECT_EQ(DDInfo::CvtTrigger(static_cast<DDInfo::Triggers>(number)), L"TICAboveThres");
  for (const wchar_t* text : {L"", L"Timeout", L"TriggerTimeout ", L"0"})
    EXPECT_EQ(DDInfo::CvtTrigger(std::wstring(text)), DDInfo::TICAboveThres) << text;
}

TEST(DDInfo, IsAnElementWithItsTriggers) {
  EXPECT_EQ(ToXml(SampleDDInfo()),
            L"<DDInfo Type=\"PeakPark\">\n"
            L"  <StartTrig Type=\"SNAboveThres\">12.5</StartTrig>\n"
            L"  <CurveEvals>\n"
            L"    <CurveEval Type=\"Threshold\">\n"
            L"      <Threshold>0</Threshold>\n"
            L"    </CurveEval>\n"
            L"    <CurveEval Type=\"Aerosol Filter\">\n"
            L"      <Aerosol_x0020_Filter />\n"
            L"    </CurveEval>\n"
            L"  </CurveEvals>\n"
            L"  <EndTrig Type=\"TriggerTimeout\">30.25</EndTrig>\n"
            L"  <ExclDuration>90000</ExclDuration>\n"
            L"</DDInfo>\n");
}

TEST(DDInfo, OfNoTypeIsItsTypeAlone) {
  DDInfo info;
  info.ExclDuration = 5;
  EXPECT_EQ(ToXml(info), L"<DDInfo Type=\"None\" />\n");
  EXPECT_EQ(FromXml<DDInfo>(ToXml(info)).ExclDuration, 0u);
}

TEST(DDInfo, OfAnUnknownNumberIsWrittenAsNoneWithAllThatItHolds) {
  DDInfo info = SampleDDInfo();
  info.Type = static_cast<DDInfo::Types>(9);
  const std::wstring xml = ToXml(info);
  EXPECT_TRUE(xml.starts_with(L"<DDInfo Type=\"None\">\n  <StartTrig ")) << xml.c_str();
  EXPECT_EQ(FromXml<DDInfo>(xml), DDInfo());
}

TEST(DDInfo, TakesATriggerThatItDoesNotKnowForTheLast) {
  const auto info =
      FromXml<DDInfo>(L"<DDInfo Type=\"PeakPark\"><StartTrig Type=\"x\">7</StartTrig></DDInfo>");
  EXPECT_EQ(info.StartTrigger, DDInfo::TICAboveThres);
  EXPECT_EQ(info.StartTriggerValue, 7.0);
}

TEST(DDInfo, StaysAsItWasWithoutItsElement) {
  EXPECT_EQ(FromXml(L"<Other />", SampleDDInfo()), SampleDDInfo());
}

TEST(DDInfo, KeepsItsDefaultsWhereTheDocumentHasNothing) {
  DDInfo expected;
  expected.Type = DDInfo::TuneChange;
  EXPECT_EQ(FromXml<DDInfo>(L"<DDInfo Type=\"TuneChange\" />"), expected);
}

TEST(DDInfo, HasNoCommandsWhereTheDocumentHasNoList) {
  for (const wchar_t* document : {L"<DDInfo Type=\"PeakPark\" />", L"<DDInfo Type=\"None\" />"})
    EXPECT_TRUE(FromXml(document, SampleDDInfo()).CurveEvals.empty());
}

TEST(DDInfo, HasNoDump) { EXPECT_EQ(DumpOf(SampleDDInfo()), L""); }

}  // namespace
