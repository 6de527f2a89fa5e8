#include <tslbl/curve/CommandTable.h>
#include <tslbl/curve/CurveEval.h>
#include <map>
#include <stdexcept>

namespace TslBL {

std::vector<CurveEval> CompactEval(const std::vector<CurveEval>& evals) {
  std::vector<CurveEval> result;
  std::map<int, CurveEval> last;
  for (const CurveEval& eval : evals) {
    const CommandRow& row = *FindCommand(eval.Type());
    if (row.rank != 0) {
      last.insert_or_assign(row.rank, eval);
      continue;
    }
    if (row.subtracts != EvalType::Empty) {
      const auto subtracted = last.extract(FindCommand(row.subtracts)->rank);
      if (!subtracted) throw std::runtime_error("Subtraction command with no prior evaluation to subtract");
      result.push_back(subtracted.mapped());
    }
    result.push_back(eval);
  }
  for (const auto& [rank, eval] : last) result.push_back(eval);
  return result;
}

}  // namespace TslBL
