#pragma once
// One stored evaluation command.
//
// Everything that can be done to a curve is a command: a value that can be stored in a
// method, in a result file or in the curve's own history, compared, printed and replayed.
//
//   std::vector<CurveEval> chain = {CurveEval(SmoothParams::DefaultMS()), CurveEval(BaselineParams()),
//                                   CurveEval(NoiseParams()), CurveEval(PeakDetectParams::DefaultMS())};
//   Changed changed;
//   std::wstring error;
//   if (!ExecuteCurveEvals(curve, chain, changed, error)) ...   // error tells which step failed
//
// As a command in a chain a step runs alone and fails if what it needs is not there. The
// ExecuteX functions of Execute.h run a step with the parameters that the curve holds and
// bring everything that depends on it up to date.

#include <tslbl/curve/Changed.h>
#include <tslbl/records/Record.h>
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

namespace TslBL {

class Curve;
struct BaselineParams;
struct ChargeStateParams;
struct NoiseParams;
struct OPDParams;
struct PeakDetectParams;
struct SmoothParams;
struct ThresholdParams;

// The kinds of commands. The numbers stand in binary streams and never change.
enum class EvalType : std::uint32_t {
  Empty = 0,
  Baseline = 1,
  Noise = 2,
  PeakDetect = 3,
  Smooth = 4,
  Threshold = 5,
  OPD = 6,      // overlap peak deconvolution
  CSDecon = 7,  // charge state deconvolution
  BaselineSubtract = 8,
  ThresholdSubtract = 9,
  AerosolFilter = 10,
};
constexpr std::uint32_t Number(EvalType type) { return static_cast<std::uint32_t>(type); }
// So that a number that was stored can be held against a type as it is.
constexpr bool operator==(EvalType type, std::uint32_t number) { return Number(type) == number; }

class TSLBL_API CurveEval : public frame::SerialAndXml {
 public:
  class EvalImpl;

  // Select a command without parameters.
  struct BaselineSubtract {};
  struct ThresholdSubtract {};
  struct AerosolFilter {};

  CurveEval();  // the Empty command, which does nothing
  CurveEval(const BaselineParams& params);
  CurveEval(const NoiseParams& params);
  CurveEval(const PeakDetectParams& params);
  CurveEval(const SmoothParams& params);
  CurveEval(const ThresholdParams& params);
  CurveEval(const OPDParams& params);
  CurveEval(const ChargeStateParams& params);
  CurveEval(const BaselineSubtract&);
  CurveEval(const ThresholdSubtract&);
  CurveEval(const AerosolFilter&);
  CurveEval(const CurveEval& other);
  CurveEval& operator=(const CurveEval& other);
  ~CurveEval() override;

  bool operator==(const CurveEval& other) const;

  EvalType Type() const;
  std::wstring TypeText() const;

  // False with a message in `error` if the step failed.
  bool Execute(Curve& curve, Changed& changed, std::wstring& error) const;

  // Version 2. Throws std::runtime_error "Unknown CurveEval version." and "Invalid curve
  // evaluation type."; the command stays as it was.
  void Serialize(BinaryReader& reader) override;
  void Serialize(BinaryWriter& writer) const override;
  // An element "CurveEval" with the command's text in its attribute "Type", which is read
  // with case. An absent attribute means the Empty command; a text of no command means charge
  // state deconvolution, with its default parameters unless its element is there.
  void Serialize(XMLParser& parser) override;
  void Serialize(XMLBuilder& builder) const override;
  void Serialize(std::wstring& text) const override;

 private:
  friend TSLBL_API bool ExecuteCurveEvals(Curve& curve, const std::vector<CurveEval>& evals, Changed& changed,
                                          std::wstring& error);

  std::unique_ptr<EvalImpl> impl_;  // never null
};

// Runs the commands in order and stops at the first that fails; those before it stay
// applied. Imposes no order of its own. `evals` may be the curve's own history: the commands
// that stand in it at the call run once more.
TSLBL_API bool ExecuteCurveEvals(Curve& curve, const std::vector<CurveEval>& evals, Changed& changed,
                                 std::wstring& error);

// The shortest chain with the same effect on a fresh curve: smoothing, filters and pairs of
// an evaluation and its subtraction in their order, then at most one each of Baseline,
// Noise, Threshold, Peak Detect, OPD and Charge State Deconvolution. Throws
// std::runtime_error for a subtraction of what was not evaluated.
TSLBL_API std::vector<CurveEval> CompactEval(const std::vector<CurveEval>& evals);

// Appends the texts of all commands to `text`.
TSLBL_API void CurveEvalsText(const std::vector<CurveEval>& evals, std::wstring& text);

TSLBL_API void AddCurveEval(XMLBuilder& builder, const CurveEval& eval);
// Reads one command and appends it, an Empty one if the element is absent.
TSLBL_API void LoadCurveEval(XMLParser& parser, std::vector<CurveEval>& evals);

}  // namespace TslBL
