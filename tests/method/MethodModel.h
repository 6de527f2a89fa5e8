#pragma once
// The rules of a method once more, as plain and slow as can be: nothing is kept in order but by
// looking at everything. Tunes are scans with a capillary exit of a single value.

#include <algorithm>
#include <cmath>
#include <string>
#include <utility>
#include <vector>

#include <method/TestMethod.h>

namespace tests {

class MethodModel {
 public:
  using Item = std::vector<std::uint32_t>;

  MethodModel(double seconds, Method start) : method(std::move(start)), seconds_(seconds) { Clean(); }

  Method method;
  bool modified = false;

  // Every edit tells whether all that it asks for is there. It does nothing if not.

  bool InsertTimePeriod(const Probes::ProbeTypes* probe) {
    std::uint32_t id = 0;
    if (!NewRun(probe, id)) return false;
    TimePeriod period;
    period.Loops = 20;
    period.Timeout = 60000;
    period.Sequence.push_back({id});
    method.TimePeriods.push_back(period);
    modified = true;
    return true;
  }
  bool InsertSeqItem(std::size_t tp, const Probes::ProbeTypes* probe) {
    std::uint32_t id = 0;
    if (tp >= method.TimePeriods.size() || !NewRun(probe, id)) return false;
    method.TimePeriods[tp].Sequence.push_back({id});
    return Done();
  }
  bool AddTuneRun(Probes::ProbeTypes probe) {
    std::uint32_t id = 0;
    return NewRun(&probe, id);
  }
  bool RemoveTimePeriod(std::size_t tp) {
    if (tp >= method.TimePeriods.size()) return false;
    for (const Item& item : method.TimePeriods[tp].Sequence) EraseRuns(item, 0);
    method.TimePeriods.erase(method.TimePeriods.begin() + static_cast<std::ptrdiff_t>(tp));
    return Done();
  }
  bool RemoveSeqItem(std::size_t tp, std::size_t si) {
    if (!HasItem(tp, si)) return false;
    auto& sequence = method.TimePeriods[tp].Sequence;
    EraseRuns(sequence[si], 0);
    sequence.erase(sequence.begin() + static_cast<std::ptrdiff_t>(si));
    return Done();
  }
  bool MoveTimePeriod(std::size_t tp, bool toEnd) {
    if (tp >= method.TimePeriods.size()) return false;
    Swap(method.TimePeriods, tp, toEnd);
    modified = true;
    return true;
  }
  bool MoveSeqItem(std::size_t tp, std::size_t si, bool toEnd) {
    if (!HasItem(tp, si)) return false;
    Swap(method.TimePeriods[tp].Sequence, si, toEnd);
    return Done();
  }
  bool SetType(std::size_t tp, std::size_t si, std::size_t tr, DDInfo::Types type) {
    TuneRun* run = RunAt(tp, si, tr);
    if (run == nullptr) return false;
    const DDInfo::Types before = run->Info.Type;
    if (before == type) return true;
    if (type == DDInfo::TuneChange) {
      std::uint32_t id = 0;
      if (!NewRun(nullptr, id)) return false;
      method.TimePeriods[tp].Sequence[si].push_back(id);
    }
    RunAt(tp, si, tr)->Info.Type = type;
    modified = true;
    if (before != DDInfo::TuneChange) return true;
    Item& item = method.TimePeriods[tp].Sequence[si];
    EraseRuns(item, tr + 1);
    while (item.size() > tr + 1) item.pop_back();
    return Done();
  }
  bool SetTune(std::size_t tp, std::size_t si, std::size_t tr, const Tune& tune) {
    TuneRun* run = RunAt(tp, si, tr);
    if (run == nullptr) return false;
    const std::uint32_t id = FreeKey(method.Tunes);
    method.Tunes[id] = tune;
    run->TuneId = id;
    return Done();
  }
  template <class Field, class Value>
  bool SetOfRun(std::size_t tp, std::size_t si, std::size_t tr, Field field, Value value) {
    TuneRun* run = RunAt(tp, si, tr);
    if (run == nullptr) return false;
    Set(field(*run), value);
    return true;
  }
  template <class Field, class Value>
  bool SetOfPeriod(std::size_t tp, Field field, Value value) {
    if (tp >= method.TimePeriods.size()) return false;
    Set(field(method.TimePeriods[tp]), value);
    return true;
  }
  bool SetTimeout(std::size_t tp, std::uint32_t timeout) {
    if (tp >= method.TimePeriods.size()) return false;
    Set(method.TimePeriods[tp].Timeout, timeout);
    Set(method.TimePeriods[tp].Loops, LoopsOf(tp, timeout));
    return true;
  }
  bool SetSwitchTime(double seconds) {
    if (std::abs(seconds - seconds_) < 0.00001 || seconds < 0.1 || seconds > 2.0) return true;
    seconds_ = seconds;
    modified = true;
    WorkOutDelays();
    return true;
  }
  // The first of the smallest goes to the front, and so on.
  bool Sort() {
    for (const TimePeriod& period : method.TimePeriods)
      for (const Item& item : period.Sequence)
        if (FirstTune(item) == nullptr) return false;
    for (TimePeriod& period : method.TimePeriods) {
      std::vector<Item> sorted;
      while (!period.Sequence.empty()) {
        std::size_t best = 0;
        for (std::size_t i = 1; i < period.Sequence.size(); ++i)
          if (IsBefore(period.Sequence[i], period.Sequence[best])) best = i;
        sorted.push_back(period.Sequence[best]);
        period.Sequence.erase(period.Sequence.begin() + static_cast<std::ptrdiff_t>(best));
      }
      period.Sequence = sorted;
    }
    return Done();
  }
  bool Take(const Method& other) {
    method = other;
    modified = false;
    Clean();
    return true;
  }
  // As it is stored.
  Method Stored() const {
    Method stored = method;
    for (std::size_t tp = 0; tp < stored.TimePeriods.size(); ++tp)
      if (stored.TimePeriods[tp].Timeout != 4294967295)
        stored.TimePeriods[tp].Loops = LoopsOf(tp, stored.TimePeriods[tp].Timeout);
    return stored;
  }

  TuneRun* RunAt(std::size_t tp, std::size_t si, std::size_t tr) {
    if (!HasItem(tp, si)) return nullptr;
    const Item& item = method.TimePeriods[tp].Sequence[si];
    if (tr >= item.size() || method.TuneRuns.count(item[tr]) == 0) return nullptr;
    return &method.TuneRuns.at(item[tr]);
  }

 private:
  template <class Map>
  static std::uint32_t FreeKey(const Map& map) {
    std::uint32_t key = 1;
    while (map.count(key) > 0) ++key;
    return key;
  }
  template <class T>
  static void Swap(std::vector<T>& list, std::size_t i, bool toEnd) {
    if (toEnd && i + 1 < list.size()) std::swap(list[i], list[i + 1]);
    if (!toEnd && i > 0) std::swap(list[i], list[i - 1]);
  }
  template <class T>
  void Set(T& old, const T& value) {
    if (!(old == value)) modified = true;
    old = value;
  }

  bool HasItem(std::size_t tp, std::size_t si) const {
    return tp < method.TimePeriods.size() && si < method.TimePeriods[tp].Sequence.size();
  }
  const TuneRun* FirstRun(const Item& item) const {
    if (item.empty() || method.TuneRuns.count(item[0]) == 0) return nullptr;
    return &method.TuneRuns.at(item[0]);
  }
  const Tune* FirstTune(const Item& item) const {
    const TuneRun* run = FirstRun(item);
    if (run == nullptr || method.Tunes.count(run->TuneId) == 0) return nullptr;
    return &method.Tunes.at(run->TuneId);
  }
  bool IsBefore(const Item& a, const Item& b) const {
    const Control& x = FirstTune(a)->ControlData;
    const Control& y = FirstTune(b)->ControlData;
    if (x.PolarityType != y.PolarityType) return x.PolarityType == PolarityNegative;
    return x.MZLow < y.MZLow;
  }

  // Of this probe, or of that of the first run of all.
  bool NewRun(const Probes::ProbeTypes* probe, std::uint32_t& id) {
    const bool isThere = HasItem(0, 0) && FirstTune(method.TimePeriods[0].Sequence[0]) != nullptr;
    if (probe == nullptr && !isThere) return false;
    const Tune tune =
        DevTuneRules(probe != nullptr ? *probe : FirstTune(method.TimePeriods[0].Sequence[0])->Source.Type);
    const std::uint32_t tuneId = FreeKey(method.Tunes);
    id = FreeKey(method.TuneRuns);
    method.Tunes[tuneId] = tune;
    method.TuneRuns[id] = TuneRun(tuneId, 1);
    modified = true;
    return true;
  }
  void EraseRuns(const Item& item, std::size_t first) {
    for (std::size_t i = first; i < item.size(); ++i) method.TuneRuns.erase(item[i]);
  }
  bool Done() {
    Clean();
    modified = true;
    return true;
  }
  void Clean() {
    const std::map<std::uint32_t, Tune> tunes = method.Tunes;
    for (const auto& [id, tune] : tunes) {
      bool used = false;
      for (const auto& [runId, run] : method.TuneRuns) used = used || run.TuneId == id;
      if (!used) method.Tunes.erase(id);
    }
    WorkOutDelays();
  }

  std::uint32_t LoopsOf(std::size_t tp, std::uint32_t timeout) const {
    double loop = 0.0;
    for (const Item& item : method.TimePeriods[tp].Sequence) {
      const Tune* tune = FirstTune(item);
      if (tune == nullptr) return method.TimePeriods[tp].Loops;
      const Control& c = tune->ControlData;
      const std::uint32_t pulses = DevTuneRules::QNumPulses(*tune);
      const std::uint32_t microseconds =
          (pulses * c.PulseCountDelay + (pulses - 1) * c.StepSettleDelay + c.InitSettleDelay) *
          c.ScansPerSpec;
      const TuneRun& run = *FirstRun(item);
      loop += microseconds / 1000000.0 * run.Records + run.SettleDelay / 1000000.0;
    }
    const double loops = std::ceil(timeout / 1000.0 / loop);
    if (std::isnan(loops)) return 0;
    return loops > 4294967295.0 ? 4294967295 : static_cast<std::uint32_t>(loops);
  }

  static std::uint32_t Settling(const Control& from, const Control& to) {
    const double way = std::abs(from.MZHi - to.MZLow);
    const double volts = std::abs(from.CapExit.Single - to.CapExit.Single);
    int axis = 0;
    if (way >= 0.001) axis = static_cast<int>(way + (way * 0.5 + 500.0 < 800.0 ? way * 0.5 + 500.0 : 800.0));
    int lens = 0;
    if (volts >= 40.0) lens = volts > 80.0 ? 5000 : static_cast<int>((volts - 40.0) * 125.0);
    return static_cast<std::uint32_t>(axis > lens ? axis : lens);
  }
  std::uint32_t SwitchDelay() const { return static_cast<std::uint32_t>(seconds_ * 1000000.0 + 0.5); }

  void WorkOutDelays() {
    for (TimePeriod& period : method.TimePeriods) {
      bool known = true;
      for (const Item& item : period.Sequence) known = known && FirstTune(item) != nullptr;
      if (!known) continue;
      const std::size_t count = period.Sequence.size();
      for (std::size_t i = 1; i < count; ++i) Follow(period.Sequence[i - 1], period.Sequence[i]);
      if (count > 0) Follow(period.Sequence[count - 1], period.Sequence[0]);
    }
    WorkOutPeriodDelays();
  }
  void Follow(const Item& before, const Item& item) {
    const Control from = FirstTune(before)->ControlData;
    TuneRun& run = method.TuneRuns.at(item[0]);
    Control& to = method.Tunes.at(run.TuneId).ControlData;
    to.InitSettleDelay = Settling(from, to);
    Set(run.SettleDelay, from.PolarityType == to.PolarityType ? 0 : SwitchDelay());
  }
  void WorkOutPeriodDelays() {
    std::vector<std::vector<PolarityTypes>> polarities;
    for (const TimePeriod& period : method.TimePeriods) {
      if (period.Sequence.empty()) return;
      polarities.emplace_back();
      for (const Item& item : period.Sequence) {
        if (FirstTune(item) == nullptr) return;
        polarities.back().push_back(FirstTune(item)->ControlData.PolarityType);
      }
    }
    for (std::size_t tp = 1; tp < polarities.size(); ++tp) {
      const auto& before = polarities[tp - 1];
      bool waits = before.front() != polarities[tp].front();
      for (const PolarityTypes polarity : before) waits = waits || polarity != before.front();
      TimePeriod& period = method.TimePeriods[tp];
      if (FirstRun(period.Sequence[0])->SettleDelay != 0) waits = false;
      Set(period.SettleDelay, waits ? SwitchDelay() : 0);
    }
  }

  double seconds_;
};

}  // namespace tests
