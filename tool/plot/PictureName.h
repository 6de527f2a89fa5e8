#pragma once
// The names of pictures.

#include <string>

namespace TslTool {

// Throws UsageError for a file whose name ends as one of another kind: a picture is SVG, whatever it is
// called, and what opens "x.png" could not read it. Names without an ending pass.
void RequirePictureName(const std::string& option, const std::string& file);

}  // namespace TslTool
