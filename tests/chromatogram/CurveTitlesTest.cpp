#include <gtest/gtest.h>

#include <tslbl/chromatogram/CurveTitles.h>
#include <stdexcept>

using namespace TslBL;

namespace {

const std::vector<MZRange> kRanges = {
    {MZRange::Partial, 100.0, 101.26}, {}, {MZRange::Partial, 1234.5678, 2000.0}};

}  // namespace

TEST(GenerateEICCurveTitle, PutsTheRangesInPlaceOfTheLetters) {
  EXPECT_EQ(GenerateEICCurveTitle(L"A", kRanges), L"100 to 101.26");
  EXPECT_EQ(GenerateEICCurveTitle(L"a+B-c", kRanges), L"100 to 101.26+Full m/z range-1234.57 to 2000");
}

TEST(GenerateEICCurveTitle, CopiesEverythingElse) {
  EXPECT_EQ(GenerateEICCurveTitle(L"1 - 9kZ?", kRanges), L"1 - 9kZ?");
  EXPECT_EQ(GenerateEICCurveTitle(L"", kRanges), L"");
}

TEST(GenerateEICCurveTitle, OfALetterWithoutARangeThrows) {
  EXPECT_THROW(GenerateEICCurveTitle(L"D", kRanges), std::out_of_range);
  EXPECT_THROW(GenerateEICCurveTitle(L"j", {}), std::out_of_range);
}

TEST(GenerateBICCurveTitle, HasTheRangeAndTheValue) {
  MZPeakField field;
  field.Type = MZPeakField::Ampl;
  EXPECT_EQ(GenerateBICCurveTitle(kRanges[0], field), L"100.0 to 101.3 Amplitude");
  EXPECT_EQ(GenerateBICCurveTitle(kRanges[1], field), L"Full Amplitude");
  field.Type = MZPeakField::Mass;
  EXPECT_EQ(GenerateBICCurveTitle(kRanges[2], field), L"1234.6 to 2000.0 Mass");
}
