#pragma once
// An average molecule, as a user writes it.

#include <tslbl/chargestate/ResolvedParams.h>
#include <string>

namespace TslTool {

// "averagine", "dnagine", "rnagine", or a formula of elements with their numbers, such as "C6 H10 O5". Throws
// UsageError.
void SetMolecule(const std::string& option, const std::string& text, TslBL::ResolvedParams& params);

}  // namespace TslTool
