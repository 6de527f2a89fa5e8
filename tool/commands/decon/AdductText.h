#pragma once
// The ion that carries a charge, as a user writes it.

#include <tslbl/chargestate/ChargeStateParams.h>
#include <string>

namespace TslTool {

// "proton", "ammonium", "sodium", "potassium", "loss" for a proton that is missing, or the mass of another
// one in Da: monoisotopic, or monoisotopic and average with a comma between. Throws UsageError.
void SetAdduct(const std::string& option, const std::string& text, TslBL::ChargeStateParams& params);

// A proton is missing for each charge, as in spectra of negative ions.
void SetLossOfProton(TslBL::ChargeStateParams& params);

}  // namespace TslTool
