#include <gtest/gtest.h>

#include <chrono>
#include <cstdio>
#include <functional>
#include <optional>
#include <string>
#include <thread>

#include <tool/frame/Progress.h>

namespace tests {
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

// What a screen receives while `use` runs.
std::string OnAScreen(std::optional<std::uint64_t> total, const std::function<void(Progress&)>& use) {
  std::FILE* screen = std::tmpfile();
  {
    Progress progress(total, "scans", screen);
    use(progress);
  }
  std::rewind(screen);
  std::string text(10000, '\0');
  text.resize(std::fread(text.data(), 1, text.size(), screen));
  std::fclose(screen);
  return text;
}

TEST(Progress, DrawsItsBarAndTakesItOffAgain) {
  const std::string text = OnAScreen(2, [](Progress& progress) {
    std::this_thread::sleep_for(std::chrono::milliseconds(120));
    progress.Step();
  });
  EXPECT_NE(text.find("[##########          ]  50 %  1/2 scans"), std::string::npos) << text;
  EXPECT_TRUE(text.ends_with("\r\033[K"));
}

TEST(Progress, DrawsSeldom) {
  const std::string text = OnAScreen(1000, [](Progress& progress) {
    for (int i = 0; i < 1000; ++i) progress.Step();
  });
  EXPECT_LE(text.size(), 5000U);  // a thousand drawings take 60,000
}

}  // namespace
}  // namespace tests
