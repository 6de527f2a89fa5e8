#include <gtest/gtest.h>

#include <tslbl/records/VexException.h>

namespace {

using TslBL::VexException;

TEST(VexException, CarriesItsWideText) {
  EXPECT_EQ(VexException(L"No \u20AC field.").Message(), L"No \u20AC field.");
}

TEST(VexException, SaysItsTextNarrowedBehindTheBaseText) {
  EXPECT_STREQ(VexException(L"No such field.").what(), "Vex Exception with wide string. No such field.");
  EXPECT_STREQ(VexException(L"").what(), "Vex Exception with wide string. ");
  EXPECT_STREQ(VexException(L"\u20AC").what(), "Vex Exception with wide string. \xAC");
}

TEST(VexException, KeepsBothTextsInACopy) {
  const VexException original(L"text");
  const VexException copy(original);
  EXPECT_EQ(copy.Message(), L"text");
  EXPECT_STREQ(copy.what(), "Vex Exception with wide string. text");
}

TEST(VexException, SharesOneStringForWhat) {
  const VexException first(L"first"), second(L"second");
  const char* text = first.what();
  EXPECT_EQ(text, second.what());
  EXPECT_STREQ(text, "Vex Exception with wide string. second");
}

TEST(VexException, IsARuntimeError) { EXPECT_THROW(throw VexException(L"x"), std::runtime_error); }

}  // namespace
