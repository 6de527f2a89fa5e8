#pragma once
// Changes of the Q1 step calibration.

#include <tool/commands/tune/RowEdit.h>
#include <memory>
#include <string>

namespace TslTool {

// A name adds a calibrant or renames the one that is there; "none" deletes it; "@MZ" moves it.
inline constexpr const char* kCalibrantForms = "Calibrant@MZ=NAME Calibrant@MZ=@MZ Calibrant@MZ=none";
std::unique_ptr<TuneEdit> MakeCalibrantEdit(const RowWords& words);

// A lens at a calibrant. Throws UsageError for what is no lens that can follow m/z.
inline constexpr const char* kLensForms = "LENS@MZ=VALUE LENS@MZ=none";
std::unique_ptr<TuneEdit> MakeLensEdit(const std::string& lens, const RowWords& words);

}  // namespace TslTool
