#include <RecordCheck.h>

#include <tslbl/curve/CurvePeak.h>
#include <boost/lexical_cast.hpp>

using namespace TslBL;
using namespace tests;

namespace {

struct Row {
  const char* field;
  double CurvePeak::*member;
  bool fullPrecision;
};
constexpr Row kRows[] = {
    {"CentroidX", &CurvePeak::CentroidX, true},
    {"CentroidAmpl", &CurvePeak::CentroidAmpl, false},
    {"RelCentroidAmpl", &CurvePeak::RelCentroidAmpl, false},
    {"MaxX", &CurvePeak::MaxX, true},
    {"MaxAmpl", &CurvePeak::MaxAmpl, false},
    {"RelMaxAmpl", &CurvePeak::RelMaxAmpl, false},
    {"Area", &CurvePeak::Area, false},
    {"Width", &CurvePeak::Width, true},
    {"Resolution", &CurvePeak::Resolution, false},
    {"Baseline", &CurvePeak::Baseline, false},
    {"Signal2Noise", &CurvePeak::Signal2Noise, false},
    {"Noise", &CurvePeak::Noise, false},
    {"PkStartX", &CurvePeak::PkStartX, true},
    {"PkStartAmpl", &CurvePeak::PkStartAmpl, false},
    {"PkEndX", &CurvePeak::PkEndX, true},
    {"PkEndAmpl", &CurvePeak::PkEndAmpl, false},
    {"PkAreaStartX", &CurvePeak::PkAreaStartX, true},
    {"PkAreaEndX", &CurvePeak::PkAreaEndX, true},
    {"PkAreaIntercept", &CurvePeak::PkAreaIntercept, false},
};

CurvePeak SampleCurvePeak() {
  CurvePeak p;
  double value = 0.5;
  for (const Row& row : kRows) p.*row.member = value += 1.0;
  return p;
}

}  // namespace

TEST(AllRecords, CurvePeak) {
  std::vector<FieldChange<CurvePeak>> fields;
  for (const Row& row : kRows)
    fields.push_back({row.field, [member = row.member](CurvePeak& p) { p.*member = 1.5; }});
  CheckRecord<CurvePeak>(fields);
}

TEST(CurvePeak, IsAllZeroByDefault) {
  for (const Row& row : kRows) EXPECT_EQ(CurvePeak().*row.member, 0.0) << row.field;
}

TEST(CurvePeak, WritesXml) {
  EXPECT_EQ(ToXml(SampleCurvePeak()),
            L"<Peak>\n"
            L"  <CentroidX>1.5</CentroidX>\n"
            L"  <CentroidAmpl>2.5</CentroidAmpl>\n"
            L"  <RelCentroidAmpl>3.5</RelCentroidAmpl>\n"
            L"  <MaxX>4.5</MaxX>\n"
            L"  <MaxAmpl>5.5</MaxAmpl>\n"
            L"  <RelMaxAmpl>6.5</RelMaxAmpl>\n"
            L"  <Area>7.5</Area>\n"
            L"  <Width>8.5</Width>\n"
            L"  <Resolution>9.5</Resolution>\n"
            L"  <Baseline>10.5</Baseline>\n"
            L"  <Signal2Noise>11.5</Signal2Noise>\n"
            L"  <Noise>12.5</Noise>\n"
            L"  <PkStartX>13.5</PkStartX>\n"
            L"  <PkStartAmpl>14.5</PkStartAmpl>\n"
            L"  <PkEndX>15.5</PkEndX>\n"
            L"  <PkEndAmpl>16.5</PkEndAmpl>\n"
            L"  <PkAreaStartX>17.5</PkAreaStartX>\n"
            L"  <PkAreaEndX>18.5</PkAreaEndX>\n"
            L"  <PkAreaIntercept>19.5</PkAreaIntercept>\n"
            L"</Peak>\n");
}

TEST(CurvePeak, ReadsTheXmlThatItWrites) {
  EXPECT_EQ(FromXml<CurvePeak>(ToXml(SampleCurvePeak())), SampleCurvePeak());
}

TEST(CurvePeak, KeepsXValuesInFullAndSixDigitsOfTheRest) {
  constexpr double kLong = 556.27712345678906;
  for (const Row& row : kRows) {
    CurvePeak p;
    p.*row.member = kLong;
    const double read = FromXml<CurvePeak>(ToXml(p)).*row.member;
    EXPECT_EQ(read, row.fullPrecision ? kLong : 556.277) << row.field;
  }
}

TEST(CurvePeak, WritesXValuesAsAFullPrecisionCastDoes) {
  CurvePeak p;
  p.MaxX = 0.1;
  const auto text = boost::lexical_cast<std::wstring>(0.1);
  EXPECT_EQ(text, L"0.10000000000000001");
  EXPECT_NE(ToXml(p).find(L"<MaxX>" + text + L"</MaxX>"), std::wstring::npos);
}

TEST(CurvePeak, KeepsWhatTheDocumentLacks) {
  EXPECT_EQ(FromXml<CurvePeak>(L"<Peak/>", SampleCurvePeak()), SampleCurvePeak());
  EXPECT_EQ(FromXml<CurvePeak>(L"<Other><Area>1</Area></Other>", SampleCurvePeak()), SampleCurvePeak());
}

TEST(CurvePeak, ReadsEachChildAlone) {
  const auto p = FromXml<CurvePeak>(L"<Peak><Noise>abc</Noise><Width>0.25</Width></Peak>", SampleCurvePeak());
  CurvePeak expected = SampleCurvePeak();
  expected.Width = 0.25;
  EXPECT_EQ(p, expected);
}
