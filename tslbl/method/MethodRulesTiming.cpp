// How long a method takes, and what it has to wait for.

#include <tslbl/closed/common/Truncate.h>
#include <tslbl/method/MethodRules.h>
#include <tslbl/tune/LensCurve.h>
#include <tslbl/tune/MassRange.h>
#include <tslbl/tune/Settling.h>
#include <tslbl/tune/rules/DevTuneRules.h>
#include <cmath>
#include <stdexcept>
#include <tuple>

namespace TslBL {
namespace {

// False if an id names nothing, or the curve of a tune is open.
template <class Work>
bool IsWorkedOut(Work work) {
  try {
    work();
    return true;
  } catch (const std::out_of_range&) {
    return false;
  } catch (const std::runtime_error&) {
    return false;
  }
}

// Where a scan of a tune begins and ends.
struct Ends {
  explicit Ends(const Tune& tune) : polarity(tune.ControlData.PolarityType) {
    const LensCurve capExit(tune, TuneField::CapExit);
    std::tie(low, high) = QMassRange(tune);
    capExitLow = capExit.At(low);
    capExitHigh = capExit.At(high);
  }

  PolarityTypes polarity;
  double low, high;                // m/z
  double capExitLow, capExitHigh;  // volts
};

std::uint32_t DelayBetween(const Ends& before, const Ends& after) {
  return SettlingDelay(before.high, after.low, before.capExitHigh - after.capExitLow);
}

// Whether the tune had another one.
bool SetInitSettleDelay(Tune& tune, std::uint32_t delay) {
  if (tune.ControlData.InitSettleDelay == delay) return false;
  DevTuneRules rules(tune);
  rules.WInitSettleDelay(delay);
  tune.ControlData.InitSettleDelay = rules.QInitSettleDelay();
  return true;
}

}  // namespace

// ---- Durations -------------------------------------------------------------------------

double MethodRules::QSITuneDuration(std::uint32_t tp, std::uint32_t si) const {
  return DevTuneRules::QDuration(FirstTune(TimePeriods.at(tp).Sequence.at(si))) / 1000000.0;
}

double MethodRules::QSIDuration(std::uint32_t tp, std::uint32_t si) const {
  const TuneRun& run = Run(tp, si, 0);
  return QSITuneDuration(tp, si) * run.Records + run.SettleDelay / 1000000.0;
}

double MethodRules::QTPDuration(std::uint32_t tp) const { return TimePeriods.at(tp).Timeout / 1000.0; }

double MethodRules::QDuration() const {
  double seconds = 0.0;
  for (std::uint32_t tp = 0; tp < QNumTimePeriods(); ++tp) seconds += QTPDuration(tp);
  return seconds;
}

std::uint32_t MethodRules::CalculateNumLoops(std::uint32_t tp, std::uint32_t timeout) const {
  double loopTime = 0.0;
  const bool isKnown = IsWorkedOut([&] {
    for (std::uint32_t si = 0; si < QNumSeqItems(tp); ++si) loopTime += QSIDuration(tp, si);
  });
  return isKnown ? Truncate<std::uint32_t>(std::ceil(timeout / 1000.0 / loopTime)) : QTPNumLoops(tp);
}

// ---- Delays ----------------------------------------------------------------------------

void MethodRules::WPolSwitchTime(double seconds) {
  const bool isSame = std::abs(PolSwitchTime - seconds) < 0.00001;
  const bool isWithin = seconds >= 0.1 && seconds <= 2.0;
  if (isSame || !isWithin) return;
  PolSwitchTime = seconds;
  Modified = true;
  CalculateDelays();
}

std::uint32_t MethodRules::QPolSwitchDelay() const {
  return Truncate<std::uint32_t>(PolSwitchTime * 1000000.0 + 0.5);
}

void MethodRules::CalculateDelays() {
  for (std::uint32_t tp = 0; tp < QNumTimePeriods(); ++tp) CalculateInitialSettlingDelay(tp);
  CalculateTimePeriodDelays();
}

bool MethodRules::CalculateInitialSettlingDelay(std::uint32_t tp) {
  const std::vector<SeqItem>& sequence = TimePeriods.at(tp).Sequence;
  std::vector<Ends> ends;
  ends.reserve(sequence.size());
  const bool isKnown = IsWorkedOut([&] {
    for (const SeqItem& item : sequence) ends.emplace_back(FirstTune(item));
  });
  if (!isKnown) return false;

  bool changed = false;
  // The first item comes last, as it follows the last one.
  for (std::size_t step = 1; step <= sequence.size(); ++step) {
    const std::size_t si = step % sequence.size();
    const Ends& before = ends[step - 1];
    TuneRun& run = TuneRuns.at(sequence[si][0]);
    Store(run.SettleDelay, before.polarity == ends[si].polarity ? 0 : QPolSwitchDelay());
    changed |= SetInitSettleDelay(Tunes.at(run.TuneId), DelayBetween(before, ends[si]));
  }
  return changed;
}

void MethodRules::CalculateTimePeriodDelays() {
  std::vector<TimePeriodPolarity> polarities;
  polarities.reserve(TimePeriods.size());
  const bool isKnown = IsWorkedOut([&] {
    for (std::uint32_t tp = 0; tp < QNumTimePeriods(); ++tp) polarities.push_back(QTimePeriodPolarity(tp));
  });
  if (!isKnown) return;

  for (std::uint32_t tp = 1; tp < QNumTimePeriods(); ++tp) {
    // A run that waits for the polarity itself has no need of it.
    const bool runWaits = Run(tp, 0, 0).SettleDelay != 0;
    const bool changes = polarities[tp - 1] == Mixed || QFirstPolarity(tp - 1) != QFirstPolarity(tp);
    Store(TimePeriods[tp].SettleDelay, changes && !runWaits ? QPolSwitchDelay() : 0);
  }
}

PolarityTypes MethodRules::QFirstPolarity(std::uint32_t tp) const {
  return FirstTune(TimePeriods.at(tp).Sequence.at(0)).ControlData.PolarityType;
}

MethodRules::TimePeriodPolarity MethodRules::QTimePeriodPolarity(std::uint32_t tp) const {
  const PolarityTypes first = QFirstPolarity(tp);
  for (const SeqItem& item : TimePeriods[tp].Sequence)
    if (FirstTune(item).ControlData.PolarityType != first) return Mixed;
  return first == PolarityPositive ? AllPositive : AllNegative;
}

}  // namespace TslBL
