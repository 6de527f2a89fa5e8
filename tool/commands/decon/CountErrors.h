#pragma once
// How surely the isotopes of resolved series are counted.

#include <tool/commands/peaks/ReportedPeak.h>
#include <tslbl/chargestate/DeconSpectrum.h>
#include <vector>

namespace TslTool {

// Of each series of the spectrum, Da: by how much its mass may be off by whole isotopes, root mean square. 0
// of an unresolved one. `peaks` are all of the spectrum, by their ids.
std::vector<double> CountErrors(const TslBL::DeconSpectrum& spectrum, const std::vector<ReportedPeak>& peaks);

}  // namespace TslTool
