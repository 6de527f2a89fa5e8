#pragma once
// Charge state deconvolution: series of peaks that are one molecule at several charges are found among the
// peaks of a spectrum, and drawn as a curve over mass. The parameters are DeconSpectrum::CSParams; the result
// stands in the spectrum's Series, MassX and MassY. The peak table stays.
//
// The same as a command of a chain is CurveEval(ChargeStateParams), which fails without a message on a curve
// that is no deconvolved spectrum. Series are found and drawn by three engines that an application may
// exchange: closed/engines/SeriesEngine.h, closed/engines/MassPlotEngine.h. All of it runs on the caller's
// thread, and the engines live for this call alone.

#include <tslbl/Export.h>
#include <tslbl/chargestate/DeconSpectrum.h>
#include <tslbl/curve/Changed.h>
#include <string>

namespace TslBL {

// Detects the peaks first if that has not been done. False without a message if that found out nothing new
// about the peaks.
TSLBL_API bool ExecuteCSDecon(DeconSpectrum& spectrum, Changed& changed, std::wstring& error);

// Deconvolves the whole spectrum anew: what was found before goes. On success the spectrum has
// STATUS_CSDECON, which freezes it; it may be deconvolved again.
//
// False with a message in `error` if peaks have not been detected, if there are none in the range, if an
// engine cannot be made, if it fails (its own text), or if a method finds no series; then the method behind
// it has not been tried. After a failure series that were found stay, without a curve; status and history are
// as they were. Throws ComError (closed/common/ComponentRegistry.h) from an engine that fails and cannot even
// say why.
TSLBL_API bool DoCSDecon(DeconSpectrum& spectrum, Changed& changed, std::wstring& error);

}  // namespace TslBL
