// The tool where memory is short, at any moment from its start on: status 1 and a reason, no half
// result. Sanitizers take more address space than any limit leaves: without them only.
//
// Tests: tool/main.cpp.
#if !defined(__SANITIZE_ADDRESS__) && !defined(__SANITIZE_THREAD__)
#if defined(__has_feature)
#if __has_feature(address_sanitizer) || __has_feature(thread_sanitizer)
#define TSLBL_TEST_WITH_SANITIZER
#endif
#endif
#else
#define TSLBL_TEST_WITH_SANITIZER
#endif

#ifndef TSLBL_TEST_WITH_SANITIZER
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>

#include <tool/commands/DemoRun.h>

namespace tests {
namespace {

using testing::ElementsAre;
using testing::StartsWith;

constexpr int kStep = 150;  // kilobytes

Outcome RunInMemory(const std::string& folder, int kilobytes) {
  return RunShell("cd '" + folder + "' && ulimit -v " + std::to_string(kilobytes) + " && \"$TSLBL\" peaks '" +
                  DemoRun::Get().Run() + "' --scan 1-3 -o peaks.tsv --format tsv");
}

// Below it the system cannot load the program and its libraries.
int LeastToBegin(const std::string& folder) {
  int kilobytes = 15000;
  while (RunInMemory(folder, kilobytes).status > 1) kilobytes += kStep;
  return kilobytes;
}

TEST(MemoryFault, ShortMemoryAtAnyMomentIsTold) {
  const TempFile folder("x", "");
  int failures = 0;
  int kilobytes = LeastToBegin(folder.Folder());
  for (int left = 60; left > 0; --left, kilobytes += kStep) {
    const TempFile place("x", "");
    const Outcome outcome = RunInMemory(place.Folder(), kilobytes);
    if (outcome.status == 0) continue;
    ++failures;
    EXPECT_EQ(outcome.status, 1) << kilobytes << " kB: " << outcome.err;
    EXPECT_THAT(outcome.err, StartsWith("tslbl: ")) << kilobytes << " kB";
    EXPECT_THAT(NamesIn(place.Folder()), ElementsAre("x")) << kilobytes << " kB";
  }
  EXPECT_GT(failures, 5);
}

}  // namespace
}  // namespace tests
#endif
