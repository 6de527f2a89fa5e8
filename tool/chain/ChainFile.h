#pragma once
// An evaluation chain as a document: an element "CurveEvals" with an element "CurveEval" for
// each command.

#include <tslbl/chargestate/ChargeStateParams.h>
#include <tslbl/curve/CurveEval.h>
#include <string>
#include <vector>

namespace TslTool {

std::string ChainToXml(const std::vector<TslBL::CurveEval>& chain);

// Throws InputError for a file that cannot be read or is not well formed, and, so that no
// typing error goes unnoticed, for an element or attribute that no command has and for a
// value that would not be taken as it stands. A whole range of charge states, which the library writes as
// "true" and reads as "Full", is one by either word.
std::vector<TslBL::CurveEval> LoadChain(const std::string& file);

// The parameters of a command "Charge State Deconvolution".
TslBL::ChargeStateParams ChargeStatesOf(const TslBL::CurveEval& command);

}  // namespace TslTool
