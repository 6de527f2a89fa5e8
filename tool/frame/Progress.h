#pragma once
// A progress bar with rate and time left, on standard error and only if that is a terminal.

#include <chrono>
#include <cstdint>
#include <cstdio>
#include <optional>
#include <string>

namespace TslTool {

class Progress {
 public:
  // `total` items in all, if known; `unit` such as "scans".
  Progress(std::optional<std::uint64_t> total, std::string unit);
  // The same on a screen of the caller's choice; null shows nothing.
  Progress(std::optional<std::uint64_t> total, std::string unit, std::FILE* screen);
  // Takes the bar off the screen.
  ~Progress();
  Progress(const Progress&) = delete;
  Progress& operator=(const Progress&) = delete;

  // One more item is done. Draws at most ten times a second.
  void Step();

 private:
  void Draw();

  std::optional<std::uint64_t> total_;
  std::string unit_;
  std::FILE* screen_;
  std::uint64_t done_ = 0;
  std::chrono::steady_clock::time_point start_;
  std::chrono::steady_clock::time_point drawn_;
};

// The text of the bar: "[#####     ]  50 %  5/10 scans  2.5 scans/s  2 s left".
std::string ProgressText(std::uint64_t done, std::optional<std::uint64_t> total, double seconds,
                         const std::string& unit);

}  // namespace TslTool
