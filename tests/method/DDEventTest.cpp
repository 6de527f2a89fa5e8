#include <tslbl/method/DDEvent.h>

#include "RecordCheck.h"
#include "method/Samples.h"

namespace {

using namespace tests;

std::wstring Added(const DDEvent& event) {
  XMLBuilder builder;
  AddEvent(builder, 9, DDInfo::FractionCollect, event);
  return builder.QXML();
}

TEST(AllRecords, DDEvent) {
  CheckRecord<DDEvent>({
      {"Boundary", [](auto& r) { r.Boundary = DDEvent::Stop; }},
      {"TimeStamp", [](auto& r) { r.TimeStamp = 4294967295; }},
      {"SpecId", [](auto& r) { r.SpecId = 4294967295; }},
      {"MZPeaks", [](auto& r) { r.MZPeaks = {500.5}; }},
      {"MZPeaks.last", [](auto& r) { r.MZPeaks[0] += 1e-12; }},
  });
}

TEST(Golden, DDEvent) { CheckGolden(SampleDDEvent(), "DDEvent.v1"); }
TEST(DDEvent, CutShortIsRefused) { CheckCutShort(SampleDDEvent()); }

TEST(DDEvent, OfAnUnknownVersionIsRefused) {
  for (const std::uint32_t version : {0u, 2u})
    EXPECT_EQ(ReadFailure<DDEvent>(Bytes(version), SampleDDEvent()), "Unknown DDEvent version.");
}

TEST(DDEvent, HasATextForEachBoundary) {
  EXPECT_EQ(DDEvent::CvtBoundary(DDEvent::Start), L"Start");
  for (const std::uint32_t number : {1u, 2u, 4294967295u})
    EXPECT_EQ(DDEvent::CvtBoundary(static_cast<DDEvent::Boundaries>(number)), L"Stop");
}

TEST(DDEvent, StartsByTheWordStartAlone) {
  for (const wchar_t* text : {L"Start", L"start", L"START"})
    EXPECT_EQ(DDEvent::CvtBoundary(std::wstring(text)), DDEvent::Start) << text;
  for (const wchar_t* text : {L"Stop", L"", L"Started", L" Start", L"0"})
    EXPECT_EQ(DDEvent::CvtBoundary(std::wstring(text)), DDEvent::Stop) << text;
}

TEST(DDEvent, DiffersByItsLastPeak) {
  DDEvent other = SampleDDEvent();
  other.MZPeaks.back() += 1e-9;
  EXPECT_FALSE(other == SampleDDEvent());
  other.MZPeaks.pop_back();
  EXPECT_FALSE(other == SampleDDEvent());
}

TEST(DDEvent, IsAnElementWithItsPeaks) {
  EXPECT_EQ(
      Added(SampleDDEvent()),
      L"<Event Id=\"9\" Boundary=\"Stop\" Type=\"FractionCollect\" TimeStamp=\"61000\" SpecId=\"123\">\n"
      L"  <MZPeaks>500.25 1000.5</MZPeaks>\n"
      L"</Event>\n");
}

TEST(DDEvent, WithoutPeaksHasAnEmptyElement) {
  EXPECT_NE(Added(DDEvent()).find(L"<MZPeaks />"), std::wstring::npos) << Added(DDEvent()).c_str();
}

TEST(DDEvent, WritesPeaksWithSixDigits) {
  EXPECT_NE(Added({DDEvent::Start, 0, 0, {1234.5678}}).find(L">1234.57<"), std::wstring::npos);
}

TEST(DDEvent, IsDumpedFieldByField) {
  EXPECT_EQ(DumpOf(SampleDDEvent()),
            L"  Boundary:\tStop\r\n  TimeStamp:\t61000\r\n  SpecId:\t123\r\n  MZPeaks:\t2 values\r\n");
}

}  // namespace
