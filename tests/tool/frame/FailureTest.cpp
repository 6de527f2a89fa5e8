#include <gtest/gtest.h>

#include <new>
#include <stdexcept>

#include <tool/frame/Failure.h>
#include <tslbl/closed/common/ComponentRegistry.h>

namespace tests {
namespace {

TEST(Failure, HasATextWhateverWasThrown) {
  const auto text = [](auto failure) { return TslTool::FailureText(std::make_exception_ptr(failure)); };
  EXPECT_EQ(text(std::runtime_error("a.txt: is bad")), "a.txt: is bad");
  EXPECT_EQ(text(std::bad_alloc()), "out of memory");
  EXPECT_EQ(text(TslCommon::ComError{5}), "a component failed with code 5");
}

}  // namespace
}  // namespace tests
