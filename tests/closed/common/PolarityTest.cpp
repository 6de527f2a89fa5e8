#include <gtest/gtest.h>

#include <tslbl/closed/common/Polarity.h>

namespace {

using namespace TslCommon;

TEST(Polarity, HasItsText) {
  EXPECT_EQ(PolarityToWStr(PolarityPositive, L"?"), L"Positive");
  EXPECT_EQ(PolarityToWStr(PolarityNegative, L"?"), L"Negative");
}

TEST(Polarity, AnotherValueHasTheFallbackForItsText) {
  EXPECT_EQ(PolarityToWStr(static_cast<PolarityTypes>(2), L"Unknown"), L"Unknown");
}

TEST(Polarity, IsReadInEitherCase) {
  EXPECT_EQ(PolarityFromWStr(L"positive", PolarityNegative), PolarityPositive);
  EXPECT_EQ(PolarityFromWStr(L"NEGATIVE", PolarityPositive), PolarityNegative);
}

TEST(Polarity, AnotherTextGivesTheFallback) {
  for (const auto fallback : {PolarityPositive, PolarityNegative})
    for (const wchar_t* text : {L"", L"+", L"Positive "})
      EXPECT_EQ(PolarityFromWStr(text, fallback), fallback);
}

}  // namespace
