#pragma once
// What a CurveEval owns: one evaluation with its parameters.

#include <tslbl/curve/CurveEval.h>
#include <cstdint>
#include <span>
#include <string>

namespace TslBL {

class CurveEval::EvalImpl : public frame::SerialAndXml {
 public:
  // Number and text of the command's row in the table.
  virtual std::uint32_t Type() const = 0;
  virtual std::wstring TypeText() const = 0;
  // A new copy, owned by the caller.
  virtual EvalImpl* Clone() const = 0;
  // Whether the other is the same command with equal parameters.
  virtual bool Equals(const EvalImpl& other) const = 0;
  virtual bool Execute(Curve& curve, Changed& changed, std::wstring& error) const = 0;
  // The parameters of a baseline or noise command, null of others.
  virtual const BaselineParams* QBaselineParams() const { return nullptr; }
  virtual const NoiseParams* QNoiseParams() const { return nullptr; }
};

// The numbers stand in binary streams and never change.
namespace EvalType {
inline constexpr std::uint32_t Empty = 0;
inline constexpr std::uint32_t Baseline = 1;
inline constexpr std::uint32_t Noise = 2;
inline constexpr std::uint32_t PeakDetect = 3;
inline constexpr std::uint32_t Smooth = 4;
inline constexpr std::uint32_t Threshold = 5;
inline constexpr std::uint32_t OPD = 6;
inline constexpr std::uint32_t CSDecon = 7;
inline constexpr std::uint32_t BaselineSubtract = 8;
inline constexpr std::uint32_t ThresholdSubtract = 9;
inline constexpr std::uint32_t AerosolFilter = 10;
}  // namespace EvalType

// A row of the table of commands, which stands in CommandTable.cpp: the one file that
// knows them all.
struct CommandRow {
  const wchar_t* text;  // stands in documents
  std::uint32_t type;   // stands in binary streams
  CurveEval::EvalImpl* (*make)();
};
std::span<const CommandRow> CommandTable();

// Null if there is no such command.
const CommandRow* FindCommand(std::uint32_t type);
// Compares with case.
const CommandRow* FindCommand(const std::wstring& text);

}  // namespace TslBL
