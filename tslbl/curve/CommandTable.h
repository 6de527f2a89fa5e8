#pragma once
// The table of evaluation commands, which stands in tslbl/CommandTable.cpp: the one file that
// names them all. Whoever asks something about a command asks its row.
//
// For the sources of the library; not part of the library's interface.

#include <tslbl/closed/common/MessageId.h>
#include <tslbl/curve/CurveEval.h>
#include <span>
#include <string>

namespace TslBL {

// A step does its one thing, with the parameters that the curve holds.
using StepFunction = bool(Curve& curve, Changed& changed, std::wstring& error);

struct CommandRow {
  EvalType type;        // its number stands in binary streams
  const wchar_t* text;  // stands in documents
  CurveEval (*make)();  // with default parameters
  StepFunction* step;
  MessageId failure = kNoMessage;  // what the user reads when the step fails
  // For CompactEval: the place in a compact chain of a command that computes something, so that
  // the last one of its kind counts; 0 if the effects add up.
  int rank = 0;
  // What a subtraction takes out, which has a rank; Empty for a command that is none.
  EvalType subtracts = EvalType::Empty;
};
std::span<const CommandRow> CommandTable();

// Null if the table has no such row.
const CommandRow* FindCommand(EvalType type);
// Compares with case; a text that no row has stands for charge state deconvolution. Never null.
const CommandRow* FindCommand(const std::wstring& text);

// Runs the step of a command that has a row.
inline bool RunStepOf(EvalType type, Curve& curve, Changed& changed, std::wstring& error) {
  return FindCommand(type)->step(curve, changed, error);
}

// Two steps, one right behind the other, that share work: the same result in less time. The
// parameters of the first are in the curve. `second` holds those of the second, which reach
// the curve when the first step has run; null if they are in the curve, too.
using FusedSteps = bool(Curve& curve, const CurveEval::EvalImpl* second, Changed& changed,
                        std::wstring& error);

struct FusionRow {
  EvalType first;
  EvalType second;
  FusedSteps* run;
};
std::span<const FusionRow> FusionTable();

// Null if the two share nothing.
FusedSteps* FindFusion(EvalType first, EvalType second);

}  // namespace TslBL
