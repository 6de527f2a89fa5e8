#pragma once
// A concrete curve for the tests, and notations for what tests give and expect: amplitudes
// as "0 1 5 9 5 1", a history as "Baseline, Noise", changes as "baseline noise".

#include <tslbl/closed/common/Text.h>
#include <tslbl/curve/Changed.h>
#include <tslbl/curve/Curve.h>
#include <cstddef>
#include <sstream>
#include <string>
#include <vector>

namespace tests {

class TestCurve : public TslBL::Curve {
 public:
  TestCurve* Clone() const override { return new TestCurve(*this); }

  // By every field.
  friend bool operator==(const TestCurve& a, const TestCurve& b) {
    return TslBL::frame::Equal(&TslBL::frame::DescribeErased<Curve>, static_cast<const Curve*>(&a),
                               static_cast<const Curve*>(&b));
  }
};

inline std::vector<double> Values(const std::string& text) {
  std::istringstream in(text);
  std::vector<double> values;
  for (double value = 0.0; in >> value;) values.push_back(value);
  return values;
}

// The numbers 0, 1, 2 ... n - 1.
inline std::vector<double> Count(std::size_t n) {
  std::vector<double> values(n);
  for (std::size_t i = 0; i < n; ++i) values[i] = static_cast<double>(i);
  return values;
}

// A curve as a creator leaves it: both axes and their status. x = 0, 1, 2 ... unless given.
inline TestCurve CurveOf(const std::vector<double>& y, const std::vector<double>& x) {
  TestCurve curve;
  curve.xAxis = x;
  curve.yAxis = y;
  curve.AddStatus(TslBL::Curve::STATUS_Y);
  curve.AddStatus(TslBL::Curve::STATUS_X);
  return curve;
}
inline TestCurve CurveOf(const std::vector<double>& y) { return CurveOf(y, Count(y.size())); }
inline TestCurve CurveOf(const std::string& y) { return CurveOf(Values(y)); }
inline TestCurve CurveOf(const std::string& y, const std::string& x) { return CurveOf(Values(y), Values(x)); }

// The texts of commands in their order, such as "Smooth, Baseline".
inline std::string Names(const std::vector<TslBL::CurveEval>& evals) {
  std::string names;
  for (const TslBL::CurveEval& eval : evals)
    names += (names.empty() ? "" : ", ") + TslCommon::ToUtf8(eval.TypeText());
  return names;
}
inline std::string History(const TslBL::Curve& curve) { return Names(curve.evals); }

// The flags that are set, from the lowest bit up, such as "yAxis peaks".
inline std::string Flags(const TslBL::Changed& changed) {
  std::string flags;
  const auto add = [&flags](bool set, const char* flag) {
    if (set) flags += (flags.empty() ? "" : " ") + std::string(flag);
  };
  add(changed.yAxis, "yAxis");
  add(changed.baseline, "baseline");
  add(changed.noise, "noise");
  add(changed.threshold, "threshold");
  add(changed.peaks, "peaks");
  add(changed.overlapPeaks, "overlapPeaks");
  add(changed.chargeState, "chargeState");
  return flags;
}

// What one run of a step or a chain gave back.
struct Outcome {
  bool ok = false;
  std::string changed;
  std::wstring error;

  bool operator==(const Outcome&) const = default;
  friend std::ostream& operator<<(std::ostream& out, const Outcome& o) {
    return out << (o.ok ? "true" : "false") << " [" << o.changed << "] \"" << TslCommon::ToUtf8(o.error)
               << '"';
  }
};

// Runs `step(curve, changed, error)` with nothing changed so far.
template <class Step>
Outcome RunOn(Step step, TslBL::Curve& curve) {
  Outcome outcome;
  TslBL::Changed changed;
  outcome.ok = step(curve, changed, outcome.error);
  outcome.changed = Flags(changed);
  return outcome;
}

// Runs one command.
inline Outcome RunOn(const TslBL::CurveEval& eval, TslBL::Curve& curve) {
  return RunOn([&eval](TslBL::Curve& c, TslBL::Changed& changed,
                       std::wstring& error) { return eval.Execute(c, changed, error); },
               curve);
}

// A command of its parameters or its tag.
template <class Params>
Outcome RunCommand(const Params& params, TslBL::Curve& curve) {
  return RunOn(TslBL::CurveEval(params), curve);
}

inline Outcome Success(const std::string& changed) { return {true, changed, L""}; }
inline Outcome Failure(const std::wstring& error) { return {false, "", error}; }

}  // namespace tests
