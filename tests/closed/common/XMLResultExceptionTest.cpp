#include <gtest/gtest.h>

#include <tslbl/closed/common/XMLResultException.h>

namespace {

using namespace TslCommon;

TEST(XMLResultException, KeepsAllThatItIsMadeOf) {
  const XMLResultException e = CreateXmlResult(L"ValveMethod", L"Read", 90, 1051, L"No \u00B5");
  EXPECT_EQ(e.File(), L"ValveMethod");
  EXPECT_EQ(e.Function(), L"Read");
  EXPECT_EQ(e.Line(), 90u);
  EXPECT_EQ(e.ResourceId(), 1051u);
  EXPECT_EQ(e.Message(), L"No \u00B5");
}

TEST(XMLResultException, IsARuntimeErrorThatSaysItsMessage) {
  try {
    throw CreateXmlResult(L"f", L"g", 1, 1056, L"No \u00B5");
  } catch (const std::runtime_error& e) {
    EXPECT_STREQ(e.what(), "No \xC2\xB5");
  }
}

}  // namespace
