#pragma once
// What all evaluation steps do alike: check what the curve has, compute, set the status,
// report what changed, append to the history.
//
// For the sources of the steps; not part of the library's interface.

#include <tslbl/closed/common/StringTable.h>
#include <tslbl/curve/CommandTable.h>
#include <tslbl/curve/Curve.h>
#include <string>
#include <vector>

namespace TslBL {

// What a step needs of the axes: nothing, points on both, or, where it reads x beside y, an
// x for each y. A creator may have made a curve of which that does not hold.
enum class Points { None, Some, Paired };

// The rule of one step. Every step but the aerosol filter fails on a frozen curve.
struct StepRule {
  EvalType command;
  std::uint32_t needs;  // status bits, all of them
  Points needsPoints;
  std::uint32_t adds;  // status bits
  void (*mark)(Changed& changed);
};

inline bool MayRun(const StepRule& rule, const Curve& curve) {
  if (curve.CheckAnyStatus(Curve::STATUS_FROZEN)) return false;
  if (!curve.CheckAllStatus(static_cast<Curve::Status>(rule.needs))) return false;
  if (rule.needsPoints == Points::None) return true;
  if (curve.yAxis.empty() || curve.xAxis.empty()) return false;
  return rule.needsPoints == Points::Some || curve.xAxis.size() == curve.yAxis.size();
}

// An entry at the end of a curve's history, taken out again unless it is kept.
class HistoryEntry {
 public:
  HistoryEntry(Curve& curve, const CurveEval& command) : evals_(curve.evals) { evals_.push_back(command); }
  ~HistoryEntry() {
    if (!kept_) evals_.pop_back();
  }
  HistoryEntry(const HistoryEntry&) = delete;
  HistoryEntry& operator=(const HistoryEntry&) = delete;
  void Keep() { kept_ = true; }

 private:
  std::vector<CurveEval>& evals_;
  bool kept_ = false;
};

// Lets `find(out)` compute a value for each point, or return false if it cannot, and puts them
// in the place of `values`. Those that the status calls valid stay until all new ones are
// there: work that ends half-way, as memory may, must not leave its scratch in their place.
// The memory of others is used again.
template <class Find>
bool ReplaceValues(Curve& curve, Curve::Status valid, std::vector<double>& values, Find find) {
  const std::size_t n = curve.yAxis.size();
  std::vector<double> found;
  if (!curve.CheckAllStatus(valid)) found.swap(values);
  found.resize(n);
  const bool ok = find(found.data());
  if (ok) values.swap(found);
  values.resize(n);
  return ok;
}

// Runs `compute(curve)`, which returns false if it cannot, with what `command(curve)` returns
// in the history. On failure, also by an exception, it is not in the history, and `error`
// holds the command's message. The entry comes first, as it takes memory: no curve may have
// changed without it.
template <class Compute, class Command>
bool RunStep(const StepRule& rule, Curve& curve, Changed& changed, std::wstring& error, Compute compute,
             Command command) {
  if (MayRun(rule, curve)) {
    HistoryEntry entry(curve, command(curve));
    if (compute(curve)) {
      entry.Keep();
      curve.AddStatus(static_cast<Curve::Status>(rule.adds));
      rule.mark(changed);
      return true;
    }
  }
  error = TslLoadString(ModuleHandle(), FindCommand(rule.command)->failure);
  return false;
}

}  // namespace TslBL
