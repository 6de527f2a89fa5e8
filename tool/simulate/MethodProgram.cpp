#include <tool/simulate/MethodProgram.h>

#include <fmt/format.h>

#include <tslbl/tune/rules/DevTuneRules.h>
#include <algorithm>
#include <cmath>
#include <limits>
#include <numeric>
#include <stdexcept>

namespace TslTool {
namespace {

using TslBL::MethodRules;

constexpr double kMicrosecondsAMillisecond = 1000.0;
constexpr double kMostMilliseconds = std::numeric_limits<std::uint32_t>::max();

double PointsOf(const TslBL::Tune& tune) {
  return tune.ControlData.Type == TslBL::Control::Sim ? 1.0 : TslBL::DevTuneRules::QNumPulses(tune);
}

}  // namespace

MethodProgram::Time MethodProgram::Period::Loop() const {
  return std::accumulate(items.begin(), items.end(), 0.0,
                         [](Time sum, const Item& item) { return sum + item.Total(); });
}

MethodProgram::Period MethodProgram::MakePeriod(const MethodRules& rules, std::uint32_t index) const {
  const TslBL::TimePeriod& period = rules.TimePeriods[index];
  Period made{period.Save, end_ + period.SettleDelay, 0.0, {}};
  for (std::uint32_t si = 0; si < period.Sequence.size(); ++si) {
    const TslBL::TuneRun& run = rules.TuneRuns.at(period.Sequence[si].front());
    made.items.push_back({run.TuneId, run.Records, static_cast<Time>(run.SettleDelay),
                          std::round(rules.QSITuneDuration(index, si) * 1e6),
                          PointsOf(rules.Tunes.at(run.TuneId))});
  }
  const bool isFree = period.Timeout == MethodRules::FreeRun;
  made.end =
      isFree ? made.begin + period.Loops * made.Loop() : end_ + period.Timeout * kMicrosecondsAMillisecond;
  return made;
}

MethodProgram::MethodProgram(const MethodRules& rules) {
  for (std::uint32_t index = 0; index < rules.TimePeriods.size(); ++index) {
    const Period period = MakePeriod(rules, index);
    RequireBounded(period);
    end_ = period.end;
    spectra_.push_back(SpectraIn(period));
    periods_.push_back(period);
  }
  TslBL::DiverterValveMethod valve = rules.QValveMethod();
  if (!valve.IsEmpty()) {
    auto entry = valve.QFirstState();
    do {
      waste_.emplace_back(entry.first.count * kMicrosecondsAMillisecond,
                          entry.second.State() == TslBL::DiverterValve::kToWaste);
    } while (valve.QNextState(entry));
  }
  if (!periods_.empty()) at_ = periods_.front().begin + periods_.front().items.front().settling;
}

void MethodProgram::RequireBounded(const Period& period) {
  if (!(period.Loop() > 0.0))
    throw std::runtime_error("the method has a time period whose sequence takes no time");
  const double loops = std::max(period.end - period.begin, 0.0) / period.Loop();
  auto spectra = static_cast<double>(Count());
  for (const Item& item : period.items) {
    spectra += loops * item.records;
    points_ += loops * item.records * item.points;
  }
  const double milliseconds = period.end / kMicrosecondsAMillisecond;
  if (milliseconds > kMostMilliseconds)
    throw std::runtime_error(fmt::format("the method takes {:.6g} s, and times have room for {:.6g} s",
                                         milliseconds / 1000.0, kMostMilliseconds / 1000.0));
  if (spectra <= kMostSpectra && points_ <= kMostPoints) return;
  throw std::runtime_error(fmt::format(
      "the method takes about {:.3g} spectra of {:.3g} points in all; at most {:.0e} spectra and {:.0e} "
      "points are simulated",
      spectra, points_, kMostSpectra, kMostPoints));
}

std::uint64_t MethodProgram::SpectraIn(const Period& period) const {
  if (period.end <= period.begin) return 0;
  std::uint64_t aLoop = 0;
  for (const Item& item : period.items) aLoop += item.records;
  const double loops = std::floor((period.end - period.begin) / period.Loop());
  std::uint64_t count = static_cast<std::uint64_t>(loops) * aLoop;
  Time at = period.begin + loops * period.Loop();
  for (const Item& item : period.items) {
    at += item.settling;
    for (std::uint32_t record = 0; record < item.records; ++record, ++count) {
      at += item.duration;
      if (at > period.end) return count;
    }
  }
  return count;
}

std::uint64_t MethodProgram::Count() const {
  return std::accumulate(spectra_.begin(), spectra_.end(), std::uint64_t{0});
}

std::uint64_t MethodProgram::Saved() const {
  std::uint64_t saved = 0;
  for (std::size_t i = 0; i < periods_.size(); ++i) saved += periods_[i].isSaved ? spectra_[i] : 0;
  return saved;
}

bool MethodProgram::IsToWaste(Time at) const {
  bool toWaste = false;
  for (const auto& [from, state] : waste_)
    if (from <= at) toWaste = state;
  return toWaste;
}

void MethodProgram::Step() {
  const std::vector<Item>& items = periods_[period_].items;
  at_ += items[item_].duration;
  if (++record_ < items[item_].records) return;
  record_ = 0;
  item_ = (item_ + 1) % items.size();
  at_ += items[item_].settling;
}

std::optional<ProgrammedSpectrum> MethodProgram::Next() {
  while (period_ < periods_.size() && at_ + periods_[period_].items[item_].duration > periods_[period_].end) {
    if (++period_ == periods_.size()) break;
    item_ = 0;
    record_ = 0;
    at_ = periods_[period_].begin + periods_[period_].items.front().settling;
  }
  if (period_ == periods_.size()) return std::nullopt;
  const Period& period = periods_[period_];
  const Item& item = period.items[item_];
  ProgrammedSpectrum next;
  next.index = index_++;
  next.period = static_cast<std::uint32_t>(period_);
  next.tuneId = item.tuneId;
  next.milliseconds = static_cast<std::uint32_t>(std::floor(at_ / kMicrosecondsAMillisecond + 0.5));
  next.fraction = (at_ + 0.5 * item.duration) / end_;
  next.isSaved = period.isSaved;
  next.isToWaste = IsToWaste(at_);
  Step();
  return next;
}

}  // namespace TslTool
