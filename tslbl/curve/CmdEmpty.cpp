// The Empty command, which does nothing.

#include <tslbl/curve/Commands.h>
#include <tslbl/curve/Step.h>

namespace TslBL {
namespace {
bool DoNothing(Curve&, Changed&, std::wstring&) { return true; }
}  // namespace

CurveEval::EvalImpl* MakeEmpty() { return new EvalOf<EvalType::Empty, NoParams<EvalType::Empty>, DoNothing>; }

}  // namespace TslBL
