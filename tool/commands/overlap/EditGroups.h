#pragma once
// Making a user's edits on a deconvolved spectrum.

#include <tool/commands/overlap/GroupEdits.h>
#include <tslbl/spectrum/Spectrum.h>

namespace TslTool {

// Adds the data peak at an m/z to the nearest group, if a data peak of that begins or ends at most 0.25 m/z
// from it, else to a new group; or removes the fitted peak whose top is nearest to the m/z and not farther
// from it than half its width. The group is then fitted anew, with the spectrum's parameters. All other
// groups stay: the library clears what lies left of a group that it fits, and that is put back. Throws
// std::runtime_error with the reason; the spectrum is of no use then.
void EditGroup(TslBL::Spectrum& spectrum, const GroupEdit& edit);

}  // namespace TslTool
