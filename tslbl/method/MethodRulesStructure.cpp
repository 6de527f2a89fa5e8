// Time periods, sequence items and tune runs come, go and move.

#include <tslbl/method/MethodRules.h>
#include <tslbl/tune/MassRange.h>
#include <tslbl/tune/rules/DevTuneRules.h>
#include <algorithm>
#include <cmath>
#include <functional>
#include <limits>

namespace TslBL {
namespace {

// Swaps an element with its neighbor, if there is one on that side.
template <class T>
void Move(std::vector<T>& list, std::uint32_t index, MethodRules::Direction direction) {
  T& element = list.at(index);
  if (direction == MethodRules::ToBeginning) {
    if (index > 0) std::swap(element, list[index - 1]);
  } else {
    if (index + 1 < list.size()) std::swap(element, list[index + 1]);
  }
}

// Where an item stands among those of its time period.
struct Place {
  explicit Place(const Tune& tune) : polarity(tune.ControlData.PolarityType), mzLow(QMassRange(tune).first) {
    // What is no number stands behind all others.
    if (std::isnan(mzLow)) mzLow = std::numeric_limits<double>::infinity();
  }
  bool operator<(const Place& other) const {
    return polarity != other.polarity ? polarity > other.polarity : mzLow < other.mzLow;
  }

  PolarityTypes polarity;
  double mzLow;
};

}  // namespace

std::uint32_t MethodRules::AddTuneRun(Probes::ProbeTypes probe) {
  const std::uint32_t id = GetTuneRunId(*this);
  TuneRuns.emplace(id, TuneRun(AddTune(DevTuneRules(probe)), 1));
  return id;
}

std::uint32_t MethodRules::AddTuneRun() {
  return AddTuneRun(FirstTune(TimePeriods.at(0).Sequence.at(0)).Source.Type);
}

void MethodRules::RemoveTuneRuns(const SeqItem& item, std::uint32_t first) {
  for (std::size_t tr = first; tr < item.size(); ++tr) TuneRuns.erase(item[tr]);
}

void MethodRules::CleanupTunes() {
  std::vector<std::uint32_t> used;
  used.reserve(TuneRuns.size());
  for (const auto& [id, run] : TuneRuns) used.push_back(run.TuneId);
  std::ranges::sort(used);
  std::erase_if(Tunes, [&](const auto& tune) { return !std::ranges::binary_search(used, tune.first); });
  CalculateDelays();
}

// ---- Time periods ----------------------------------------------------------------------

std::uint32_t MethodRules::AppendTimePeriod(std::uint32_t tuneRunId) {
  TimePeriod period;
  period.Loops = 20;
  period.Timeout = 60000;
  period.Sequence.push_back({tuneRunId});
  TimePeriods.push_back(std::move(period));
  return QNumTimePeriods() - 1;
}

std::uint32_t MethodRules::InsertTimePeriod() { return AppendTimePeriod(AddTuneRun()); }
std::uint32_t MethodRules::InsertTimePeriod(Probes::ProbeTypes probe) {
  return AppendTimePeriod(AddTuneRun(probe));
}

void MethodRules::RemoveTimePeriod(std::uint32_t tp) {
  for (const SeqItem& item : TimePeriods.at(tp).Sequence) RemoveTuneRuns(item, 0);
  TimePeriods.erase(TimePeriods.begin() + tp);
  CleanupTunes();
  Modified = true;
}

void MethodRules::MoveTimePeriod(std::uint32_t tp, Direction direction) {
  Move(TimePeriods, tp, direction);
  Modified = true;
}

// ---- Sequence items --------------------------------------------------------------------

std::uint32_t MethodRules::AppendSeqItem(TimePeriod& period, std::uint32_t tuneRunId) {
  period.Sequence.push_back({tuneRunId});
  CleanupTunes();
  return static_cast<std::uint32_t>(period.Sequence.size()) - 1;
}

std::uint32_t MethodRules::InsertSeqItem(std::uint32_t tp) {
  TimePeriod& period = TimePeriods.at(tp);
  return AppendSeqItem(period, AddTuneRun());
}

std::uint32_t MethodRules::InsertSeqItem(std::uint32_t tp, Probes::ProbeTypes probe) {
  TimePeriod& period = TimePeriods.at(tp);
  return AppendSeqItem(period, AddTuneRun(probe));
}

void MethodRules::RemoveSeqItem(std::uint32_t tp, std::uint32_t si) {
  std::vector<SeqItem>& sequence = TimePeriods.at(tp).Sequence;
  RemoveTuneRuns(sequence.at(si), 0);
  sequence.erase(sequence.begin() + si);
  CleanupTunes();
  Modified = true;
}

void MethodRules::MoveSeqItem(std::uint32_t tp, std::uint32_t si, Direction direction) {
  Move(TimePeriods.at(tp).Sequence, si, direction);
  CleanupTunes();
  Modified = true;
}

// ---- Tune runs -------------------------------------------------------------------------

void MethodRules::WTRDDType(std::uint32_t tp, std::uint32_t si, std::uint32_t tr, DDInfo::Types type) {
  TuneRun& run = Run(tp, si, tr);
  const DDInfo::Types before = run.Info.Type;
  if (before == type) return;
  SeqItem& item = TimePeriods[tp].Sequence[si];
  if (type == DDInfo::TuneChange) item.push_back(AddTuneRun());
  // Before others go: the run may stand behind itself, too.
  run.Info.Type = type;
  if (before == DDInfo::TuneChange) {
    RemoveTuneRuns(item, tr + 1);
    item.resize(tr + 1);
    CleanupTunes();
  }
  Modified = true;
}

void MethodRules::Sort() {
  std::vector<TimePeriod> periods = TimePeriods;
  for (TimePeriod& period : periods) {
    std::vector<std::pair<Place, SeqItem>> items;
    items.reserve(period.Sequence.size());
    for (SeqItem& item : period.Sequence) items.emplace_back(FirstTune(item), std::move(item));
    std::ranges::stable_sort(items, std::less<>(), &std::pair<Place, SeqItem>::first);
    for (std::size_t si = 0; si < items.size(); ++si) period.Sequence[si] = std::move(items[si].second);
  }
  TimePeriods = std::move(periods);
  CleanupTunes();
  Modified = true;
}

}  // namespace TslBL
