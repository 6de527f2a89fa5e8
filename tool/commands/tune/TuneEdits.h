#pragma once
// The changes of one command.

#include <tslbl/tune/rules/DevTuneRules.h>
#include <string>
#include <vector>

namespace TslTool {

// Makes them in their order, what is worked out from the tune last. The result is what the user
// should be warned of. Throws UsageError as ReadTuneEdit and TuneEdit::Apply do, and
// std::runtime_error "CHANGE: REASON" for what the rules refuse; the tune is then changed in part.
std::vector<std::string> MakeTuneEdits(TslBL::DevTuneRules& rules, const std::vector<std::string>& texts);

}  // namespace TslTool
