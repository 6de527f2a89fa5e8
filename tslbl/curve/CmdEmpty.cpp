// The Empty command, which does nothing.

#include <tslbl/curve/EvalImpl.h>

namespace TslBL {

bool DoNothing(Curve&, Changed&, std::wstring&) { return true; }

CurveEval::CurveEval() : impl_(new EvalOf<EvalType::Empty>) {}

}  // namespace TslBL
