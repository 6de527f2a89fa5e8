#include <tool/frame/Progress.h>

#include <fmt/format.h>
#include <unistd.h>

#include <algorithm>
#include <cstdio>
#include <utility>

namespace TslTool {
namespace {

using Clock = std::chrono::steady_clock;
constexpr auto kRedraw = std::chrono::milliseconds(100);
constexpr std::uint64_t kBarWidth = 20;

}  // namespace

std::string ProgressText(std::uint64_t done, std::optional<std::uint64_t> total, double seconds,
                         const std::string& unit) {
  const double rate = seconds > 0.0 ? static_cast<double>(done) / seconds : 0.0;
  if (!total || *total == 0) return fmt::format("{} {}  {:.1f} {}/s", done, unit, rate, unit);
  const std::uint64_t shown = std::min(done, *total);
  const std::uint64_t filled = shown * kBarWidth / *total;
  std::string text =
      fmt::format("[{}{}] {:3} %  {}/{} {}  {:.1f} {}/s", std::string(filled, '#'),
                  std::string(kBarWidth - filled, ' '), shown * 100 / *total, done, *total, unit, rate, unit);
  if (rate > 0.0) text += fmt::format("  {:.0f} s left", static_cast<double>(*total - shown) / rate);
  return text;
}

Progress::Progress(std::optional<std::uint64_t> total, std::string unit)
    : Progress(total, std::move(unit), isatty(STDERR_FILENO) == 1 ? stderr : nullptr) {}

Progress::Progress(std::optional<std::uint64_t> total, std::string unit, std::FILE* screen)
    : total_(total), unit_(std::move(unit)), screen_(screen), start_(Clock::now()), drawn_(start_) {}

Progress::~Progress() {
  if (screen_ != nullptr) std::fputs("\r\033[K", screen_);
}

void Progress::Step() {
  ++done_;
  if (screen_ != nullptr && Clock::now() - drawn_ >= kRedraw) Draw();
}

void Progress::Draw() {
  drawn_ = Clock::now();
  const double seconds = std::chrono::duration<double>(drawn_ - start_).count();
  std::fputs(("\r\033[K" + ProgressText(done_, total_, seconds, unit_)).c_str(), screen_);
  std::fflush(screen_);
}

}  // namespace TslTool
