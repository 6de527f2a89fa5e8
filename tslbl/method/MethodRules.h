#pragma once
// The rules of the instrument for a method, and the way to edit one.
//
//   MethodRules rules(polSwitchTime, method);      // or a new one: MethodRules(polSwitchTime)
//   const std::uint32_t tp = rules.InsertTimePeriod();
//   rules.WTRTune(tp, 0, 0, tune);
//   rules.WTPTimeout(tp, 120000);
//   if (!rules.Validate()) Show(rules.QLastError());
//   Method edited = rules.operator Method();
//
// An edit keeps together what belongs together: the ids of the sequences and the tune runs, the
// tune runs and the tunes, and what is derived from them. Derived are the loops of a time period
// and three delays: the one that a tune needs after the tune before it in the sequence
// (InitSettleDelay), and those of a tune run and of a time period at which the polarity changes
// (SettleDelay). They are worked out anew after nearly every edit, in the tunes and tune runs of
// the method. One that cannot be worked out stays as it is: in a time period with an item that
// holds no run, an id that names nothing, or a tune whose timing or capillary exit throws (see
// DevTuneRules.h). So any method can be taken as it comes from a file; Validate names such faults.
//
// A time period is addressed by its index, a sequence item by that of its time period and its own,
// a tune run by these and its position in the item; all count from 0. An index that is too large,
// and an id that names nothing where a run or a tune is asked for, throw std::out_of_range, the
// method as it was.
//
// Delays are in microseconds, lengths of time periods in milliseconds, durations and the time of
// a change of polarity in seconds. A value, one thread at a time: even a check keeps its text.

#include <tslbl/Export.h>
#include <tslbl/method/Method.h>
#include <tslbl/tune/rules/Rules.h>
#include <cstdint>
#include <string>
#include <vector>

namespace TslBL {

struct RampStep;

class TSLBL_API MethodRules : public Method, public Rules {
 public:
  // The length of a time period without end, and the number of spectra of a method without end.
  static constexpr std::uint32_t FreeRun = 0xFFFFFFFF;

  // The polarity of what a time period measures.
  enum TimePeriodPolarity : std::uint32_t { AllPositive = 0, AllNegative = 1, Mixed = 2 };
  // Where an element of a list moves.
  enum Direction : std::uint32_t { ToBeginning = 0, ToEnd = 1 };

  // How many time periods the instrument takes. Nothing here enforces it: who builds a method
  // does.
  static std::uint32_t QMaxTimePeriods() { return 30; }
  static std::uint32_t QMinTimePeriods() { return 1; }
  // How long the valve must stay in a state, in minutes.
  static double QMinValveDuration() { return 0.01; }

  // ---- Construction and conversion -----------------------------------------------------

  // The time of a change of polarity is taken as given, also beyond what WPolSwitchTime takes.

  // A new method: one time period of a minute with the default tune of an ESI probe. It counts
  // as modified.
  explicit MethodRules(double polSwitchTime);
  // One time period as long as so many spectra of the tune, or without end. Throws as
  // DevTuneRules::QDuration does, if it has one.
  MethodRules(double polSwitchTime, const Tune& tune, std::uint32_t numRecs);
  // A method as it is, but without tunes that no run uses, and with its delays worked out anew; it
  // is modified if one of them changed.
  MethodRules(double polSwitchTime, const Method& method);
  // Takes another method in the same way; the time of a change of polarity stays.
  MethodRules& operator=(const Method& method);

  // The method to be stored or run: the loops of each time period follow from its length, unless it
  // is without end. To be called by name: `rules.operator Method()`. A plain `Method m = rules` copies
  // the method without that.
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wclass-conversion"
  operator Method() const;
#pragma GCC diagnostic pop

  // Makes the method that runs a ramp on copies of a tune: a time period without end for each value of
  // the first lens, and in it an item for each value of the second one. The last value of a lens
  // reaches its end or passes it, and is held at the limit of the field there; values are not checked
  // otherwise. Without lenses it is a method of the tune alone. False, the method as it was, for
  // lenses of which one may follow m/z and the other not, a field that no ramp can walk through, a
  // step that is not above 0, and more than 200000 values; QLastError has the text.
  //
  // What is derived is not worked out: each tune settles for 2000 microseconds. Nor is the method
  // marked as modified. Throws VexException for a number that names no field, and without lenses as
  // DevTuneRules::QDuration does.
  bool Create(const Tune& tune, const RampStep& step);

  // ---- Ids -----------------------------------------------------------------------------

  // The lowest id, from 1, that no tune run of the method has.
  static std::uint32_t GetTuneRunId(const Method& method);
  // Whether the method has a tune equal to this one. `id` becomes its id, or else the lowest one
  // that is free.
  static bool GetTuneId(const Method& method, const Tune& tune, std::uint32_t& id);

  // ---- Structure -----------------------------------------------------------------------

  // All of these mark the method as modified, also where there was nothing to move.

  // Appends a time period of a minute with one new tune run, and returns its index. The first form
  // takes the probe of the method's first tune run. Does not work out delays.
  std::uint32_t InsertTimePeriod();
  std::uint32_t InsertTimePeriod(Probes::ProbeTypes probe);
  // Its tune runs go with it, also where another item holds their ids.
  void RemoveTimePeriod(std::uint32_t tp);
  // Swaps it with its neighbor, if there is one on that side. Does not work out delays.
  void MoveTimePeriod(std::uint32_t tp, Direction direction);

  // Appends an item with one new tune run, and returns its index. The probe as above.
  std::uint32_t InsertSeqItem(std::uint32_t tp);
  std::uint32_t InsertSeqItem(std::uint32_t tp, Probes::ProbeTypes probe);
  // Its tune runs go with it. The last one may go, too; Validate then refuses the method.
  void RemoveSeqItem(std::uint32_t tp, std::uint32_t si);
  void MoveSeqItem(std::uint32_t tp, std::uint32_t si, Direction direction);

  // Adds a run of a new tune, the default one of this probe, that no sequence holds yet, and
  // returns its id.
  std::uint32_t AddTuneRun(Probes::ProbeTypes probe);

  // Orders the items of each time period so that the polarity changes least: negative ions first,
  // and by their low m/z within one polarity. Items alike keep their order.
  void Sort();

  // ---- Fields --------------------------------------------------------------------------

  // A writer marks the method as modified if the value is another one. What a query refers to is
  // the method's, until the next edit.

  const std::wstring& QDescription() const { return Desc; }
  void WDescription(const std::wstring& description);

  std::uint32_t QNumTimePeriods() const { return static_cast<std::uint32_t>(TimePeriods.size()); }
  std::uint32_t QNumSeqItems(std::uint32_t tp) const;
  std::uint32_t QSINumTuneRuns(std::uint32_t tp, std::uint32_t si) const;

  // Of a time period.
  bool QTPSave(std::uint32_t tp) const;
  std::uint32_t QTPNumLoops(std::uint32_t tp) const;
  std::uint32_t QTPTimeout(std::uint32_t tp) const;
  std::uint32_t QTPSettleDelay(std::uint32_t tp) const;
  void WTPSave(std::uint32_t tp, bool save);
  void WTPNumLoops(std::uint32_t tp, std::uint32_t loops);
  // The loops become as many as begin in this time, rounded up. A sequence that takes no time has
  // 4294967295, or none in no time.
  void WTPTimeout(std::uint32_t tp, std::uint32_t timeout);
  void WTPSettleDelay(std::uint32_t tp, std::uint32_t delay);

  // Of a tune run.
  const Tune& QTRTune(std::uint32_t tp, std::uint32_t si, std::uint32_t tr) const;
  // 1 for every run, as the instrument takes one spectrum a run; Method::TuneRuns has what was
  // written.
  std::uint32_t QTRNumRecs(std::uint32_t tp, std::uint32_t si, std::uint32_t tr) const;
  std::uint32_t QTRSettleDelay(std::uint32_t tp, std::uint32_t si, std::uint32_t tr) const;
  DDInfo::Types QTRDDType(std::uint32_t tp, std::uint32_t si, std::uint32_t tr) const;
  DDInfo::Triggers QTRStartTrigger(std::uint32_t tp, std::uint32_t si, std::uint32_t tr) const;
  double QTRStartTriggerValue(std::uint32_t tp, std::uint32_t si, std::uint32_t tr) const;
  DDInfo::Triggers QTREndTrigger(std::uint32_t tp, std::uint32_t si, std::uint32_t tr) const;
  double QTREndTriggerValue(std::uint32_t tp, std::uint32_t si, std::uint32_t tr) const;
  const std::vector<CurveEval>& QTRSpecEvalMethod(std::uint32_t tp, std::uint32_t si, std::uint32_t tr) const;
  std::uint32_t QTRExcludeDuration(std::uint32_t tp, std::uint32_t si, std::uint32_t tr) const;
  // Always a tune of its own, with a new id, also where the method has an equal one. The one before
  // goes, if no other run uses it.
  void WTRTune(std::uint32_t tp, std::uint32_t si, std::uint32_t tr, const Tune& tune);
  void WTRNumRecs(std::uint32_t tp, std::uint32_t si, std::uint32_t tr, std::uint32_t records);
  // Stays until delays are worked out anew.
  void WTRSettleDelay(std::uint32_t tp, std::uint32_t si, std::uint32_t tr, std::uint32_t delay);
  // TuneChange appends a new run to the item, of the probe of the method's first run: the one to
  // change to. Any other type, after TuneChange, removes the runs behind this one.
  void WTRDDType(std::uint32_t tp, std::uint32_t si, std::uint32_t tr, DDInfo::Types type);
  void WTRStartTrigger(std::uint32_t tp, std::uint32_t si, std::uint32_t tr, DDInfo::Triggers trigger);
  void WTRStartTriggerValue(std::uint32_t tp, std::uint32_t si, std::uint32_t tr, double value);
  void WTREndTrigger(std::uint32_t tp, std::uint32_t si, std::uint32_t tr, DDInfo::Triggers trigger);
  void WTREndTriggerValue(std::uint32_t tp, std::uint32_t si, std::uint32_t tr, double value);
  void WTRSpecEvalMethod(std::uint32_t tp, std::uint32_t si, std::uint32_t tr,
                         const std::vector<CurveEval>& evals);
  void WTRExcludeDuration(std::uint32_t tp, std::uint32_t si, std::uint32_t tr, std::uint32_t duration);

  const std::vector<DDFilter>& QInclusionList() const { return Inclusions; }
  const std::vector<DDFilter>& QExclusionList() const { return Exclusions; }
  void WInclusionList(const std::vector<DDFilter>& filters);
  void WExclusionList(const std::vector<DDFilter>& filters);

  // The valve program is QValveMethod and WValveMethod of Method: writing it does not mark the method
  // as modified.

  // ---- Timing --------------------------------------------------------------------------

  double QPolSwitchTime() const { return PolSwitchTime; }
  // From 0.1 to 2.0 seconds; anything else is ignored, as is a change of less than 10 microseconds.
  void WPolSwitchTime(double seconds);

  // Seconds, of a spectrum of the tune that an item begins with, of the whole item, of a time
  // period, of the method. One without end counts as 4294967.295 s. Runs to change to take no
  // time. The first two throw as DevTuneRules::QDuration does, too.
  double QSITuneDuration(std::uint32_t tp, std::uint32_t si) const;
  double QSIDuration(std::uint32_t tp, std::uint32_t si) const;
  double QTPDuration(std::uint32_t tp) const;
  double QDuration() const;

  // That of the tunes that its items begin with.
  TimePeriodPolarity QTimePeriodPolarity(std::uint32_t tp) const;

  // Works out the delays of the tunes of a time period, and those of its runs at a change of
  // polarity. The sequence goes round and round: its first tune follows the last one, and a lone
  // one itself. Of a tune that two items share, the later item counts. Whether a tune needs
  // another delay than it had; one beyond the limits is not written.
  bool CalculateInitialSettlingDelay(std::uint32_t tp);

  // ---- Checks --------------------------------------------------------------------------

  // Whether the method may be run: its tunes, its tune runs, its time periods, its valve program, in
  // this order. QLastError has the text of the first fault. Texts count time periods and items
  // from 0, and name tunes and runs by their ids. What the check of a tune throws is a fault of
  // the tune.
  bool Validate() const;
  // All that Validate would find, one after the other; empty for a method that it accepts.
  enum class Part { Tunes, TuneRuns, TimePeriods, Valve };
  struct Fault {
    Part part;
    std::wstring text;
  };
  std::vector<Fault> QFaults() const;
  // Whether the probe can be used, the method may be run, and every tune is made for this probe.
  bool IsProbeCompatible(Probes::ProbeTypes probe) const;

 private:
  using SeqItem = std::vector<std::uint32_t>;

  static Method SingleTuneMethod(const std::wstring& description, const Tune& tune, std::uint32_t numRecs);

  const TuneRun& Run(std::uint32_t tp, std::uint32_t si, std::uint32_t tr) const;
  TuneRun& Run(std::uint32_t tp, std::uint32_t si, std::uint32_t tr);
  const Tune& FirstTune(const SeqItem& item) const;

  std::uint32_t AddTune(const Tune& tune);
  std::uint32_t AddTuneRun();
  std::uint32_t AppendTimePeriod(std::uint32_t tuneRunId);
  std::uint32_t AppendSeqItem(TimePeriod& period, std::uint32_t tuneRunId);
  void RemoveTuneRuns(const SeqItem& item, std::uint32_t first);
  void CleanupTunes();

  std::uint32_t QPolSwitchDelay() const;
  std::uint32_t CalculateNumLoops(std::uint32_t tp, std::uint32_t timeout) const;
  void CalculateDelays();
  void CalculateTimePeriodDelays();
  PolarityTypes QFirstPolarity(std::uint32_t tp) const;

  bool Holds(const std::wstring& fault) const;

  double PolSwitchTime;  // seconds
};

}  // namespace TslBL
