#include <gtest/gtest.h>

#include <tool/chain/Threads.h>
#include <tool/frame/UsageError.h>
#include <tslbl/detect/ThreadingParams.h>

namespace tests {
namespace {

TEST(Threads, AreAsManyAsAreAskedFor) {
  const TslBL::AppThreadingParams before = TslBL::GetMultiThreadingParams();
  TslTool::UseThreads(3);
  EXPECT_EQ(TslTool::ThreadsAllowed(), 3);
  TslBL::SetMultiThreadingParams(before);
}

TEST(Threads, Are1024AtMost) { EXPECT_THROW(TslTool::UseThreads(1025), TslTool::UsageError); }

TEST(Threads, AreOneAtLeast) { EXPECT_THROW(TslTool::UseThreads(0), TslTool::UsageError); }

}  // namespace
}  // namespace tests
