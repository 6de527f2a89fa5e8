#include <tool/io/TextAxis.h>

#include <fmt/format.h>

#include <tool/frame/InputError.h>
#include <tool/io/Axis.h>

#include <algorithm>
#include <cmath>
#include <functional>
#include <optional>
#include <utility>

namespace TslTool {

namespace {

// Fewer points show nothing.
constexpr std::size_t kFewest = 12;
constexpr double kDescending = 0.9;   // of the steps
constexpr double kManyRepeats = 0.1;  // of the points
// Points in any order ascend two by two on average.
constexpr std::size_t kLongRun = 4;
constexpr double kEven = 1.5;
constexpr double kFarOff = 5.0;  // steps
constexpr const char* kIfTotal = "if it is a total, remove it or begin it with #";
constexpr const char* kIfHeading = "if it is a heading, remove it or begin it with #";

bool Descends(const std::vector<double>& mz) {
  std::size_t falls = 0;
  for (std::size_t i = 1; i < mz.size(); ++i) falls += mz[i] < mz[i - 1];
  return mz.size() > 2 && static_cast<double>(falls) > kDescending * static_cast<double>(mz.size() - 1);
}

struct Run {
  double from, to;
};

std::vector<Run> RunsOf(const std::vector<double>& mz) {
  std::vector<Run> runs = {{mz.front(), mz.front()}};
  for (std::size_t i = 1; i < mz.size(); ++i) {
    if (mz[i] < mz[i - 1]) runs.push_back({mz[i], mz[i]});
    runs.back().to = mz[i];
  }
  return runs;
}

bool Overlap(std::vector<Run> runs) {
  std::ranges::sort(runs, {}, &Run::from);
  const auto isInside = [](const Run& run, const Run& next) { return next.from <= run.to; };
  return std::ranges::adjacent_find(runs, isInside) != runs.end();
}

std::size_t CountRepeats(std::vector<double> mz) {
  std::ranges::sort(mz);
  return static_cast<std::size_t>(mz.end() - std::unique(mz.begin(), mz.end()));
}

bool AreSeveralSpectra(const std::vector<double>& mz) {
  const std::vector<Run> runs = RunsOf(mz);
  if (mz.size() >= kLongRun * runs.size() && Overlap(runs)) return true;
  return static_cast<double>(CountRepeats(mz)) >= kManyRepeats * static_cast<double>(mz.size());
}

class TextAxis {
 public:
  TextAxis(const std::string& file, const std::vector<std::uint64_t>& lines, const ColumnPair& columns,
           Scan& scan)
      : file_(file), lines_(lines), columns_(columns), mz_(scan.mz), amplitude_(scan.amplitude) {}

  std::vector<std::string> Settle() {
    TellFarOffHeading();
    TellFarOffTotal();
    if (Ascends(mz_)) return std::move(told_);
    RefuseSwapped();
    if (Descends(mz_)) TurnRound();
    RequireFirstInOrder();
    Repair();
    return std::move(told_);
  }

 private:
  std::string PlaceOf(std::size_t index) const { return "line " + std::to_string(lines_[index]); }

  [[noreturn]] void Refuse(std::size_t index, const std::string& reason) const {
    throw InputError(file_, PlaceOf(index), reason);
  }

  // The largest of the steps between so many points from here on; nothing if they are not even.
  std::optional<double> EvenStepFrom(std::size_t begin) const {
    double least = mz_[begin + 1] - mz_[begin], most = least;
    for (std::size_t i = begin + 2; i < begin + kFewest - 1; ++i) {
      least = std::min(least, mz_[i] - mz_[i - 1]);
      most = std::max(most, mz_[i] - mz_[i - 1]);
    }
    return least > 0 && most <= kEven * least ? std::optional(most) : std::nullopt;
  }

  void TellFarOffHeading() {
    if (mz_.size() < kFewest) return;
    if (const auto step = EvenStepFrom(1); step && mz_[1] - mz_[0] > kFarOff * *step)
      told_.push_back(fmt::format("m/z {} of {} is far off those that follow from {} on; {}", mz_[0],
                                  PlaceOf(0), mz_[1], kIfHeading));
  }

  // A spectrum may end with a single 0.
  void TellFarOffTotal() {
    if (mz_.size() < kFewest || amplitude_.back() == 0.0) return;
    const std::size_t last = mz_.size() - 1;
    if (const auto step = EvenStepFrom(last - kFewest + 1);
        step && mz_[last] - mz_[last - 1] > kFarOff * *step)
      told_.push_back(fmt::format("m/z {} of {} is far off those before it, which end at {}; {}", mz_[last],
                                  PlaceOf(last), mz_[last - 1], kIfTotal));
  }

  void RefuseSwapped() const {
    if (mz_.size() < 3 || !Ascends(amplitude_)) return;
    const auto fall = std::ranges::adjacent_find(mz_, std::greater_equal<>()) + 1;
    Refuse(static_cast<std::size_t>(fall - mz_.begin()),
           fmt::format("m/z does not ascend and the amplitudes do; if they are exchanged, --columns {},{}",
                       columns_.amplitude + 1, columns_.mz + 1));
  }

  void TurnRound() {
    std::ranges::reverse(mz_);
    std::ranges::reverse(amplitude_);
    std::ranges::reverse(lines_);
    isTurned_ = true;
    told_.push_back("m/z descends, turned round");
  }

  void RequireFirstInOrder() const {
    if (isTurned_ || mz_.size() < kFewest || mz_[0] <= mz_[1]) return;
    if (std::adjacent_find(mz_.begin() + 1, mz_.end(), std::greater_equal<>()) == mz_.end())
      Refuse(0, fmt::format("m/z {} stands before {}, from where on they ascend; {}", mz_[0], mz_[1],
                            kIfHeading));
  }

  void Repair() {
    const std::vector<double> mz = mz_;
    const std::vector<double> amplitude = amplitude_;
    AxisRepair repair = RepairAxis(mz_, amplitude_);
    if (repair.disorder) {
      mz_ = mz;
      amplitude_ = amplitude;
      Sort();
      return;
    }
    if (!repair.first) return;
    const bool isHeading = repair.merged == 1 && repair.exchanged == 0 && repair.first == 1 && !isTurned_ &&
                           mz_.size() >= kFewest;
    told_.push_back(
        isHeading ? fmt::format("m/z {} of {} is that of the line behind it, and no other is repeated: both "
                                "averaged; {}",
                                mz_[0], PlaceOf(0), kIfHeading)
                  : DescribeRepair(repair, PlaceOf(*repair.first)));
  }

  void Sort() {
    const auto fall = std::ranges::adjacent_find(mz_, std::greater<>()) + 1;
    const auto index = static_cast<std::size_t>(fall - mz_.begin());
    if (AreSeveralSpectra(mz_)) RefuseSeveral(index);
    told_.push_back(fmt::format("m/z out of order, sorted (first at {})", PlaceOf(index)));
    SortPeaks(mz_, amplitude_);
    if (const AxisRepair repair = RepairAxis(mz_, amplitude_); repair.merged > 0)
      told_.push_back(fmt::format("{} point{} with a repeated m/z averaged", repair.merged,
                                  repair.merged == 1 ? "" : "s"));
  }

  // Of points that were turned round, the second of the two stands first in the file.
  [[noreturn]] void RefuseSeveral(std::size_t index) const {
    const std::size_t here = isTurned_ ? index - 1 : index;
    const std::size_t before = isTurned_ ? index : index - 1;
    Refuse(here, fmt::format("m/z begins anew, {} behind {}; of several spectra, write each to a file of its "
                             "own",
                             mz_[here], mz_[before]));
  }

  const std::string& file_;
  std::vector<std::uint64_t> lines_;
  ColumnPair columns_;
  std::vector<double>& mz_;
  std::vector<double>& amplitude_;
  bool isTurned_ = false;
  std::vector<std::string> told_;
};

}  // namespace

std::vector<std::string> SettleTextAxis(const std::string& file, const std::vector<std::uint64_t>& lines,
                                        const ColumnPair& columns, Scan& scan) {
  return TextAxis(file, lines, columns, scan).Settle();
}

}  // namespace TslTool
