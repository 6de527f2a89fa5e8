#include <tslbl/curve/CurveEval.h>
#include <tslbl/curve/EvalImpl.h>
#include <iterator>
#include <map>
#include <stdexcept>

namespace TslBL {
namespace {

// Place of a command that computes something, in the chain that results; 0 for the rest,
// whose effects add up and which therefore all stay.
int Rank(std::uint32_t type) {
  switch (type) {
    case EvalType::Baseline:
      return 1;
    case EvalType::Noise:
      return 2;
    case EvalType::Threshold:
      return 3;
    case EvalType::PeakDetect:
      return 4;
    case EvalType::OPD:
      return 5;
    case EvalType::CSDecon:
      return 6;
    default:
      return 0;
  }
}

// The rank of what a subtraction takes out; 0 for a command that is none.
int SubtractedRank(std::uint32_t type) {
  switch (type) {
    case EvalType::BaselineSubtract:
      return Rank(EvalType::Baseline);
    case EvalType::ThresholdSubtract:
      return Rank(EvalType::Threshold);
    default:
      return 0;
  }
}

}  // namespace

std::vector<CurveEval> CompactEval(const std::vector<CurveEval>& evals) {
  std::vector<CurveEval> result;
  std::map<int, CurveEval> last;
  for (const CurveEval& eval : evals) {
    if (const int rank = Rank(eval.Type()); rank != 0) {
      last.insert_or_assign(rank, eval);
      continue;
    }
    if (const int rank = SubtractedRank(eval.Type()); rank != 0) {
      const auto subtracted = last.extract(rank);
      if (!subtracted) throw std::runtime_error("Subtraction command with no prior evaluation to subtract");
      result.push_back(subtracted.mapped());
    }
    result.push_back(eval);
  }
  for (const auto& [rank, eval] : last) result.push_back(eval);
  return result;
}

}  // namespace TslBL
