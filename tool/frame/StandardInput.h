#pragma once
// What a user names "-" where a file is read.

namespace TslTool {

// The path by which readers of files open it, and how messages call it.
inline constexpr const char* kStandardInputPath = "/dev/stdin";
inline constexpr const char* kStandardInputName = "standard input";

// Whether somebody means to hand data over through an open file: a file that holds some, or a pipe that holds
// some or still has a writer. It never waits, so a writer that has not written yet counts. A terminal, a
// device such as /dev/null, an empty file, a pipe that was closed empty and what is not open offer nothing.
bool OffersData(int descriptor);

// Whether a part of the file was read already, as behind `head -1` in a script. Readers that open the file
// anew would begin at its beginning.
bool WasReadInPart(int descriptor);

}  // namespace TslTool
