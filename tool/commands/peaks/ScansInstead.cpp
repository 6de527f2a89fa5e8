#include <tool/commands/peaks/ScansInstead.h>

#include <fmt/format.h>

#include <tool/frame/Interrupt.h>
#include <tool/io/OpenScans.h>
#include <tool/io/RunFile.h>
#include <algorithm>
#include <limits>

namespace TslTool {
namespace {

struct Numbers {
  std::uint64_t count = 0;
  std::uint32_t first = std::numeric_limits<std::uint32_t>::max();
  std::uint32_t last = 0;
  bool isWantedThere = false;

  void Add(std::uint32_t number, const ScanFilter& wanted) {
    ++count;
    first = std::min(first, number);
    last = std::max(last, number);
    isWantedThere = isWantedThere || wanted.WantsNumber(number);
  }
  bool HaveNoGaps() const { return last - first + std::uint64_t{1} == count; }
};

Numbers NumbersOf(const std::string& input, const ScanFilter& wanted) {
  Numbers numbers;
  if (input.empty()) {
    const std::uint64_t scans = OpenSpectra("", {})->Count().value_or(0);
    for (std::uint32_t number = 1; number <= scans; ++number) numbers.Add(number, wanted);
  } else if (IsDatabase(input)) {
    RunReader reader(input);
    for (PackedScan scan; reader.Next(scan); ThrowIfInterrupted()) numbers.Add(scan.number, wanted);
  } else {
    ScanFilter all;
    all.columns = wanted.columns;
    const auto source = OpenScans(input);
    source->SetFilter(all);
    for (Scan scan; source->Next(scan); ThrowIfInterrupted()) numbers.Add(scan.number, wanted);
  }
  return numbers;
}

}  // namespace

std::string ScansInstead(const std::string& input, const SpectrumChoice& wanted) {
  if (wanted.filter.numbers.empty()) return "";
  const Numbers numbers = NumbersOf(input, wanted.filter);
  if (numbers.isWantedThere || numbers.count == 0) return "";
  if (numbers.count == 1) return fmt::format(": its only scan is {}", numbers.first);
  if (numbers.HaveNoGaps()) return fmt::format(": its scans are {} to {}", numbers.first, numbers.last);
  return fmt::format(": it has {} scans from {} to {}", numbers.count, numbers.first, numbers.last);
}

}  // namespace TslTool
