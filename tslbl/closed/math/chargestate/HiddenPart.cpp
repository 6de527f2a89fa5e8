#include <tslbl/closed/math/chargestate/HiddenPart.h>

#include <tslbl/closed/math/Median.h>
#include <tslbl/closed/math/chargestate/SeriesMass.h>

#include <algorithm>
#include <cmath>
#include <vector>

namespace TslMath {
namespace {

constexpr std::size_t kLeastCharges = 7;
const double kLeastExcess = std::log(1.35);
// Of the median, if charges were independent; noise of one charge is in three that follow each other.
constexpr double kLeastScatters = 8.0;
constexpr double kShareOutstanding = 0.8;
constexpr double kOfMedianStep = 1.0484;  // standard deviations in the median step between two normal numbers

// Natural logarithms of the intensities from the lowest charge to the highest.
std::vector<double> LogIntensities(const ChargeSeries& series, std::span<const IonPeak> peaks) {
  const std::int32_t first = series.members.front().charge;
  const std::size_t charges = static_cast<std::size_t>(series.members.back().charge - first) + 1;
  double least = peaks[series.members.front().peak].intensity;
  for (const SeriesMember& member : series.members) least = std::min(least, peaks[member.peak].intensity);
  std::vector<double> logs(charges, std::log(least));
  for (const SeriesMember& member : series.members)
    logs[static_cast<std::size_t>(member.charge - first)] = std::log(peaks[member.peak].intensity);
  return logs;
}

// By how much each charge between the ends stands out of its two neighbours, as a logarithm of what the part
// makes of a multiple of the number of parts: that raises it by all, and lowers each of its neighbours by
// half.
std::vector<double> OutstandingOf(const std::vector<double>& logs, std::int32_t first, std::int32_t parts) {
  const double ofOthers = parts == 2 ? -1.0 : -0.5;  // have two such neighbours, or one
  std::vector<double> outstanding;
  for (std::size_t i = 1; i + 1 < logs.size(); ++i) {
    const double bend = logs[i] - 0.5 * (logs[i - 1] + logs[i + 1]);
    const bool isMultiple = (first + static_cast<std::int32_t>(i)) % parts == 0;
    outstanding.push_back(isMultiple ? bend : bend / ofOthers);
  }
  return outstanding;
}

// Of one charge against the next, as what the part makes changes slowly.
double ScatterOf(const std::vector<double>& outstanding) {
  std::vector<double> steps;
  for (std::size_t i = 1; i < outstanding.size(); ++i)
    steps.push_back(std::abs(outstanding[i] - outstanding[i - 1]));
  return kOfMedianStep * Median(std::move(steps));
}

bool AreOutstanding(const std::vector<double>& outstanding) {
  const double usual = Median(std::vector<double>(outstanding));
  const auto all = static_cast<double>(outstanding.size());
  if (usual < kLeastExcess || usual < kLeastScatters * ScatterOf(outstanding) / std::sqrt(all)) return false;
  const auto clear =
      std::ranges::count_if(outstanding, [](double each) { return each > 0.5 * kLeastExcess; });
  return static_cast<double>(clear) >= kShareOutstanding * all;
}

}  // namespace

std::optional<ChargeSeries> HiddenPart(const ChargeSeries& series, std::span<const IonPeak> peaks,
                                       std::int32_t parts, std::size_t least, double carrierMass) {
  ChargeSeries part;
  for (const SeriesMember& member : series.members)
    if (member.charge % parts == 0) part.members.push_back({member.charge / parts, member.peak, 0.0, 0.0});
  if (part.members.size() < least) return std::nullopt;
  const std::vector<double> logs = LogIntensities(series, peaks);
  if (logs.size() < kLeastCharges ||
      !AreOutstanding(OutstandingOf(logs, series.members.front().charge, parts)))
    return std::nullopt;
  part.score =
      series.score * static_cast<double>(part.members.size()) / static_cast<double>(series.members.size());
  UpdateMass(peaks, carrierMass, part);
  return part;
}

}  // namespace TslMath
