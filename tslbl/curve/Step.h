#pragma once
// What all evaluation steps do alike: check what the curve has, compute, set the status,
// report what changed, append to the history.

#include <tslbl/closed/common/BinaryStream.h>
#include <tslbl/closed/common/MessageId.h>
#include <tslbl/closed/common/StringTable.h>
#include <tslbl/curve/Curve.h>
#include <tslbl/curve/EvalImpl.h>
#include <string>
#include <type_traits>
#include <vector>

namespace TslBL {

// What a step needs of the axes: nothing, points on both, or, where it reads x beside y, an
// x for each y. A creator may have made a curve of which that does not hold.
enum class Points { None, Some, Paired };

// The rule of one step. Every step but the aerosol filter fails on a frozen curve.
struct StepRule {
  std::uint32_t needs;  // status bits, all of them
  Points needsPoints;
  std::uint32_t adds;  // status bits
  void (*mark)(Changed& changed);
  MessageId failure;
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

// Runs `compute(curve)`, which returns false if it cannot, with what `command(curve)` returns
// in the history. On failure, also by an exception, it is not in the history, and `error`
// holds the rule's message. The entry comes first, as it takes memory: no curve may have
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
  error = TslLoadString(ModuleHandle(), rule.failure);
  return false;
}

using StepFunction = bool (*)(Curve& curve, Changed& changed, std::wstring& error);

// A command that copies its parameters into the curve and then runs its step.
template <std::uint32_t type, class Params, StepFunction step>
class EvalOf final : public CurveEval::EvalImpl {
 public:
  EvalOf() = default;
  explicit EvalOf(const Params& params) : params_(params) {}

  std::uint32_t Type() const override { return type; }
  std::wstring TypeText() const override { return FindCommand(type)->text; }
  EvalImpl* Clone() const override { return new EvalOf(*this); }
  bool Equals(const EvalImpl& other) const override {
    const auto* same = dynamic_cast<const EvalOf*>(&other);
    return same != nullptr && same->params_ == params_;
  }
  bool Execute(Curve& curve, Changed& changed, std::wstring& error) const override {
    curve.SetParam(params_);
    return step(curve, changed, error);
  }
  const BaselineParams* QBaselineParams() const override { return As<BaselineParams>(); }
  const NoiseParams* QNoiseParams() const override { return As<NoiseParams>(); }
  void Serialize(BinaryReader& reader) override { params_.Serialize(reader); }
  void Serialize(BinaryWriter& writer) const override { params_.Serialize(writer); }
  void Serialize(XMLParser& parser) override { params_.Serialize(parser); }
  void Serialize(XMLBuilder& builder) const override { params_.Serialize(builder); }
  void Serialize(std::wstring& text) const override { params_.Serialize(text); }

 private:
  template <class Wanted>
  const Wanted* As() const {
    if constexpr (std::is_same_v<Params, Wanted>) return &params_;
    return nullptr;
  }

  Params params_;
};

// In the place of parameters: a command without any stores its own number in a stream and
// an empty element with its own name in a document; the Empty command stores nothing.
template <std::uint32_t type>
struct NoParams {
  static constexpr bool kStored = type != EvalType::Empty;

  operator int() const { return 0; }
  bool operator==(const NoParams&) const { return true; }
  void Serialize(BinaryReader& reader) {
    std::uint32_t dropped = 0;
    if (kStored) reader >> dropped;
  }
  void Serialize(BinaryWriter& writer) const {
    if (kStored) writer << type;
  }
  void Serialize(XMLParser&) {}
  void Serialize(XMLBuilder& builder) const {
    if (kStored) builder.WNode(FindCommand(type)->text, L"");
  }
  void Serialize(std::wstring& text) const { text.clear(); }
};

}  // namespace TslBL
