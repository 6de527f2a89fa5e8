#include <tool/io/Axis.h>

#include <algorithm>
#include <cmath>
#include <functional>
#include <numeric>
#include <utility>

namespace TslTool {

namespace {

// A segment begins and ends with zeros.
void DropZeros(std::vector<double>& mz, std::vector<double>& amplitude, AxisRepair& repair) {
  std::size_t out = 0;
  for (std::size_t i = 0; i < mz.size(); ++i) {
    const bool stepsBack = out > 0 && mz[i] < mz[out - 1] && (out < 2 || mz[i] >= mz[out - 2]);
    if (stepsBack && amplitude[i] == 0.0 && amplitude[out - 1] != 0.0) {
      ++repair.dropped;
      if (!repair.first) repair.first = i;
      continue;
    }
    mz[out] = mz[i];
    amplitude[out++] = amplitude[i];
  }
  mz.resize(out);
  amplitude.resize(out);
}

void ExchangeNeighbours(std::vector<double>& mz, std::vector<double>& amplitude, AxisRepair& repair) {
  std::optional<std::size_t> moved;  // where the larger point of the last exchange stands now
  for (std::size_t i = 1; i < mz.size(); ++i) {
    if (!(mz[i] < mz[i - 1])) continue;
    const bool fits = i < 2 || mz[i] >= mz[i - 2];
    if (!fits || moved == i - 1) {
      repair.disorder = i;
      return;
    }
    std::swap(mz[i], mz[i - 1]);
    std::swap(amplitude[i], amplitude[i - 1]);
    moved = i;
    ++repair.exchanged;
    if (!repair.first) repair.first = i;
  }
}

void MergeEquals(std::vector<double>& mz, std::vector<double>& amplitude, AxisRepair& repair) {
  std::size_t out = 0;
  for (std::size_t i = 0; i < mz.size();) {
    std::size_t end = i;
    double sum = 0;
    for (; end < mz.size() && mz[end] == mz[i]; ++end) sum += amplitude[end];
    const std::size_t count = end - i;
    if (count > 1) {
      repair.merged += count - 1;
      repair.first = std::min(repair.first.value_or(i + 1), i + 1);
    }
    mz[out] = mz[i];
    amplitude[out++] = count > 1 ? sum / static_cast<double>(count) : amplitude[i];
    i = end;
  }
  mz.resize(out);
  amplitude.resize(out);
}

std::string Number(std::size_t count, const char* one, const char* many) {
  return std::to_string(count) + " " + (count == 1 ? one : many);
}

}  // namespace

bool Ascends(const std::vector<double>& mz) {
  return std::ranges::all_of(mz, [](double value) { return std::isfinite(value); }) &&
         std::ranges::adjacent_find(mz, std::greater_equal<>()) == mz.end();
}

AxisRepair RepairAxis(std::vector<double>& mz, std::vector<double>& amplitude) {
  AxisRepair repair;
  const auto notAscending = std::adjacent_find(mz.begin(), mz.end(), std::greater_equal<>());
  if (notAscending == mz.end()) return repair;
  DropZeros(mz, amplitude, repair);
  ExchangeNeighbours(mz, amplitude, repair);
  if (!repair.disorder) MergeEquals(mz, amplitude, repair);
  return repair;
}

std::string DescribeRepair(const AxisRepair& repair, const std::string& firstPlace) {
  if (!repair.first) return "";
  std::string text = "m/z does not ascend everywhere (first at " + firstPlace + "): ";
  if (repair.exchanged)
    text += Number(repair.exchanged, "pair", "pairs") + " of neighbouring points put in order";
  if (repair.dropped)
    text += std::string(repair.exchanged ? ", " : "") + Number(repair.dropped, "zero", "zeros") +
            " that stepped back left out";
  if ((repair.exchanged || repair.dropped) && repair.merged) text += ", ";
  if (repair.merged) text += Number(repair.merged, "point", "points") + " with a repeated m/z averaged";
  return text;
}

void SortPeaks(std::vector<double>& mz, std::vector<double>& amplitude) {
  if (std::is_sorted(mz.begin(), mz.end())) return;
  std::vector<std::size_t> order(mz.size());
  std::iota(order.begin(), order.end(), std::size_t{0});
  std::stable_sort(order.begin(), order.end(), [&](std::size_t a, std::size_t b) { return mz[a] < mz[b]; });
  std::vector<double> sortedMz(mz.size()), sortedAmplitude(mz.size());
  for (std::size_t i = 0; i < order.size(); ++i) {
    sortedMz[i] = mz[order[i]];
    sortedAmplitude[i] = amplitude[order[i]];
  }
  mz.swap(sortedMz);
  amplitude.swap(sortedAmplitude);
}

}  // namespace TslTool
