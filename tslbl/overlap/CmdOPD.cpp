// Overlap peak deconvolution as a command: on any curve that is a spectrum.

#include <tslbl/curve/EvalImpl.h>
#include <tslbl/overlap/OPD.h>

namespace TslBL {
namespace {

bool StoreInSpectrum(Curve& curve, const OPDParams& params) {
  auto* spectrum = dynamic_cast<Spectrum*>(&curve);
  if (spectrum == nullptr) return false;
  spectrum->opdParams = params;
  return true;
}

}  // namespace

bool DoOPDOnCurve(Curve& curve, Changed& changed, std::wstring& error) {
  auto* spectrum = dynamic_cast<Spectrum*>(&curve);
  return spectrum != nullptr && DoOPD(*spectrum, changed, error);
}

CurveEval::CurveEval(const OPDParams& params)
    : impl_(new EvalOf<EvalType::OPD, OPDParams, StoreInSpectrum>(params)) {}

}  // namespace TslBL
