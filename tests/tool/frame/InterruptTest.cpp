#include <gtest/gtest.h>
#include <signal.h>
#include <unistd.h>

#include <cstdlib>

#include <tool/frame/Interrupt.h>

namespace tests {
namespace {

// A fork of a program with threads is not safe to go on in; a fresh start is.
struct Interrupt : testing::Test {
  Interrupt() { GTEST_FLAG_SET(death_test_style, "threadsafe"); }
};

// Each in a process of its own, since a signal once caught stays caught.
[[noreturn]] void EndAfter(int number) {
  TslTool::CatchInterrupts();
  TslTool::ThrowIfInterrupted();
  raise(number);
  try {
    TslTool::ThrowIfInterrupted();
  } catch (const TslTool::Interrupted&) {
    std::_Exit(TslTool::WasInterrupted() ? 17 : 18);
  }
  std::_Exit(19);
}

TEST_F(Interrupt, ASignalThatEndsIsAskedForLater) {
  for (const int number : {SIGINT, SIGTERM, SIGHUP})
    EXPECT_EXIT(EndAfter(number), testing::ExitedWithCode(17), "") << number;
}

TEST_F(Interrupt, ASecondSignalEndsTheProcessAtOnce) {
  EXPECT_EXIT(
      {
        TslTool::CatchInterrupts();
        raise(SIGINT);
        raise(SIGINT);
      },
      testing::KilledBySignal(SIGINT), "");
}

TEST_F(Interrupt, TheProcessEndsByTheSignalThatWasCaught) {
  for (const int number : {SIGINT, SIGTERM, SIGHUP})
    EXPECT_EXIT(
        {
          TslTool::CatchInterrupts();
          raise(number);
          TslTool::EndIfInterrupted();
          std::_Exit(0);
        },
        testing::KilledBySignal(number), "")
        << number;
}

TEST_F(Interrupt, WithoutASignalTheProcessGoesOn) {
  EXPECT_EXIT(
      {
        TslTool::CatchInterrupts();
        TslTool::EndIfInterrupted();
        std::_Exit(17);
      },
      testing::ExitedWithCode(17), "");
}

TEST_F(Interrupt, AReadThatWaitsEnds) {
  EXPECT_EXIT(
      {
        TslTool::CatchInterrupts();
        int ends[2];
        char byte;
        if (pipe(ends) != 0) std::_Exit(1);
        alarm(10);
        const pid_t self = getpid();
        if (fork() == 0) {
          usleep(50000);
          kill(self, SIGINT);
          std::_Exit(0);
        }
        std::_Exit(read(ends[0], &byte, 1) == -1 && TslTool::WasInterrupted() ? 17 : 18);
      },
      testing::ExitedWithCode(17), "");
}

}  // namespace
}  // namespace tests
