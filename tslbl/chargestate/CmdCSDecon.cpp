// Charge state deconvolution as a command: on any curve that is a spectrum with a place for its result.

#include <tslbl/chargestate/CSDecon.h>
#include <tslbl/curve/EvalImpl.h>

namespace TslBL {
namespace {

bool StoreInDeconSpectrum(Curve& curve, const ChargeStateParams& params) {
  auto* spectrum = dynamic_cast<DeconSpectrum*>(&curve);
  if (spectrum == nullptr) return false;
  spectrum->CSParams = params;
  return true;
}

}  // namespace

bool DoCSDeconOnCurve(Curve& curve, Changed& changed, std::wstring& error) {
  auto* spectrum = dynamic_cast<DeconSpectrum*>(&curve);
  return spectrum != nullptr && DoCSDecon(*spectrum, changed, error);
}

CurveEval::CurveEval(const ChargeStateParams& params)
    : impl_(new EvalOf<EvalType::CSDecon, ChargeStateParams, StoreInDeconSpectrum>(params)) {}

}  // namespace TslBL
