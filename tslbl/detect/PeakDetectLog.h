#pragma once
// What peak detection tells the logger "tbb". Nothing is built, and no clock read, unless
// the level is on.

#include <tslbl/detect/FeatureRows.h>
#include <chrono>
#include <cstdint>

namespace TslBL {

// Reports at Info level how long the scope took.
class StageTimer {
 public:
  explicit StageTimer(const wchar_t* name);
  StageTimer(const StageTimer&) = delete;
  StageTimer& operator=(const StageTimer&) = delete;
  ~StageTimer();

  // Whether such messages would be written.
  bool IsHeard() const { return on_; }

 private:
  const wchar_t* name_;
  bool on_;
  std::chrono::steady_clock::time_point start_;
};

void LogFeatures(const Curve& curve, const FeatureRows& found);
void LogPartialOverlap(std::uint32_t a, std::uint32_t b);

}  // namespace TslBL
