#include <gtest/gtest.h>
#include <unistd.h>

#include <cstdlib>
#include <functional>
#include <optional>
#include <string>
#include <thread>

#include <fcntl.h>
#include <tool/Progress.h>

namespace TslTest {
namespace {

using TslTool::Progress;
using TslTool::ProgressText;

struct TextCase {
  std::uint64_t done;
  std::optional<std::uint64_t> total;
  double seconds;
  const char* text;
};

TEST(ProgressText, TellsShareRateAndTimeLeft) {
  for (const auto& [done, total, seconds, text] :
       {TextCase{5, 10, 2.0, "[##########          ]  50 %  5/10 scans  2.5 scans/s  2 s left"},
        TextCase{0, 10, 0.0, "[                    ]   0 %  0/10 scans  0.0 scans/s"},
        TextCase{10, 10, 4.0, "[####################] 100 %  10/10 scans  2.5 scans/s  0 s left"},
        TextCase{11, 10, 1.0, "[####################] 100 %  11/10 scans  11.0 scans/s  0 s left"},
        TextCase{7, std::nullopt, 2.0, "7 scans  3.5 scans/s"}, TextCase{3, 0, 1.0, "3 scans  3.0 scans/s"}})
    EXPECT_EQ(ProgressText(done, total, seconds, "scans"), text);
}

TEST(Progress, ShowsNothingWhereStandardErrorIsNoTerminal) {
  testing::internal::CaptureStderr();
  {
    Progress progress(2, "scans");
    progress.Step();
    std::this_thread::sleep_for(std::chrono::milliseconds(120));
    progress.Step();
  }
  EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
}

// What a terminal receives while `action` runs.
std::string OnATerminal(const std::function<void()>& action) {
  const int screen = posix_openpt(O_RDWR | O_NOCTTY | O_NONBLOCK);
  grantpt(screen);
  unlockpt(screen);
  const int terminal = open(ptsname(screen), O_RDWR | O_NOCTTY);
  const int before = dup(STDERR_FILENO);
  dup2(terminal, STDERR_FILENO);
  action();
  std::fflush(stderr);
  dup2(before, STDERR_FILENO);
  char text[1000];
  const ssize_t size = read(screen, text, sizeof text);
  for (const int file : {before, terminal, screen}) close(file);
  return std::string(text, static_cast<std::size_t>(std::max<ssize_t>(size, 0)));
}

TEST(Progress, DrawsItsBarOnATerminalAndTakesItOffAgain) {
  const std::string text = OnATerminal([] {
    Progress progress(2, "scans");
    std::this_thread::sleep_for(std::chrono::milliseconds(120));
    progress.Step();
  });
  EXPECT_NE(text.find("[##########          ]  50 %  1/2 scans"), std::string::npos) << text;
  EXPECT_EQ(text.substr(text.size() - 4), "\r\033[K");
}

TEST(Progress, DrawsSeldom) {
  const std::string text = OnATerminal([] {
    Progress progress(1000, "scans");
    for (int i = 0; i < 1000; ++i) progress.Step();
  });
  EXPECT_LE(text.size(), 5000U);  // a thousand drawings take 60,000
}

}  // namespace
}  // namespace TslTest
