#include <tool/io/TraceAxis.h>

#include <fmt/format.h>

#include <tool/frame/InputError.h>
#include <tool/io/Axis.h>
#include <algorithm>
#include <cmath>
#include <functional>

namespace TslTool {
namespace {

constexpr double kDescending = 0.9;  // of the steps that are any
constexpr double kTwice = 1.1;       // of the time from the first to the last, run through
// Points in any order ascend two by two on average.
constexpr std::size_t kLongRun = 4;

bool Descends(const std::vector<double>& times) {
  std::size_t falls = 0;
  std::size_t rises = 0;
  for (std::size_t i = 1; i < times.size(); ++i) {
    falls += times[i] < times[i - 1];
    rises += times[i] > times[i - 1];
  }
  return falls > 1 && static_cast<double>(falls) > kDescending * static_cast<double>(falls + rises);
}

bool BeginAgain(const std::vector<double>& times) {
  std::size_t runs = 1;
  double covered = 0.0;
  for (std::size_t i = 1; i < times.size(); ++i) {
    if (times[i] < times[i - 1])
      ++runs;
    else
      covered += times[i] - times[i - 1];
  }
  const auto [first, last] = std::ranges::minmax(times);
  return times.size() >= kLongRun * runs && covered > kTwice * (last - first);
}

class Times {
 public:
  Times(const std::string& file, std::vector<std::uint64_t> lines, double secondsPerUnit, Trace& trace)
      : file_(file),
        lines_(std::move(lines)),
        unit_(secondsPerUnit),
        times_(trace.seconds),
        values_(trace.values) {}

  SettledTimes Settle() {
    if (Ascends(times_)) return {};
    if (Descends(times_)) TurnRound();
    if (!std::ranges::is_sorted(times_)) Sort();
    Merge();
    return std::move(told_);
  }

 private:
  // Fewer digits than a number has, so that it reads as in the file whatever its unit.
  std::string AsInFile(double seconds) const { return fmt::format("{:.15g}", seconds / unit_); }

  void TurnRound() {
    std::ranges::reverse(times_);
    std::ranges::reverse(values_);
    std::ranges::reverse(lines_);
    isTurned_ = true;
    told_.notes.emplace_back("times descend, turned round");
  }

  void Sort() {
    const auto fall = std::ranges::adjacent_find(times_, std::greater()) + 1;
    const auto at = static_cast<std::size_t>(fall - times_.begin());
    // Of points that were turned round, the second of the two stands first in the file.
    const std::size_t here = isTurned_ ? at - 1 : at;
    const std::size_t before = isTurned_ ? at : at - 1;
    const std::string place = "line " + std::to_string(lines_[here]);
    if (BeginAgain(times_))
      throw InputError(
          file_, place,
          fmt::format("times begin again, {} behind {} of line {}; of several traces, write each "
                      "to a file of its own",
                      AsInFile(times_[here]), AsInFile(times_[before]), lines_[before]));
    told_.warnings.push_back(fmt::format("times out of order, sorted (first at {})", place));
    SortPeaks(times_, values_);
  }

  void Merge() {
    const std::size_t merged = RepairAxis(times_, values_).merged;
    if (merged == 0) return;
    const auto notFinite = std::ranges::find_if(values_, [](double value) { return !std::isfinite(value); });
    if (notFinite != values_.end())
      throw InputError(file_, "",
                       fmt::format("points at the time {} are too large to be averaged",
                                   AsInFile(times_[static_cast<std::size_t>(notFinite - values_.begin())])));
    told_.notes.push_back(fmt::format("{} point{} of equal time averaged", merged, merged == 1 ? "" : "s"));
  }

  const std::string& file_;
  std::vector<std::uint64_t> lines_;
  double unit_;
  std::vector<double>& times_;
  std::vector<double>& values_;
  bool isTurned_ = false;
  SettledTimes told_;
};

}  // namespace

SettledTimes SettleTimes(const std::string& file, std::vector<std::uint64_t> lines, double secondsPerUnit,
                         Trace& trace) {
  return Times(file, std::move(lines), secondsPerUnit, trace).Settle();
}

}  // namespace TslTool
