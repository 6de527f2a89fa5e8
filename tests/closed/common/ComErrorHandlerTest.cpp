#include <gtest/gtest.h>

#include <tslbl/closed/common/ComErrorHandler.h>
#include <tslbl/closed/common/ComponentRegistry.h>

namespace {

using namespace TslCommon;

std::uint32_t lastCode = 0;
void Remember(std::uint32_t code) { lastCode = code; }

std::uint32_t Raised(std::uint32_t code) {
  try {
    RaiseComError(code);
  } catch (const ComError& e) {
    return e.code;
  }
  return 0;
}

TEST(ComErrorHandler, ThrowsTheCodeUnlessTheApplicationHasAnother) {
  EXPECT_EQ(Raised(ComError::kNullPointer), ComError::kNullPointer);
}

TEST(ComErrorHandler, OfTheApplicationIsGivenTheCode) {
  const ComErrorHandler before = SetComErrorHandler(Remember);
  EXPECT_EQ(Raised(0x80004005), 0U);
  EXPECT_EQ(lastCode, 0x80004005);
  EXPECT_EQ(SetComErrorHandler(before), &Remember);
}

TEST(ComErrorHandler, NullBringsBackTheOneThatThrows) {
  SetComErrorHandler(Remember);
  SetComErrorHandler(nullptr);
  EXPECT_EQ(Raised(ComError::kFailed), ComError::kFailed);
}

}  // namespace
