#include <tool/commands/chrom/GatherScans.h>

#include <fmt/format.h>

#include <tool/frame/InputError.h>
#include <algorithm>
#include <cmath>
#include <set>

namespace TslTool {
namespace {

constexpr std::size_t kTic = 0;
constexpr std::size_t kBasePeak = 1;
constexpr std::size_t kOwnCurves = 2;
constexpr std::size_t kFewestPoints = 2;

std::string PlaceOf(std::uint32_t scan) { return fmt::format("scan {}", scan); }

std::string PolarityText(int polarity) {
  if (polarity == 0) return "no polarity told";
  return polarity > 0 ? "positive" : "negative";
}

// Of higher levels a function has no meaning of its own: what it isolates follows the sample.
bool HasOwnFunctions(int level) { return level <= 1; }

std::string Counted(std::uint64_t count) { return fmt::format("{} scan{}", count, count == 1 ? "" : "s"); }

}  // namespace

GatherScans::Kind GatherScans::KindOf(const ScanPoint& point) {
  return {point.msLevel, point.polarity, point.tune, HasOwnFunctions(point.msLevel) ? point.function : 0};
}

GatherScans::GatherScans(std::string file, const CurveChoice& choice, bool isMean, bool isOneLevel)
    : file_(std::move(file)),
      choice_(choice),
      isMean_(isMean),
      isOneLevel_(isOneLevel),
      pointsIn_(choice.Ranges().size()) {}

void GatherScans::Add(const ScanPoint& point) {
  ++scans_;
  if (std::isnan(point.rtSeconds))
    throw InputError(file_, PlaceOf(point.scan),
                     "has no retention time, so that it is no point of a chromatogram");
  Group& group = groups_[KindOf(point)];
  if (!group.seconds.empty() && !(point.rtSeconds > group.seconds.back()))
    throw InputError(
        file_, PlaceOf(point.scan),
        fmt::format("its retention time {} s does not come after the {} s of scan {}; --scan and "
                    "--rt choose scans",
                    point.rtSeconds, group.seconds.back(), group.scans.back()));
  AddPoint(point, group);
  for (std::size_t i = 0; i < pointsIn_.size(); ++i) pointsIn_[i] += point.ranges[i].points;
  if (point.mzFrom == 0.0 && point.mzTo == 0.0) return;
  mzFrom_ = hasPoints_ ? std::min(mzFrom_, point.mzFrom) : point.mzFrom;
  mzTo_ = hasPoints_ ? std::max(mzTo_, point.mzTo) : point.mzTo;
  hasPoints_ = true;
}

void GatherScans::AddPoint(const ScanPoint& point, Group& group) {
  group.columns.resize(kOwnCurves + choice_.Count());
  group.seconds.push_back(point.rtSeconds);
  group.scans.push_back(point.scan);
  group.isCounted &= point.countAmpl > 0.0;
  std::vector<double> values;
  for (const RangeValue& range : point.ranges) values.push_back(isMean_ ? range.Mean() : range.sum);
  std::vector<double> points;
  choice_.Points(values, points);
  const auto add = [&](Column& column, double value, double ions) {
    column.values.push_back(value);
    if (group.isCounted) column.variance.push_back(point.countAmpl * ions);
  };
  add(group.columns[0], point.tic, point.tic);
  add(group.columns[1], point.basePeak, point.basePeak);
  for (std::size_t i = 0; i < points.size(); ++i)
    add(group.columns[kOwnCurves + i], points[i], RangeVariance(point, i));
}

// In units of the amplitude of one count. Ranges that overlap count as if they did not.
double GatherScans::RangeVariance(const ScanPoint& point, std::size_t curve) const {
  const std::vector<double>& weights = choice_.Weights(curve);
  double sum = 0.0;
  for (std::size_t i = 0; i < weights.size(); ++i) {
    const RangeValue& range = point.ranges[i];
    const double share = isMean_ && range.points > 0 ? 1.0 / static_cast<double>(range.points) : 1.0;
    sum += weights[i] * weights[i] * share * share * range.sum;
  }
  return sum;
}

// 1 if there is one, else the lowest.
int GatherScans::LevelTaken() const {
  const bool hasFirst =
      std::ranges::any_of(groups_, [](const auto& group) { return group.first.level == 1; });
  return hasFirst ? 1 : groups_.begin()->first.level;
}

bool GatherScans::IsTaken(const Kind& kind) const { return isOneLevel_ || kind.level == LevelTaken(); }

// What tells the curves of several kinds of scans apart.
std::string GatherScans::SuffixOf(const Kind& kind) const {
  std::set<int> polarities;
  std::set<std::uint32_t> tunes;
  std::set<std::uint32_t> functions;
  for (const auto& [other, group] : groups_) {
    if (!IsTaken(other)) continue;
    polarities.insert(other.polarity);
    tunes.insert(other.tune);
    functions.insert(other.function);
  }
  std::string suffix;
  if (polarities.size() > 1) suffix += fmt::format(" ({})", PolarityText(kind.polarity));
  if (tunes.size() > 1) suffix += fmt::format(" (tune {})", kind.tune);
  if (functions.size() > 1)
    suffix += kind.function == 0 ? " (no function)" : fmt::format(" (function {})", kind.function);
  return suffix;
}

std::string GatherScans::TextOf(const Kind& kind) const {
  std::string text = kind.level == 0 ? "of no MS level" : fmt::format("of MS level {}", kind.level);
  return text + SuffixOf(kind);
}

Chromatogram GatherScans::CurveOf(const Group& group, std::size_t index, const std::string& suffix) const {
  Chromatogram curve;
  if (index == kTic) {
    curve.name = "TIC";
    curve.title = "total ion current";
  } else if (index == kBasePeak) {
    curve.name = "BPC";
    curve.title = "base peak";
  } else {
    curve.name = choice_.Name(index - kOwnCurves);
    curve.title = "m/z " + choice_.Title(index - kOwnCurves);
  }
  curve.name += suffix;
  curve.title += suffix;
  curve.seconds = group.seconds;
  curve.scans = group.scans;
  curve.values = group.columns[index].values;
  // The largest of many counts varies less than a count.
  if (group.isCounted && index != kBasePeak) curve.variance = group.columns[index].variance;
  return curve;
}

std::vector<Chromatogram> GatherScans::Curves() const {
  std::vector<Chromatogram> curves;
  for (const auto& [kind, group] : groups_) {
    if (!IsTaken(kind) || group.seconds.size() < kFewestPoints) continue;
    for (std::size_t i = 0; i < group.columns.size(); ++i)
      curves.push_back(CurveOf(group, i, SuffixOf(kind)));
  }
  if (curves.empty())
    throw InputError(file_, "",
                     fmt::format("holds {} that {} asked for{}; a chromatogram has two at least",
                                 Counted(scans_), scans_ == 1 ? "was" : "were",
                                 scans_ == 1 ? "" : ", each of a tune, polarity or function of its own"));
  return curves;
}

std::vector<std::string> GatherScans::Notes() const {
  std::map<int, std::uint64_t> others;
  for (const auto& [kind, group] : groups_)
    if (!IsTaken(kind)) others[kind.level] += group.seconds.size();
  std::vector<std::string> notes;
  notes.reserve(others.size());
  for (const auto& [level, count] : others)
    notes.push_back(
        fmt::format("{} of MS level {} left out; --ms-level {} takes them", Counted(count), level, level));
  return notes;
}

std::vector<std::string> GatherScans::Warnings() const {
  std::vector<std::string> warnings;
  std::uint64_t kinds = 0;
  for (const auto& [kind, group] : groups_) {
    if (!IsTaken(kind)) continue;
    ++kinds;
    if (group.seconds.size() < kFewestPoints)
      warnings.push_back(fmt::format("one scan {} left out, as it makes no chromatogram", TextOf(kind)));
  }
  if (kinds > 1)
    warnings.push_back(fmt::format(
        "scans of {} polarities, tunes or functions are not mixed: each has curves of its own", kinds));
  for (std::size_t i = 0; i < pointsIn_.size(); ++i) {
    if (pointsIn_[i] > 0) continue;
    const ExtractedRange& range = choice_.Ranges()[i];
    const bool isOutside = hasPoints_ && (range.to < mzFrom_ || range.from > mzTo_);
    warnings.push_back(
        fmt::format("no scan has a point in the range {}", range.Text()) +
        (isOutside ? fmt::format(", which lies outside of m/z {} to {} that the scans have", mzFrom_, mzTo_)
                   : ""));
  }
  return warnings;
}

}  // namespace TslTool
