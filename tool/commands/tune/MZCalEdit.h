#pragma once
// Changes of the m/z calibration. A calibration is checked whole, and may pass through states
// that the rules refuse: so these check their own numbers, and who makes the last of them
// checks the whole.

#include <tool/commands/tune/RowEdit.h>
#include <memory>
#include <string>

namespace TslTool {

// A mass DAC value adds a point or changes the one that is there; "none" deletes it; "@MZ"
// moves it.
inline constexpr const char* kMZCalForms = "MZCal@MZ=DAC MZCal@MZ=@MZ MZCal@MZ=none MZCalName@MZ=NAME";
std::unique_ptr<TuneEdit> MakeMZCalEdit(const RowWords& words);
std::unique_ptr<TuneEdit> MakeMZCalNameEdit(const RowWords& words);

// The points for a message, ascending in m/z.
std::string ShownMZCalPts(const TslBL::Tune& tune);

}  // namespace TslTool
